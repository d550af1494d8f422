// What the models of random sequences know of the keys that move a list's highlight.
#pragma once

#include <QList>
#include <Qt>

#include <algorithm>

namespace velmora::test {

inline const QList<Qt::Key> kListMoves{Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};

/// The row on which the highlight stands after a key that is pressed in the list; -1 for none.
inline int rowAfter(Qt::Key key, int from, int count)
{
    if (count == 0 || from < 0) {
        return count == 0 ? from : 0;
    }
    switch (key) {
    case Qt::Key_Up:
        return std::max(0, from - 1);
    case Qt::Key_Down:
        return std::min(count - 1, from + 1);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return count - 1;
    default:
        return from;
    }
}

} // namespace velmora::test
