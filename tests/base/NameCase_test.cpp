// The case of letters in file names, by the rules of the program's home platform.
#include "base/NameCase.h"

#include "base/AnsiText.h"

#include <QString>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(NameCase, FoldsEveryLetterOfTheCodePage)
{
    QByteArray all;
    for (int code = 1; code < 256; ++code) {
        all += static_cast<char>(code);
    }
    for (const QChar c : fromAnsi(all)) {
        const QChar lower = c.toLower();
        EXPECT_EQ(QString::fromUtf8(foldedName(QString(c).toUtf8())), QString(lower))
            << std::hex << int{c.unicode()};
    }
}

TEST(NameCase, KeepsTheLength)
{
    const QByteArray name = QStringLiteral("\u00C9T\u00C9 \u0178\u0152.JPG").toUtf8();
    EXPECT_EQ(foldedName(name), QStringLiteral("\u00E9t\u00E9 \u00FF\u0153.jpg").toUtf8());
    EXPECT_EQ(foldedName(name).size(), name.size());
}

TEST(NameCase, LeavesWhatIsNoLetter)
{
    for (const QByteArray &name : {QByteArray("a_1-2.jpg"), QByteArray("\xC3"), QByteArray("\xC5"),
                                   QByteArray("\xE9t\xE9"), QByteArray("\xC3\x97"), QByteArray()}) {
        EXPECT_EQ(foldedName(name), name);
    }
}

} // namespace
} // namespace velmora
