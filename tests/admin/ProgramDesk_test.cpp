// A command beside a running program.
#include "admin/ProgramDesk.h"

#include "admin/Administration.h"
#include "admin/RunningProgram.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <gtest/gtest.h>

#include <future>

namespace velmora {
namespace {

using namespace test;

class ProgramDeskTest : public testing::Test
{
protected:
    // The command is really another process; here it waits in another thread.
    template <typename Command>
    auto beside(Command command)
    {
        auto result = std::async(std::launch::async, std::move(command));
        const QDeadlineTimer deadline(20'000);
        while (result.wait_for(std::chrono::seconds{0}) != std::future_status::ready &&
               !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        return result.get();
    }

    FakeClock clock;
    ScriptedSource source{clock};
    CaptureHouse house{source, clock};
    QString folder = house.tree.path();
};

TEST_F(ProgramDeskTest, HearsThatTheSettingsHaveChangedBeforeTheCommandEnds)
{
    ProgramDesk desk(folder, house.table, house.store);
    int changes = 0;
    QObject::connect(&desk, &ProgramDesk::settingsChanged, &desk, [&changes] { ++changes; });
    desk.open();
    EXPECT_TRUE(beside([this] { return tellChange(folder); }));
    EXPECT_EQ(changes, 1);
}

TEST_F(ProgramDeskTest, TellsTheLastFailuresAndTheCameraInHand)
{
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    Q_EMIT house.store.cameraFailed({3, 7}, QStringLiteral("first"));
    Q_EMIT house.store.cameraFailed({3, 7}, QStringLiteral("second"));
    Q_EMIT house.store.loadBegan({0, 1}, {});
    const std::optional<ProgramReport> report = beside([this] { return askProgram(folder); });
    ASSERT_TRUE(report);
    EXPECT_EQ(report->failures.at({3, 7}), QStringLiteral("second"));
    EXPECT_EQ(report->loading, (CameraAddress{0, 1}));
}

TEST_F(ProgramDeskTest, TellsWhichCamerasAreLateAndSinceWhen)
{
    house.addCamera({3, 7}, QStringLiteral("http://cam/a.jpg"));
    house.addCamera({3, 8}, QStringLiteral("http://cam/b.jpg"));
    HealthBook health(house.table, house.storage, clock, house.scope);
    health.load();
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    const std::optional<ProgramReport> silent = beside([this] { return askProgram(folder); });
    ASSERT_TRUE(silent);
    EXPECT_FALSE(silent->late);
    desk.follow(&health);
    health.setLate({3, 7}, true);
    const std::optional<ProgramReport> report = beside([this] { return askProgram(folder); });
    ASSERT_TRUE(report && report->late);
    EXPECT_EQ(report->late->size(), 1U);
    EXPECT_EQ(report->late->at({3, 7}), health.now());
    desk.follow(nullptr);
    const std::optional<ProgramReport> last = beside([this] { return askProgram(folder); });
    ASSERT_TRUE(last);
    EXPECT_FALSE(last->late) << "what it followed has ended";
}

TEST_F(ProgramDeskTest, LeavesOutTheFailureOfACameraThatIsNoLongerThere)
{
    house.addCamera({3, 7}, QStringLiteral("http://cam/a.jpg"));
    house.addCamera({3, 8}, QStringLiteral("http://cam/b.jpg"));
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    for (const CameraAddress camera : {CameraAddress{3, 7}, CameraAddress{3, 8}}) {
        Q_EMIT house.store.loadBegan(camera, {});
        Q_EMIT house.store.cameraFailed(camera, QStringLiteral("no answer"));
    }
    house.addCamera({3, 7}, QStringLiteral("http://other/a.jpg"));
    const std::optional<ProgramReport> report = beside([this] { return askProgram(folder); });
    ASSERT_TRUE(report);
    EXPECT_FALSE(report->failures.contains({3, 7}));
    EXPECT_TRUE(report->failures.contains({3, 8}));
}

TEST_F(ProgramDeskTest, LaysAFailureToTheCameraThatWasAsked)
{
    house.addCamera({3, 7}, QStringLiteral("http://cam/a.jpg"));
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    Q_EMIT house.store.loadBegan({3, 7}, {});
    house.addCamera({3, 7}, QStringLiteral("http://other/a.jpg"));
    Q_EMIT house.store.cameraFailed({3, 7}, QStringLiteral("no answer"));
    EXPECT_TRUE(beside([this] { return askProgram(folder); })->failures.empty());
}

TEST_F(ProgramDeskTest, LeavesOutTheFailureOfACameraThatIsGoodAgain)
{
    house.addCamera({3, 7}, QStringLiteral("http://cam/a.jpg"));
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    Q_EMIT house.store.loadBegan({3, 7}, {});
    Q_EMIT house.store.cameraFailed({3, 7}, QStringLiteral("no answer"));
    Q_EMIT house.store.loadBegan({3, 7}, {});
    Q_EMIT house.store.cameraAnswered({3, 7}, {});
    const std::optional<ProgramReport> report = beside([this] { return askProgram(folder); });
    ASSERT_TRUE(report);
    EXPECT_FALSE(report->failures.contains({3, 7}));
}

TEST_F(ProgramDeskTest, LoadsNothingBehindTheEndOfALoad)
{
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    Q_EMIT house.store.loadBegan({0, 1}, {});
    Q_EMIT house.store.loaded();
    EXPECT_FALSE(beside([this] { return askProgram(folder); })->loading);
}

TEST_F(ProgramDeskTest, IsNotThereWithoutAProgram)
{
    EXPECT_FALSE(askProgram(folder));
    EXPECT_FALSE(tellChange(folder));
}

TEST_F(ProgramDeskTest, ACommandSaysWhenTheRunningProgramDoesNotAnswer)
{
    const SetCommand command{{QStringLiteral("tick=7")}};
    const auto running = [](const QString &) { return std::optional<qint64>(4711); };
    const CommandResult deaf = administer(folder, command, running);
    EXPECT_EQ(deaf.status, kDone);
    EXPECT_TRUE(deaf.error.contains(QStringLiteral("process 4711"))) << deaf.error.toStdString();

    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    const SetCommand other{{QStringLiteral("tick=8")}};
    EXPECT_EQ(beside([&] { return administer(folder, other, running); }).error, QString());
}

TEST_F(ProgramDeskTest, ACommandSaysBothThatItsGroupIsOffAndThatTheProgramDoesNotAnswer)
{
    const AddCommand command{QStringLiteral("http://a/"), CameraAddress{7, 0}, {}, {}};
    const auto running = [](const QString &) { return std::optional<qint64>(4711); };
    const QString error = administer(folder, command, running).error;
    EXPECT_TRUE(error.contains(QStringLiteral("Group 7 is off"))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("process 4711"))) << error.toStdString();
}

TEST_F(ProgramDeskTest, ACommandSaysNothingOfAProgramThatIsNotRunning)
{
    const SetCommand command{{QStringLiteral("tick=7")}};
    const auto none = [](const QString &) { return std::optional<qint64>(); };
    EXPECT_EQ(administer(folder, command, none).error, QString());
}

TEST_F(ProgramDeskTest, HangsUpOnACallerThatTalksTooMuch)
{
    ProgramDesk desk(folder, house.table, house.store);
    desk.open();
    QLocalSocket caller;
    caller.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    caller.connectToServer(deskName(folder));
    ASSERT_TRUE(caller.waitForConnected(2000));
    caller.write(QByteArray(100'000, 'x'));
    const QDeadlineTimer deadline(20'000);
    while (caller.state() == QLocalSocket::ConnectedState && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    EXPECT_EQ(caller.state(), QLocalSocket::UnconnectedState);
}

} // namespace
} // namespace velmora
