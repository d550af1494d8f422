// Lists of names for tests.
#pragma once

#include "browser/ImageNames.h"

#include <QByteArrayList>

namespace velmora::test {

inline ImageNames listOf(const QByteArrayList &names)
{
    ImageNamesBuilder builder;
    for (const QByteArray &name : names) {
        builder.add(name);
    }
    while (builder.sortSome()) {
    }
    return builder.take();
}

inline QByteArrayList all(const ImageNames &names)
{
    QByteArrayList list;
    for (qsizetype i = 0; i < names.count(); ++i) {
        list.append(names.name(i));
    }
    return list;
}

} // namespace velmora::test
