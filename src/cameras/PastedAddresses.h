// Several camera addresses pasted at once: which row each would fill, and what that would replace.
#pragma once

#include "cameras/CameraAddress.h"

#include <QList>
#include <QStringList>

namespace velmora {

/// The addresses in a text, one a line, trimmed of blanks; empty lines are skipped.
[[nodiscard]] QStringList addressLines(const QString &text);

/// Addresses for a row and those below it. Rows are 0-based.
struct PastedAddresses
{
    int firstRow = 0;
    QStringList addresses;  // one a row, from firstRow on
    QList<int> overwritten; // rows that now have a different address
    int leftOut = 0;        // addresses for which the group has no row

    [[nodiscard]] int lastRow() const { return firstRow + static_cast<int>(addresses.size()) - 1; }

    bool operator==(const PastedAddresses &) const = default;
};

/// shown: the addresses in the boxes of the group's rows.
[[nodiscard]] PastedAddresses placeAddresses(const QStringList &lines, int firstRow,
                                             const QStringList &shown);

} // namespace velmora
