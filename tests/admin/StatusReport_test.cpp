// How the program and its cameras are doing.
#include "admin/StatusReport.h"

#include "admin/StoredImages.h"
#include "cameras/FolderName.h"
#include "health/HealthStore.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::TempTree;

const QString kUrl = QStringLiteral("http://cam/x.jpg");

class Status : public testing::Test
{
protected:
    Status()
    {
        tree.makeFolder(u"drives/c/in");
        settings.write(u"Liste0", u"lst3", kUrl);
        settings.write(u"Liste0", u"LstAct", u"1");
    }

    void showRed() const { settings.write(u"Groupe0", u"SB3", u"255"); }

    void knowHealth(const QString &folder, const QString &failure) const
    {
        CameraHealths healths;
        healths[{0, 3}].folder = folder;
        healths[{0, 3}].failure = failure;
        saveHealth(tree.path(), healths);
    }

    [[nodiscard]] QString nativeFolder() const
    {
        return NativePaths(tree.path())
            .native(QStringLiteral("C:\\in") + encodeFolderName(kUrl))
            .value_or(QString());
    }

    void putImage(const QString &name) const
    {
        const QString folder = encodeFolderName(kUrl);
        tree.write(QStringLiteral("drives/c/in/") + folder.sliced(1, folder.size() - 2) + u'/' +
                       name,
                   "picture");
    }

    [[nodiscard]] ProgramStatus status(std::optional<qint64> pid = 4711) const
    {
        return programStatus(settings, NativePaths(tree.path()), pid,
                             pid ? std::optional(report) : std::nullopt);
    }

    [[nodiscard]] static QJsonObject json(const ProgramStatus &status)
    {
        return QJsonDocument::fromJson(statusResult(status, {ListForm::Json}).out.toUtf8())
            .object();
    }

    TempTree tree;
    SettingsFile settings{tree.path()};
    ProgramReport report;
};

TEST_F(Status, TellsOfAFolderThatCannotBeReadToItsEnd)
{
    settings.write(u"Groupe0", u"SB3", u"65280");
    putImage(QStringLiteral("20261121_1340242114.jpg"));
    EXPECT_EQ(statusResult(status(), {}).status, kDone);
    EXPECT_TRUE(json(status())[u"cameras"][0][u"unread"].isNull());
    const test::RefusedCall failing(test::Call::ReadFolder, EIO, 1, 1);
    const ProgramStatus now = status();
    const QString why =
        QStringLiteral("the folder could not be read to its end: Input/output error");
    EXPECT_EQ(json(now)[u"cameras"][0][u"stored"].toInt(), 1);
    EXPECT_EQ(json(now)[u"cameras"][0][u"unread"].toString(), why);
    EXPECT_TRUE(statusResult(now, {}).out.endsWith(u'\t' + why + u'\n'));
    EXPECT_EQ(statusResult(now, {}).status, kRefused);
}

TEST_F(Status, TellsTheProgramAndItsCameras)
{
    settings.write(u"Groupe0", u"SB3", u"65280");
    settings.write(u"Camera03", u"Name", u"Garage");
    putImage(QStringLiteral("20261121_1340252114.jpg"));
    putImage(QStringLiteral("20261121_1340242114.jpg"));
    putImage(QStringLiteral("notes.txt"));
    const QJsonObject told = json(status());
    EXPECT_EQ(told[QStringLiteral("running")], true);
    EXPECT_EQ(told[QStringLiteral("pid")], 4711);
    EXPECT_EQ(told[QStringLiteral("storage")], tree.path(u"drives/c/in"));
    EXPECT_EQ(told[QStringLiteral("storage_present")], true);
    EXPECT_GT(told[QStringLiteral("free_bytes")].toDouble(), 0);
    const QJsonObject expected{{QStringLiteral("group"), 0},
                               {QStringLiteral("row"), 3},
                               {QStringLiteral("name"), QStringLiteral("Garage")},
                               {QStringLiteral("on"), true},
                               {QStringLiteral("state"), QStringLiteral("good")},
                               {QStringLiteral("failure"), QJsonValue::Null},
                               {QStringLiteral("newest"), QStringLiteral("2026-11-21T13:40:25Z")},
                               {QStringLiteral("stored"), 2}};
    QJsonObject camera = told[QStringLiteral("cameras")].toArray().first().toObject();
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        EXPECT_EQ(camera[it.key()], it.value()) << it.key().toStdString();
    }
    EXPECT_EQ(statusResult(status(), {}).status, 0);
}

// The lamp stays green in a file that cannot be written.
TEST_F(Status, BelievesTheRunningProgramThatACameraFailsMoreThanItsStoredLamp)
{
    settings.write(u"Groupe0", u"SB3", u"65280");
    report.failures[{0, 3}] = QStringLiteral("no answer");
    const QJsonObject camera = json(status())[u"cameras"][0].toObject();
    EXPECT_EQ(camera[u"state"].toString(), QStringLiteral("failed"));
    EXPECT_EQ(camera[u"failure"].toString(), QStringLiteral("no answer"));
    EXPECT_EQ(statusResult(status(), {}).status, kRefused);
}

TEST_F(Status, TellsWhyACameraFailed)
{
    showRed();
    report.failures[{0, 3}] = QStringLiteral("no answer");
    EXPECT_EQ(status().cameras.front().failure, QStringLiteral("no answer"));
    EXPECT_EQ(status().cameras.front().state, CameraState::Failed);
    EXPECT_EQ(statusResult(status(), {}).status, 1);
    EXPECT_TRUE(statusResult(status(), {}).out.contains(QStringLiteral("no answer")));
}

