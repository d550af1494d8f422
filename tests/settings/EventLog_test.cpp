// The diagnostic log: the form of a line, the two generations, and what happens when it cannot be
// written.
#include "settings/EventLog.h"

#include "base/FileError.h"
#include "support/FakeClock.h"
#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::Call;
using test::FakeClock;
using test::FileSizeLimit;
using test::RefusedCall;
using test::TempTree;

class EventLogTest : public testing::Test
{
protected:
    EventLogTest()
    {
        QObject::connect(&log, &EventLog::writeFailed, &log,
                         [this](const QString &text) { failures.append(text); });
    }

    [[nodiscard]] QByteArray text() const { return tree.read(u"Velmora.log"); }

    TempTree tree;
    FakeClock clock;
    EventLog log{tree.path(), clock};
    QStringList failures;
};

TEST_F(EventLogTest, WritesTheTimeOfDayABlankAndTheMessage)
{
    log.txtDebug(QStringLiteral("Interface TestSA"));
    clock.advance(12h);
    log.txtDebug(QStringLiteral("Fin Init"));
    EXPECT_EQ(text(), QByteArray("14:05:09 Interface TestSA\n02:05:09 Fin Init\n"));
}

TEST_F(EventLogTest, KeepsLineEndsOfTheMessage)
{
    log.txtDebug(QStringLiteral("Load \r\n"));
    EXPECT_EQ(text(), QByteArray("14:05:09 Load \r\n\n"));
}

TEST_F(EventLogTest, WritesUtf8)
{
    log.txtDebug(QStringLiteral("Mise en conformit\u00e9:"));
    EXPECT_EQ(text(), QByteArray("14:05:09 Mise en conformit\xc3\xa9:\n"));
}

TEST_F(EventLogTest, StandsInTheProgramFolder)
{
    EXPECT_EQ(log.path(), tree.path(u"Velmora.log"));
}

TEST_F(EventLogTest, WritesNoFileWhileOff)
{
    EXPECT_FALSE(log.isOn());
    log.trace(QStringLiteral("unseen"));
    EXPECT_EQ(tree.files(), QStringList());
    tree.write(u"Velmora.log", QByteArray(64001, 'x'));
    log.trace(QStringLiteral("unseen"));
    EXPECT_EQ(tree.files(), QStringList{QStringLiteral("Velmora.log")});
}

TEST_F(EventLogTest, WritesWhileOnAndStopsWhenSwitchedOff)
{
    log.setOn(true);
    log.trace(QStringLiteral("one"));
    log.setOn(false);
    log.trace(QStringLiteral("two"));
    EXPECT_EQ(text(), QByteArray("14:05:09 one\n"));
}

TEST_F(EventLogTest, KeepsALogOf64000Bytes)
{
    tree.write(u"Velmora.log", QByteArray(63999, 'x') + '\n');
    log.txtDebug(QStringLiteral("next"));
    EXPECT_EQ(text(), QByteArray(63999, 'x') + "\n14:05:09 next\n");
    EXPECT_FALSE(tree.exists(u"Velmora.old"));
}

TEST_F(EventLogTest, StartsANewLogAbove64000Bytes)
{
    tree.write(u"Velmora.log", QByteArray(64001, 'x'));
    log.txtDebug(QStringLiteral("next"));
    EXPECT_EQ(text(), QByteArray("14:05:09 next\n"));
    EXPECT_EQ(tree.read(u"Velmora.old"), QByteArray(64001, 'x'));
}

TEST_F(EventLogTest, KeepsOneOlderGenerationOnly)
{
    tree.write(u"Velmora.old", "older");
    tree.write(u"Velmora.log", QByteArray(64001, 'x'));
    log.txtDebug(QStringLiteral("next"));
    EXPECT_EQ(tree.read(u"Velmora.old"), QByteArray(64001, 'x'));
    EXPECT_EQ(tree.files().size(), 2);
}

