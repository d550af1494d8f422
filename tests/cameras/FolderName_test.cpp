// Camera addresses as folder names, and the way back, which not every character survives.
#include "cameras/FolderName.h"

#include "base/NativePaths.h"
#include "settings/Numbers.h"
#include "support/Printers.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

struct NameRow
{
    const char *name;
    QString from;
    QString to;
};

const std::vector<NameRow> &encodings()
{
    static const std::vector<NameRow> rows = {
        {"empty", QString(), QString()},
        {"letters", QStringLiteral("ABCxyz"), QStringLiteral("\\ABCxyz\\")},
        {"digit", QStringLiteral("a1"), QStringLiteral("\\a%31\\")},
        {"path", QStringLiteral("ab/1.jpg"), QStringLiteral("\\ab%2F%31%2Ejpg\\")},
        {"address", QStringLiteral("http://10.0.0.5/?a=b&c"),
         QStringLiteral("\\http%3A%2F%2F%31%30%2E%30%2E%30%2E%35%2F%3Fa%3Db%26c\\")},
        {"dash and underline", QStringLiteral("a-b_c"), QStringLiteral("\\a%2Db%5Fc\\")},
        {"blank", QStringLiteral(" "), QStringLiteral("\\%20\\")},
        {"tab", QStringLiteral("\t"), QStringLiteral("\\%9\\")},
        {"percent", QStringLiteral("%"), QStringLiteral("\\%25\\")},
        {"backslash", QStringLiteral("\\"), QStringLiteral("\\%5C\\")},
        {"neighbours of the letters", QStringLiteral("@[`{"), QStringLiteral("\\%40%5B%60%7B\\")},
        {"letter that is not ASCII", QStringLiteral("\u00e9"), QStringLiteral("\\%E9\\")},
        {"euro of the code page", QStringLiteral("\u20ac"), QStringLiteral("\\%80\\")},
        {"not in the code page", QStringLiteral("\u0416"), QStringLiteral("\\%3F\\")},
    };
    return rows;
}

const std::vector<NameRow> &decodings()
{
    static const std::vector<NameRow> rows = {
        {"empty", QString(), QString()},
        {"letters", QStringLiteral("abc"), QStringLiteral("abc")},
        {"address", QStringLiteral("ab%3A%2F%2Fc"), QStringLiteral("ab://c")},
        {"backslashes", QStringLiteral("\\a%31\\"), QStringLiteral("\\a1\\")},
        {"small digits", QStringLiteral("%2f%e9"), QStringLiteral("/\u00e9")},
        {"code page", QStringLiteral("%80"), QStringLiteral("\u20ac")},
        {"one digit at the end", QStringLiteral("%9"), QStringLiteral("\t")},
        {"one digit swallows what follows", QStringLiteral("%9x"), QStringLiteral("\t")},
        {"one digit and a letter that is a digit", QStringLiteral("%9a"), QStringLiteral("\u0161")},
        {"one digit before another code", QStringLiteral("%9%31"), QStringLiteral("\t31")},
        {"blank before the digit", QStringLiteral("% 9x"), QStringLiteral("\tx")},
        {"blank behind the digit", QStringLiteral("%9 x"), QStringLiteral("\tx")},
        {"percent at the end", QStringLiteral("a%"), QStringLiteral("a") + QChar(u'\0')},
        {"no digits", QStringLiteral("%zzb"), QChar(u'\0') + QStringLiteral("b")},
        {"other characters", QStringLiteral("d\u00e9 1"), QStringLiteral("d\u00e9 1")},
    };
    return rows;
}

TEST(FolderName, EncodesAllButAsciiLetters)
{
    for (const NameRow &row : encodings()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(encodeFolderName(row.from), row.to);
    }
}

TEST(FolderName, Decodes)
{
    for (const NameRow &row : decodings()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DecodeFolderName(row.from), row.to);
    }
}

TEST(FolderName, BringsBackEveryCodeFrom16On)
{
    for (char16_t code = 16; code < 128; ++code) {
        SCOPED_TRACE(static_cast<int>(code));
        const QString text = QStringLiteral("a%1b").arg(QChar(code));
        EXPECT_EQ(DecodeFolderName(encodeFolderName(text)), u'\\' + text + u'\\');
    }
}

TEST(FolderName, LosesWhatFollowsACodeBelow16)
{
    EXPECT_EQ(encodeFolderName(u"\tx"), QStringLiteral("\\%9x\\"));
    EXPECT_EQ(DecodeFolderName(u"\\%9x\\"), QStringLiteral("\\\t\\"));
}

TEST(FolderName, CutsTheEncodedAddressTo255Characters)
{
    EXPECT_EQ(encodeFolderName(QString(85, u'1')).size(), 255 + 2);
    EXPECT_EQ(encodeFolderName(QString(86, u'1')), encodeFolderName(QString(85, u'1')));
    const QString cutInACode = encodeFolderName(u'a' + QString(85, u'1'));
    EXPECT_EQ(cutInACode.size(), 255 + 2);
    EXPECT_TRUE(cutInACode.endsWith(QStringLiteral("%3\\")));
}

TEST(FolderName, TakesAnAddressOf255Characters)
{
    const QString letters(255, u'a');
    EXPECT_EQ(encodeFolderName(letters), u'\\' + letters + u'\\');
}

TEST(FolderName, RefusesAnAddressOf256Characters)
{
    EXPECT_THROW(static_cast<void>(encodeFolderName(QString(256, u'a'))), OverflowError);
}

TEST(CameraFolder, IsInTheStorageFolder)
{
    EXPECT_EQ(cameraFolderTextOf(QStringLiteral("C:\\in\\"), u"a/b"),
              QStringLiteral("C:\\in\\\\a%2Fb\\"));
    const test::TempTree tree;
    tree.makeFolder(u"drives/c/in");
    EXPECT_EQ(cameraFolderOf(NativePaths(tree.path()), QStringLiteral("C:\\in\\"), u"a/b"),
              tree.path(u"drives/c/in/a%2Fb"));
}

TEST(CameraFolder, IsNoneWithoutItsDriveOrOfAnAddressTooLong)
{
    const test::TempTree tree;
    tree.makeFolder(u"drives/c/in");
    const NativePaths paths(tree.path());
    EXPECT_EQ(cameraFolderOf(paths, QStringLiteral("Q:\\in\\"), u"a/b"), QString());
    EXPECT_EQ(cameraFolderOf(paths, QStringLiteral("C:\\in\\"), QString(256, u'a')), QString());
    EXPECT_THROW(static_cast<void>(cameraFolderTextOf(QStringLiteral("C:\\"), QString(256, u'a'))),
                 OverflowError);
}

} // namespace
} // namespace velmora
