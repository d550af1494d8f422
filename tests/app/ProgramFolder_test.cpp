// Where the program keeps its settings.
#include "app/ProgramFolder.h"

#include "support/TempTree.h"

#include <QDir>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(ProgramFolder, IsThatOfTheExecutable)
{
    const TempTree tree;
    EXPECT_EQ(programFolder({{}, tree.path(), QStringLiteral("/nowhere")}), tree.path());
}

TEST(ProgramFolder, IsTheOneAskedFor)
{
    const TempTree tree;
    EXPECT_EQ(programFolder({tree.path(u"new/deep"), QStringLiteral("/usr/bin"), {}}),
              tree.path(u"new/deep"));
    EXPECT_TRUE(tree.exists(u"new/deep"));
}

TEST(ProgramFolder, OfAnInstalledProgramIsTheUsers)
{
    const TempTree tree;
    for (const char *const bin : {"/usr/bin", "/usr/local/bin"}) {
        EXPECT_EQ(programFolder({{}, QLatin1String(bin), tree.path(u"share")}),
                  tree.path(u"share/velmora"));
    }
    EXPECT_TRUE(tree.exists(u"share/velmora"));
}

TEST(ProgramFolder, OfAFolderThatCannotBeWrittenIsTheUsers)
{
    const TempTree tree;
    EXPECT_EQ(programFolder({{}, QStringLiteral("/no/such/folder"), tree.path(u"share")}),
              tree.path(u"share/velmora"));
}

TEST(ProgramFolder, IsEmptyWhenItCannotBeMade)
{
    const TempTree tree;
    tree.write(u"file", "x");
    EXPECT_EQ(programFolder({tree.path(u"file/sub"), {}, {}}), QString());
}

TEST(ProgramFolder, IsGivenWithoutLinks)
{
    const TempTree tree;
    tree.makeFolder(u"real");
    ASSERT_TRUE(QFile::link(tree.path(u"real"), tree.path(u"link")));
    EXPECT_EQ(programFolder({tree.path(u"link"), {}, {}}), tree.path(u"real"));
}

TEST(ProgramPlace, TakesTheOptionBeforeTheEnvironment)
{
    qputenv("VELMORA_PROGRAM_FOLDER", "/from/environment");
    EXPECT_EQ(currentPlace(QStringLiteral("/from/option")).requested,
              QStringLiteral("/from/option"));
    EXPECT_EQ(currentPlace({}).requested, QStringLiteral("/from/environment"));
    qunsetenv("VELMORA_PROGRAM_FOLDER");
    EXPECT_EQ(currentPlace({}).requested, QString());
}

} // namespace
} // namespace velmora::test