TEST_F(EventLogTest, GrowsOnWhenTheOlderGenerationCannotBeReplaced)
{
    tree.makeFolder(u"Velmora.old");
    tree.write(u"Velmora.log", QByteArray(64001, 'x'));
    log.txtDebug(QStringLiteral("next"));
    EXPECT_EQ(text(), QByteArray(64001, 'x') + "\n14:05:09 next\n");
}

TEST_F(EventLogTest, ThrowsWhenTheLogCannotBeWritten)
{
    tree.makeFolder(u"Velmora.log");
    try {
        log.txtDebug(QStringLiteral("lost"));
        FAIL() << "no error";
    } catch (const FileError &error) {
        const QString reason =
            QString::fromStdString(std::make_error_code(std::errc::is_a_directory).message());
        EXPECT_EQ(QString::fromUtf8(error.what()),
                  QStringLiteral("The log file cannot be written: ") + reason);
    }
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(EventLogTest, ThrowsWhenTheDiskIsFull)
{
    tree.write(u"Velmora.log", QByteArray(1000, 'x'));
    const FileSizeLimit limit(1000);
    EXPECT_THROW(log.txtDebug(QStringLiteral("lost")), FileError);
}

TEST_F(EventLogTest, GivesAReasonWhenTheDiskFillsUpInTheMiddleOfALine)
{
    tree.write(u"Velmora.log", QByteArray(1000, 'x'));
    const FileSizeLimit limit(1005);
    errno = 0;
    try {
        log.txtDebug(QStringLiteral("cut"));
        FAIL() << "no error";
    } catch (const FileError &error) {
        const std::string noReason = std::error_code(0, std::generic_category()).message();
        EXPECT_FALSE(std::string(error.what()).ends_with(noReason)) << error.what();
    }
}

TEST_F(EventLogTest, TellsAndGoesOnWhenATraceCannotBeWritten)
{
    tree.makeFolder(u"Velmora.log");
    log.setOn(true);
    EXPECT_NO_THROW(log.trace(QStringLiteral("lost")));
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith(QStringLiteral("The log file cannot be written: ")));
    EXPECT_TRUE(log.isOn());
}

TEST_F(EventLogTest, FailsInAMissingFolder)
{
    EventLog lost(tree.path(u"missing"), clock);
    EXPECT_THROW(lost.txtDebug(QStringLiteral("lost")), FileError);
    EXPECT_FALSE(tree.exists(u"missing"));
}

TEST_F(EventLogTest, EndsTheOpenLineOfAKilledRunFirst)
{
    tree.write(u"Velmora.log", "14:05:08 Interface Te");
    log.txtDebug(QStringLiteral("next"));
    log.txtDebug(QStringLiteral("another"));
    EXPECT_EQ(text(), QByteArray("14:05:08 Interface Te\n14:05:09 next\n14:05:09 another\n"));
}

TEST_F(EventLogTest, EndsTheOpenLineAlsoWhenItCannotBeReadForOnce)
{
    tree.write(u"Velmora.log", "14:05:08 Interface Te");
    {
        const RefusedCall refused(Call::OpenToRead, EACCES);
        log.txtDebug(QStringLiteral("next"));
    }
    EXPECT_EQ(text(), QByteArray("14:05:08 Interface Te\n14:05:09 next\n"));
}

TEST_F(EventLogTest, LeavesNothingOfALineThatDidNotFit)
{
    tree.write(u"Velmora.log", QByteArray(999, 'x') + '\n');
    {
        const FileSizeLimit limit(1005);
        EXPECT_THROW(log.txtDebug(QStringLiteral("cut")), FileError);
        EXPECT_EQ(text(), QByteArray(999, 'x') + '\n');
    }
    log.txtDebug(QStringLiteral("whole"));
    EXPECT_EQ(text(), QByteArray(999, 'x') + "\n14:05:09 whole\n");
}

TEST_F(EventLogTest, HasTheRightsThatTheMaskLeaves)
{
    const mode_t before = ::umask(077);
    log.txtDebug(QStringLiteral("next"));
    ::umask(before);
    struct stat info = {};
    ASSERT_EQ(::stat(QFile::encodeName(log.path()).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600U);
}

} // namespace
} // namespace velmora
