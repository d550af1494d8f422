// Where the program keeps its settings.
#include "start/ProgramFolder.h"

#include "support/ScopedEnv.h"
#include "support/TempTree.h"

#include <QDir>

#include <gtest/gtest.h>

#include <map>
#include <sys/stat.h>

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

TEST(ProgramFolder, OfACopyInstalledElsewhereIsTheUsersThoughItsFolderCanBeWritten)
{
    const TempTree tree;
    tree.makeFolder(u"prefix/bin");
    tree.write(u"prefix/share/applications/velmora.desktop", "entry");
    EXPECT_EQ(programFolder({{}, tree.path(u"prefix/bin"), tree.path(u"share")}),
              tree.path(u"share/velmora"));
}

TEST(ProgramFolder, BesideTheDesktopEntriesOfOthersIsThatOfTheExecutable)
{
    const TempTree tree;
    tree.makeFolder(u"home/bin");
    tree.write(u"home/share/applications/other.desktop", "entry");
    EXPECT_EQ(programFolder({{}, tree.path(u"home/bin"), tree.path(u"share")}),
              tree.path(u"home/bin"));
    EXPECT_FALSE(tree.exists(u"share"));
}

TEST(ProgramFolder, OfAnInstalledProgramIsClosedToOthers)
{
    const TempTree tree;
    const QString folder = programFolder({{}, QStringLiteral("/usr/bin"), tree.path(u"new/share")});
    const auto everybody = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_EQ(QFileInfo(folder).permissions() & everybody, QFile::Permissions());
    EXPECT_TRUE(QFileInfo(folder).isWritable());
}

TEST(ProgramFolder, OfAnInstalledProgramKeepsThePermissionsThatItHas)
{
    const TempTree tree;
    tree.makeFolder(u"share/velmora");
    const QFile::Permissions before = QFileInfo(tree.path(u"share/velmora")).permissions();
    ASSERT_EQ(programFolder({{}, QStringLiteral("/usr/bin"), tree.path(u"share")}),
              tree.path(u"share/velmora"));
    EXPECT_EQ(QFileInfo(tree.path(u"share/velmora")).permissions(), before);
}

TEST(ProgramFolder, OfAnInstalledProgramIsEmptyWhenTheUsersCannotBeMade)
{
    const TempTree tree;
    tree.write(u"file", "x");
    EXPECT_EQ(programFolder({{}, QStringLiteral("/usr/bin"), tree.path(u"file")}), QString());
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

TEST(ProgramPlace, TakesTheDataFolderOfTheUserFromTheEnvironmentWhenItIsAbsolute)
{
    const ScopedEnv home("HOME", "/home/guard");
    const QString usual = QStringLiteral("/home/guard/.local/share");
    const std::map<QByteArray, QString> folders{
        {"/data", QStringLiteral("/data")}, {"data", usual}, {"./data", usual}, {"", usual}};
    for (const auto &[variable, folder] : folders) {
        const ScopedEnv data("XDG_DATA_HOME", variable);
        EXPECT_EQ(currentPlace({}).dataHome, folder) << variable.toStdString();
    }
}

TEST(RuntimeFolder, IsTheUsersOwnAndNoOther)
{
    const TempTree tree;
    tree.makeFolder(u"open");
    ASSERT_EQ(::chmod(QFile::encodeName(tree.path(u"open")).constData(), 0777), 0);
    const ScopedEnv own("XDG_RUNTIME_DIR", QFile::encodeName(tree.path()));
    EXPECT_EQ(runtimeFolder(), tree.path());
    const ScopedEnv temporary("TMPDIR", QFile::encodeName(tree.path(u"missing")));
    const QString usual = QStringLiteral("/run/user/");
    for (const QString &refused : {tree.path(u"open"), tree.path(u"missing"), QStringLiteral("."),
                                   QStringLiteral(""), QStringLiteral("/dev/null")}) {
        const ScopedEnv told("XDG_RUNTIME_DIR", QFile::encodeName(refused));
        EXPECT_TRUE(runtimeFolder().isEmpty() || runtimeFolder().startsWith(usual));
    }
}

TEST(RuntimeFolder, IsMadeWhereTheLogInMadeNone)
{
    const QString id = QString::number(::geteuid());
    if (QFileInfo::exists(QStringLiteral("/run/user/") + id)) {
        return; // the log-in made one
    }
    const TempTree tree;
    const ScopedEnv none("XDG_RUNTIME_DIR", "");
    const ScopedEnv temporary("TMPDIR", QFile::encodeName(tree.path()));
    const QString made = tree.path(u"velmora-") + id;
    EXPECT_EQ(runtimeFolder(), made);
    ASSERT_EQ(::chmod(QFile::encodeName(made).constData(), 0777), 0);
    EXPECT_EQ(runtimeFolder(), QString()) << "others could put a socket of theirs there";
}

} // namespace
} // namespace velmora::test
