// Which settings file the program starts with.
#include "start/SettingsPreparation.h"

#include "base/ProfileFile.h"
#include "settings/SettingsFile.h"
#include "support/NativeFiles.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velmora::test {
namespace {

constexpr std::time_t kDate = 1141740309;

class SettingsPreparation : public testing::Test
{
protected:
    SettingsPreparation()
    {
        tree_.makeFolder(u"program");
        tree_.makeFolder(u"windows");
    }

    void prepare() { prepareSettings(tree_.path(u"program"), tree_.path(u"windows")); }

    [[nodiscard]] QByteArray native(QStringView path) const
    {
        return QFile::encodeName(tree_.path(path));
    }

    [[nodiscard]] mode_t modeOf(QStringView path) const
    {
        struct stat info = {};
        EXPECT_EQ(::stat(native(path).constData(), &info), 0);
        return info.st_mode & 0777;
    }

    TempTree tree_;
};

TEST_F(SettingsPreparation, AnOldFileMovesInAndWins)
{
    tree_.write(u"windows/Velmora.ini", "old place");
    tree_.write(u"program/Velmora.ini", "program folder");
    tree_.write(u"program/Velmora0.ini", "template");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "old place");
    EXPECT_FALSE(tree_.exists(u"windows/Velmora.ini"));
}

TEST_F(SettingsPreparation, TheFirstRunStartsFromTheTemplate)
{
    tree_.write(u"program/Velmora0.ini", "template");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "template");
    EXPECT_TRUE(tree_.exists(u"program/Velmora0.ini"));
}

TEST_F(SettingsPreparation, AFileThatIsThereStays)
{
    tree_.write(u"program/Velmora.ini", "mine");
    tree_.write(u"program/Velmora0.ini", "template");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

TEST_F(SettingsPreparation, WithoutAnyFileThereIsNone)
{
    prepare();
    EXPECT_FALSE(tree_.exists(u"program/Velmora.ini"));
}

TEST_F(SettingsPreparation, WithoutAnOldFolderNothingMoves)
{
    tree_.write(u"program/Velmora.ini", "mine");
    prepareSettings(tree_.path(u"program"), {});
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

TEST_F(SettingsPreparation, TheProgramFolderAsOldFolderLosesNothing)
{
    tree_.write(u"program/Velmora.ini", "mine");
    prepareSettings(tree_.path(u"program"), tree_.path(u"program"));
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

TEST_F(SettingsPreparation, AnOldFileThatCannotBeCopiedStays)
{
    tree_.write(u"windows/Velmora.ini", "old place");
    prepareSettings(tree_.path(u"missing"), tree_.path(u"windows"));
    EXPECT_EQ(tree_.read(u"windows/Velmora.ini"), "old place");
}

TEST_F(SettingsPreparation, WhatIsMadeFromTheTemplateIsForTheUserAlone)
{
    tree_.write(u"program/Velmora0.ini", "template");
    const mode_t before = ::umask(0);
    prepare();
    ::umask(before);
    EXPECT_EQ(modeOf(u"program/Velmora.ini"), 0600U);
}

TEST_F(SettingsPreparation, WhatMovesOverAFileKeepsItsRights)
{
    tree_.write(u"windows/Velmora.ini", "old place");
    tree_.write(u"program/Velmora.ini", "program folder");
    ASSERT_EQ(::chmod(native(u"program/Velmora.ini").constData(), 0640), 0);
    prepare();
    EXPECT_EQ(modeOf(u"program/Velmora.ini"), 0640U);
}

TEST_F(SettingsPreparation, APipeOrADeviceForATemplateIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(native(u"program/Velmora0.ini").constData(), 0600), 0);
    prepare();
    EXPECT_FALSE(tree_.exists(u"program/Velmora.ini"));
    ASSERT_EQ(::unlink(native(u"program/Velmora0.ini").constData()), 0);
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), tree_.path(u"program/Velmora0.ini")));
    prepare();
    EXPECT_FALSE(tree_.exists(u"program/Velmora.ini"));
}

