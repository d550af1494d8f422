// Which rows several pasted addresses fill.
#include "cameras/PastedAddresses.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(AddressLines, AreOneALineWithoutBlanksAroundThem)
{
    EXPECT_EQ(addressLines(QStringLiteral(" a \r\n\r\n\tb c\n \n d")),
              (QStringList{QStringLiteral("a"), QStringLiteral("b c"), QStringLiteral("d")}));
    EXPECT_EQ(addressLines(QStringLiteral(" \n")), QStringList());
}

TEST(PlaceAddresses, FillsTheRowAndThoseBelow)
{
    const QStringList lines{QStringLiteral("a"), QStringLiteral("b")};
    EXPECT_EQ(placeAddresses(lines, 3, QStringList(kRows)), (PastedAddresses{3, lines, {}, 0}));
}

TEST(PlaceAddresses, NamesTheRowsThatHaveAnotherAddress)
{
    QStringList shown(kRows);
    shown[0] = QStringLiteral("before the first");
    shown[1] = QStringLiteral("a");
    shown[2] = QStringLiteral("old");
    shown[4] = QStringLiteral("behind the last");
    const QStringList lines{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    EXPECT_EQ(placeAddresses(lines, 1, shown), (PastedAddresses{1, lines, {2}, 0}));
}

TEST(PlaceAddresses, LeavesOutWhatFindsNoRow)
{
    const QStringList lines{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    const PastedAddresses pasted = placeAddresses(lines, 8, QStringList(kRows));
    EXPECT_EQ(pasted, (PastedAddresses{8, lines.mid(0, 2), {}, 1}));
    EXPECT_EQ(pasted.lastRow(), 9);
}

} // namespace
} // namespace velmora
