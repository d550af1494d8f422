#include "cameras/PastedAddresses.h"

#include "base/OneLine.h"

namespace velmora {

QStringList addressLines(const QString &text)
{
    QStringList addresses;
    const QStringList lines = nonEmptyLines(text);
    for (const QString &line : lines) {
        if (const QString address = line.trimmed(); !address.isEmpty()) {
            addresses.append(address);
        }
    }
    return addresses;
}

PastedAddresses placeAddresses(const QStringList &lines, int firstRow, const QStringList &shown)
{
    PastedAddresses pasted{firstRow, lines.mid(0, kRows - firstRow), {}, 0};
    pasted.leftOut = static_cast<int>(lines.size() - pasted.addresses.size());
    for (int row = firstRow; row <= pasted.lastRow(); ++row) {
        const QString now = shown.value(row);
        if (!now.isEmpty() && now != pasted.addresses.at(row - firstRow)) {
            pasted.overwritten.append(row);
        }
    }
    return pasted;
}

} // namespace velmora
