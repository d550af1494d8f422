// Several camera addresses pasted at once: which row each would fill, and what that would replace.
#pragma once

#include "cameras/CameraAddress.h"

#include <QList>
#include <QStringList>

namespace velmora {

/// The addresses of a text of several lines: one a line, without the blanks around them; empty
/// lines are none.
[[nodiscard]] QStringList addressLines(const QString &text);

/// Addresses for a row and those below it. Rows are 0-based.
struct PastedAddresses
{
    int firstRow = 0;
    QStringList addresses;  // one a row, from firstRow on
    QList<int> overwritten; // rows that have another address now
    int leftOut = 0;        // addresses that find no row in the group

    [[nodiscard]] int lastRow() const { return firstRow + static_cast<int>(addresses.size()) - 1; }

    bool operator==(const PastedAddresses &) const = default;
};

/// shown: the addresses of the group's rows as they stand in their boxes.
[[nodiscard]] PastedAddresses placeAddresses(const QStringList &lines, int firstRow,
                                             const QStringList &shown);

} // namespace velmora