TEST_F(SettingsPreparation, APipeInTheOldPlaceIsNoSettingsFile)
{
    ASSERT_EQ(::mkfifo(native(u"windows/Velmora.ini").constData(), 0600), 0);
    tree_.write(u"program/Velmora.ini", "mine");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

// Like a file on a failing disk: it can be opened, and then yields nothing.
// Otherwise each start would undo what was changed since.
TEST_F(SettingsPreparation, AnOldFileThatCannotBeRemovedIsTakenOnce)
{
    tree_.write(u"windows/Velmora.ini", "[Control]\r\nTempo=33\r\n");
    const SettingsFile settings(tree_.path(u"program"));
    {
        const RefusedCall refused(Call::Unlink, EACCES);
        prepare();
        EXPECT_EQ(settings.read(u"Control", u"Tempo"), QStringLiteral("33"));
        settings.write(u"Control", u"Tempo", u"7");
        prepare();
        EXPECT_EQ(settings.read(u"Control", u"Tempo"), QStringLiteral("7"));
        EXPECT_TRUE(tree_.exists(u"windows/Velmora.ini"));
    }
    prepare();
    EXPECT_EQ(settings.read(u"Control", u"Tempo"), QStringLiteral("7"));
    EXPECT_FALSE(tree_.exists(u"windows/Velmora.ini"));
}

// A user who puts a backup in the old place wants it back, even if it is the very file that once
// stayed.
TEST_F(SettingsPreparation, AnOldFileThatIsPutBackCountsAgain)
{
    const QByteArray text = "[Control]\r\nTempo=33\r\n";
    writeNative(native(u"windows/Velmora.ini"), text, kDate);
    const SettingsFile settings(tree_.path(u"program"));
    {
        const RefusedCall refused(Call::Unlink, EACCES);
        prepare();
    }
    prepare();
    settings.write(u"Control", u"Tempo", u"7");
    ASSERT_FALSE(tree_.exists(u"windows/Velmora.ini"));
    writeNative(native(u"windows/Velmora.ini"), text, kDate);
    prepare();
    EXPECT_EQ(settings.read(u"Control", u"Tempo"), QStringLiteral("33"));
}

TEST_F(SettingsPreparation, AnOldFileThatCouldNotBeRemovedCountsAgainOnceItChanges)
{
    tree_.write(u"windows/Velmora.ini", "[Control]\r\nTempo=33\r\n");
    {
        const RefusedCall refused(Call::Unlink, EACCES);
        prepare();
    }
    tree_.write(u"windows/Velmora.ini", "[Control]\r\nTempo=120\r\n");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "[Control]\r\nTempo=120\r\n");
    EXPECT_FALSE(tree_.exists(u"windows/Velmora.ini"));
}

// The disk with the settings may be away.
TEST_F(SettingsPreparation, TheTemplateReplacesNoLinkThatLeadsNowhere)
{
    tree_.write(u"program/Velmora0.ini", "template");
    ASSERT_TRUE(
        QFile::link(QStringLiteral("away/Velmora.ini"), tree_.path(u"program/Velmora.ini")));
    prepare();
    EXPECT_TRUE(QFileInfo(tree_.path(u"program/Velmora.ini")).isSymLink());
}

TEST_F(SettingsPreparation, AnOldFileThatCannotBeReadToItsEndReplacesNothing)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("/proc/self/mem"), tree_.path(u"windows/Velmora.ini")));
    tree_.write(u"program/Velmora.ini", "mine");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
    EXPECT_TRUE(QFileInfo(tree_.path(u"windows/Velmora.ini")).isSymLink());
}

// Starts and writes at once, like a command beside others.
[[noreturn]] void prepareAndWrite(const QString &program, int number)
{
    prepareSettings(program, {});
    const bool isWritten =
        writeProfileValue(program + QStringLiteral("/Velmora.ini"), "Commands",
                          QByteArray::number(number), "1") == ProfileWrite::Written;
    ::_exit(isWritten ? 0 : 1);
}

TEST_F(SettingsPreparation, TheTemplateReplacesNothingThatOthersWriteMeanwhile)
{
    constexpr int kRounds = 25;
    constexpr int kCommands = 6;
    tree_.write(u"program/Velmora0.ini", "[Control]\r\nTempo=3\r\n");
    for (int round = 0; round < kRounds; ++round) {
        QFile::remove(tree_.path(u"program/Velmora.ini"));
        std::vector<pid_t> commands;
        for (int i = 0; i < kCommands; ++i) {
            commands.push_back(::fork());
            if (commands.back() == 0) {
                prepareAndWrite(tree_.path(u"program"), i);
            }
        }
        for (const pid_t command : commands) {
            int status = 1;
            EXPECT_EQ(::waitpid(command, &status, 0), command);
            EXPECT_EQ(status, 0);
        }
        const QByteArray left = tree_.read(u"program/Velmora.ini");
        EXPECT_EQ(left.count("=1\r\n"), kCommands) << left.toStdString();
        EXPECT_TRUE(left.contains("Tempo=3")) << left.toStdString();
    }
}

} // namespace
} // namespace velmora::test
