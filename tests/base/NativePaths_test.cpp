// Path text to native paths and back: drives, the home folder and the root.
#include "base/NativePaths.h"

#include "support/ScopedEnv.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

using test::ScopedEnv;
using test::TempTree;

struct PathRow
{
    const char *name;
    QString text;
    QString native; // "~" stands for the home folder
};

class NativePathsTest : public testing::Test
{
protected:
    [[nodiscard]] QString home() const { return tree.path(u"home"); }

    [[nodiscard]] QString expected(const QString &native) const
    {
        return native.startsWith(u'~') ? home() + native.sliced(1) : native;
    }

    TempTree tree;
    ScopedEnv homeVariable{"HOME", QFile::encodeName(tree.path(u"home"))};
    NativePaths paths{tree.path()};
};

const std::vector<PathRow> &pathRows()
{
    static const std::vector<PathRow> rows = {
        {"folder on C", QStringLiteral("C:\\in"), QStringLiteral("~/in")},
        {"separator at the end", QStringLiteral("C:\\in\\"), QStringLiteral("~/in")},
        {"small letter", QStringLiteral("c:\\in"), QStringLiteral("~/in")},
        {"drive alone", QStringLiteral("C:"), QStringLiteral("~")},
        {"drive and separator", QStringLiteral("C:\\"), QStringLiteral("~")},
        {"no separator behind the drive", QStringLiteral("C:in"), QStringLiteral("~/in")},
        {"two levels", QStringLiteral("C:\\a\\b\\"), QStringLiteral("~/a/b")},
        {"doubled separators", QStringLiteral("C:\\in\\\\cam\\\\\\x"),
         QStringLiteral("~/in/cam/x")},
        {"case of names is kept", QStringLiteral("C:\\In\\CAM"), QStringLiteral("~/In/CAM")},
        {"blank and percent", QStringLiteral("C:\\a b\\%2F"), QStringLiteral("~/a b/%2F")},
        {"no drive", QStringLiteral("\\srv\\cams\\"), QStringLiteral("/srv/cams")},
        {"no drive, doubled", QStringLiteral("\\\\srv\\cams"), QStringLiteral("/srv/cams")},
        {"no drive, no separator", QStringLiteral("srv\\cams"), QStringLiteral("/srv/cams")},
        {"root", QStringLiteral("\\"), QStringLiteral("/")},
        {"empty", QString(), QStringLiteral("/")},
        {"one letter", QStringLiteral("C"), QStringLiteral("/C")},
        {"digit for a drive", QStringLiteral("1:\\x"), QStringLiteral("/1:/x")},
        {"letter that is no drive letter", QStringLiteral("\u00e9:\\x"),
         QStringLiteral("/\u00e9:/x")},
    };
    return rows;
}

TEST_F(NativePathsTest, TurnsTextIntoNativePaths)
{
    for (const PathRow &row : pathRows()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(paths.native(row.text).value_or(QStringLiteral("none")), expected(row.native));
    }
}

TEST_F(NativePathsTest, KnowsNoOtherDriveThanC)
{
    for (const char16_t *const text : {u"D:\\in\\", u"d:", u"Z:\\", u"a:x"}) {
        SCOPED_TRACE(QString::fromUtf16(text).toStdString());
        EXPECT_FALSE(paths.native(text).has_value());
    }
}

TEST_F(NativePathsTest, TakesAFolderOfTheProgramForADrive)
{
    tree.makeFolder(u"drives/d");
    EXPECT_EQ(paths.native(u"D:\\in\\").value_or(QString()), tree.path(u"drives/d/in"));
    EXPECT_EQ(paths.native(u"d:").value_or(QString()), tree.path(u"drives/d"));
}

TEST_F(NativePathsTest, TakesALinkForADrive)
{
    tree.makeFolder(u"disk");
    tree.makeFolder(u"drives");
    ASSERT_TRUE(QFile::link(tree.path(u"disk"), tree.path(u"drives/e")));
    EXPECT_EQ(paths.native(u"E:\\in").value_or(QString()), tree.path(u"drives/e/in"));
}

TEST_F(NativePathsTest, PrefersTheFolderOfCToTheHomeFolder)
{
    tree.makeFolder(u"drives/c");
    EXPECT_EQ(paths.native(u"C:\\in").value_or(QString()), tree.path(u"drives/c/in"));
}

TEST_F(NativePathsTest, TakesNoFileAndNoBrokenLinkForADrive)
{
    tree.write(u"drives/c", "");
    tree.write(u"drives/d", "");
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"drives/e")));
    EXPECT_EQ(paths.native(u"C:\\in").value_or(QString()), home() + QStringLiteral("/in"));
    EXPECT_FALSE(paths.native(u"D:\\in").has_value());
    EXPECT_FALSE(paths.native(u"E:\\in").has_value());
}

TEST_F(NativePathsTest, DoesNotTakeTheHomeFolderForADriveWhoseDiskIsAway)
{
    tree.makeFolder(u"drives");
    ASSERT_TRUE(QFile::link(tree.path(u"disk"), tree.path(u"drives/c")));
    EXPECT_FALSE(paths.native(u"C:\\in").has_value());
    tree.makeFolder(u"disk");
    EXPECT_EQ(paths.native(u"C:\\in").value_or(QString()), tree.path(u"drives/c/in"));
}

TEST_F(NativePathsTest, SeesADriveThatComesAndGoes)
{
    EXPECT_FALSE(paths.native(u"D:\\").has_value());
    tree.makeFolder(u"drives/d");
    EXPECT_TRUE(paths.native(u"D:\\").has_value());
    ASSERT_TRUE(QFile::rename(tree.path(u"drives/d"), tree.path(u"drives/f")));
    EXPECT_FALSE(paths.native(u"D:\\").has_value());
}

TEST_F(NativePathsTest, NamesFoldersBelowHomeOnC)
{
    EXPECT_EQ(paths.folderText(home()), QStringLiteral("C:\\"));
    EXPECT_EQ(paths.folderText(home() + QStringLiteral("/in/cam")),
              QStringLiteral("C:\\in\\cam\\"));
    EXPECT_EQ(paths.folderText(home() + QStringLiteral("/in/")), QStringLiteral("C:\\in\\"));
}

TEST_F(NativePathsTest, NamesOtherFoldersFromTheRoot)
{
    EXPECT_EQ(paths.folderText(QStringLiteral("/srv/cams")), QStringLiteral("\\srv\\cams\\"));
    EXPECT_EQ(paths.folderText(QStringLiteral("/")), QStringLiteral("\\"));
    const QString beside = home() + QStringLiteral("stead");
    EXPECT_EQ(paths.native(paths.folderText(beside)).value_or(QString()), beside);
}

TEST_F(NativePathsTest, NamesHomeFromTheRootWhenCIsAnotherFolder)
{
    tree.makeFolder(u"drives/c");
    EXPECT_EQ(paths.native(paths.folderText(home())).value_or(QString()), home());
    EXPECT_EQ(paths.folderText(tree.path(u"drives/c/in")), QStringLiteral("C:\\in\\"));
}

} // namespace
} // namespace velmora