// A row without an address is red, and stays so when it gets one.
TEST_F(Status, DoesNotKnowHowACameraIsThatWasNeverFetched)
{
    showRed();
    settings.write(u"Groupe0", u"BestTime3", u"00:00:00");
    settings.write(u"Groupe0", u"lNew3", u"0");
    settings.write(u"Groupe0", u"TimeLoad3", u"0");
    EXPECT_EQ(status().cameras.front().state, CameraState::Unknown);
    EXPECT_EQ(json(status())[QStringLiteral("cameras")].toArray().first()[QStringLiteral("state")],
              QStringLiteral("unknown"));
    EXPECT_EQ(statusResult(status(), {}).status, 0);
}

TEST_F(Status, TakesARedRowThatWasFetchedForFailedWhereNothingElseIsKnown)
{
    showRed();
    for (const QStringView key : {u"TimeLoad3", u"LocalTime3", u"LastModified3"}) {
        settings.write(u"Groupe0", key, key == u"TimeLoad3" ? u"5" : u"21/11/2026 13:40:25");
        EXPECT_EQ(status().cameras.front().state, CameraState::Failed);
        settings.write(u"Groupe0", key, u"");
    }
    EXPECT_EQ(status().cameras.front().state, CameraState::Unknown);
}

TEST_F(Status, KnowsTheFailureOfAProgramThatEnded)
{
    showRed();
    knowHealth(nativeFolder(), QStringLiteral("no route"));
    EXPECT_EQ(status(std::nullopt).cameras.front().state, CameraState::Failed);
}

// What a row has gathered stays when its address changes.
TEST_F(Status, DoesNotBlameACameraForTheOneBeforeItInItsRow)
{
    showRed();
    settings.write(u"Groupe0", u"TimeLoad3", u"5");
    for (const QString &folder : {nativeFolder(), nativeFolder() + u'x'}) {
        knowHealth(folder, folder == nativeFolder() ? QString() : QStringLiteral("no route"));
        EXPECT_EQ(status().cameras.front().state, CameraState::Unknown);
        EXPECT_FALSE(status().cameras.front().failure);
        EXPECT_EQ(statusResult(status(), {}).status, 0);
    }
}

TEST_F(Status, TellsWhichAreLateAndWhyARestartedProgramDoesNotKnow)
{
    showRed();
    CameraHealths healths;
    CameraHealth &health = healths[{0, 3}];
    health.folder = nativeFolder();
    health.lateSince = Moment(std::chrono::seconds(1'000'000'000));
    health.failure = QStringLiteral("no route");
    saveHealth(tree.path(), healths);
    EXPECT_EQ(status().cameras.front().late, QStringLiteral("2001-09-09T01:46:40Z"));
    EXPECT_EQ(status().cameras.front().failure, QStringLiteral("no route"));
    health.folder += u'x'; // belonged to another camera
    saveHealth(tree.path(), healths);
    EXPECT_FALSE(status().cameras.front().late);
    EXPECT_FALSE(status().cameras.front().failure);
}

TEST_F(Status, ShowsTheAddressWhereThereIsNoName)
{
    EXPECT_TRUE(statusResult(status(), {}).out.contains(QStringLiteral("\tcam/x.jpg\t")));
}

TEST_F(Status, IsWellAgainWithTheCamera)
{
    settings.write(u"Groupe0", u"SB3", u"65280");
    knowHealth(nativeFolder(), QStringLiteral("no answer"));
    EXPECT_FALSE(status().cameras.front().failure);
    EXPECT_EQ(statusResult(status(), {}).status, 0);
}

TEST_F(Status, TellsTheCameraThatIsBeingLoaded)
{
    report.loading = CameraAddress{0, 3};
    EXPECT_EQ(status().cameras.front().state, CameraState::Loading);
    EXPECT_EQ(statusResult(status(), {}).status, 0);
}

TEST_F(Status, DoesNotCountCamerasOfAGroupThatIsOff)
{
    showRed();
    report.failures[{0, 3}] = QStringLiteral("no answer");
    settings.write(u"Liste0", u"LstAct", u"0");
    EXPECT_EQ(statusResult(status(), {}).status, 0);
}

TEST_F(Status, IsOneWithoutTheStorageFolder)
{
    settings.write(u"Control", u"StRep", u"\\nowhere\\at\\all\\");
    EXPECT_EQ(json(status())[QStringLiteral("storage_present")], false);
    EXPECT_EQ(json(status())[QStringLiteral("free_bytes")], QJsonValue::Null);
    EXPECT_EQ(statusResult(status(), {}).status, 1);
}

TEST_F(Status, IsOneWithADiskThatIsNearlyFull)
{
    ProgramStatus low = status();
    low.isDiskLow = false;
    EXPECT_EQ(json(low)[QStringLiteral("disk_low")], false);
    low.isDiskLow = true;
    EXPECT_EQ(json(low)[QStringLiteral("disk_low")], true);
    EXPECT_TRUE(statusResult(low, {}).out.contains(QStringLiteral("disk nearly full")));
    EXPECT_EQ(statusResult(low, {}).status, 1);
}

TEST_F(Status, IsTwoWhenNothingRuns)
{
    EXPECT_EQ(statusResult(status(std::nullopt), {}).status, 2);
    EXPECT_EQ(json(status(std::nullopt))[QStringLiteral("pid")], QJsonValue::Null);
    EXPECT_EQ(json(status(std::nullopt))[QStringLiteral("running")], false);
}

TEST_F(Status, KnowsNoDateOfAnImageWithoutOne)
{
    putImage(QStringLiteral("18991230_0000002114.jpg"));
    EXPECT_FALSE(status().cameras.front().newest);
    EXPECT_EQ(status().cameras.front().stored, 1);
}

} // namespace
} // namespace velmora
