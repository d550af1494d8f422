#include "admin/StatusReport.h"

#include "admin/StoredImages.h"
#include "base/DateText.h"
#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "cameras/CameraTable.h"
#include "cameras/ConfiguredCameras.h"
#include "cameras/FolderName.h"
#include "cameras/ShownAddress.h"
#include "cameras/StorageFolder.h"
#include "health/DiskRoom.h"
#include "health/HealthOptions.h"
#include "health/HealthStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kNothingRuns = 2;

/// What each camera's status is made from.
struct Sources
{
    const SettingsSnapshot &settings;
    const NativePaths &paths;
    QString storageText;
    const std::optional<ProgramReport> &report;
    const CameraHealths &healths;
};

// Records of a camera at a different address do not belong to this one.
CameraHealth healthOf(const CameraHealths &healths, CameraAddress camera, const QString &folder)
{
    const CameraHealth &health = healths[camera];
    return health.folder == folder ? health : CameraHealth();
}

// As the running program says, else what it recorded before it was restarted.
std::optional<QString> lastFailure(const std::optional<ProgramReport> &report, CameraAddress camera,
                                   const CameraHealth &health)
{
    if (report) {
        const auto failure = report->failures.find(camera);
        if (failure != report->failures.end()) {
            return failure->second;
        }
    }
    return health.failure.isEmpty() ? std::nullopt : std::optional(health.failure);
}

// A row is red also before its first download, and what it has recorded stays when its address
// changes. Its health starts over with each new address, so what that knows counts for more.
bool hasFailed(const Sources &sources, CameraAddress camera, const std::optional<QString> &failure)
{
    const bool isRed = CameraTable::hasLamp(sources.settings, camera, LampColour::Red);
    const bool hasHealth = !sources.healths[camera].folder.isEmpty();
    return isRed && (failure || (!hasHealth && CameraTable::wasLoaded(sources.settings, camera)));
}

// State and failure. Where the settings cannot be written, an old lamp stays in them: the running
// program's word counts for more.
void takeState(CameraStatus &status, const Sources &sources, const CameraHealth &health)
{
    const bool isTold = sources.report && sources.report->failures.contains(status.camera);
    const bool isGreen = CameraTable::hasLamp(sources.settings, status.camera, LampColour::Green);
    if (isGreen && !isTold) {
        status.state = CameraState::Good;
    } else {
        status.failure = lastFailure(sources.report, status.camera, health);
        const bool isFailed = isTold || hasFailed(sources, status.camera, status.failure);
        status.state = isFailed ? CameraState::Failed : CameraState::Unknown;
    }
    if (sources.report && sources.report->loading == status.camera) {
        status.state = CameraState::Loading;
    }
}

// Likewise as the running program says: the file about it may be unwritable.
std::optional<Moment> lateSince(const std::optional<ProgramReport> &report, CameraAddress camera,
                                const CameraHealth &health)
{
    if (!report || !report->late) {
        return health.lateSince;
    }
    const auto found = report->late->find(camera);
    return found != report->late->end() ? std::optional(found->second) : std::nullopt;
}

CameraStatus cameraStatus(const Sources &sources, CameraAddress camera, const QString &url)
{
    CameraStatus status;
    status.camera = camera;
    status.name = cameraName(sources.settings, camera);
    status.address = shownAddress(url);
    status.on = CameraTable::isGroupActive(sources.settings, camera.group);
    const QString folder = cameraFolderOf(sources.paths, sources.storageText, url);
    const CameraHealth health = healthOf(sources.healths, camera, folder);
    takeState(status, sources, health);
    const StoredImages images = storedImages(folder);
    status.stored = images.count;
    if (images.readError) {
        status.unread = unreadFolderText(images.readError);
    }
    if (images.newest) {
        status.newest = universalTimeText(*images.newest);
    }
    if (const auto since = lateSince(sources.report, camera, health)) {
        status.late = universalTimeText(WallTime(since->time_since_epoch()));
    }
    return status;
}

// The rate is that of the hours recorded by the running program.
void takeRoom(ProgramStatus &status, const SettingsFile &settings, const CameraHealths &healths)
{
    const std::optional<DiskRoom> room = diskRoom(status.storage);
    if (!room) {
        return;
    }
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    status.freeBytes = room->freeBytes;
    status.fullInDays = fullInDays(room->freeBytes, bytesADay(healths, now));
    status.isDiskLow = room->freeBytes < HealthOptions(settings).limitBytes(room->allBytes);
}

QString stateText(CameraState state)
{
    switch (state) {
    case CameraState::Good:
        return QStringLiteral("good");
    case CameraState::Failed:
        return QStringLiteral("failed");
    case CameraState::Loading:
        return QStringLiteral("loading");
    case CameraState::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

template <typename Value>
QJsonValue orNull(const std::optional<Value> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonObject cameraObject(const CameraStatus &status)
{
    return {{QStringLiteral("group"), status.camera.group},
            {QStringLiteral("row"), status.camera.row},
            {QStringLiteral("name"), status.name},
            {QStringLiteral("on"), status.on},
            {QStringLiteral("state"), stateText(status.state)},
            {QStringLiteral("failure"), orNull(status.failure)},
            {QStringLiteral("newest"), orNull(status.newest)},
            {QStringLiteral("stored"), status.stored},
            {QStringLiteral("unread"), orNull(status.unread)},
            {QStringLiteral("late"), status.late.has_value()},
            {QStringLiteral("since"), orNull(status.late)}};
}

QJsonValue pidValue(const ProgramStatus &status)
{
    const auto pid = status.pid.value_or(0);
    return pid > 0 ? QJsonValue(pid) : QJsonValue(QJsonValue::Null);
}

QJsonObject statusObject(const ProgramStatus &status)
{
    QJsonArray cameras;
    for (const CameraStatus &camera : status.cameras) {
        cameras.append(cameraObject(camera));
    }
    return {{QStringLiteral("running"), status.pid.has_value()},
            {QStringLiteral("pid"), pidValue(status)},
            {QStringLiteral("storage"), status.storage},
            {QStringLiteral("storage_present"), status.storagePresent},
            {QStringLiteral("free_bytes"), orNull(status.freeBytes)},
            {QStringLiteral("full_in_days"), orNull(status.fullInDays)},
            {QStringLiteral("disk_low"), status.isDiskLow},
            {QStringLiteral("cameras"), cameras}};
}

QString statusLines(const ProgramStatus &status)
{
    QString text = status.pid ? QStringLiteral("running, %1\n").arg(processText(*status.pid))
                              : QStringLiteral("not running\n");
    text += QStringLiteral("storage %1, %2\n")
                .arg(status.storage,
                     status.storagePresent ? QStringLiteral("there") : QStringLiteral("missing"));
    if (status.isDiskLow) {
        text +=
            QStringLiteral("disk nearly full, %1 bytes free\n").arg(status.freeBytes.value_or(0));
    }
    for (const CameraStatus &camera : status.cameras) {
        text += QStringList{cameraText(camera.camera),
                            stateText(camera.state),
                            camera.newest.value_or(QStringLiteral("-")),
                            QString::number(camera.stored),
                            camera.name.isEmpty() ? camera.address : camera.name,
                            camera.failure.value_or(QString()),
                            camera.late ? QStringLiteral("late since ") + *camera.late : QString()}
                    .join(u'\t') +
                (camera.unread ? u'\t' + *camera.unread : QString()) + u'\n';
    }
    return text;
}

} // namespace

ProgramStatus programStatus(const SettingsFile &settings, const NativePaths &paths,
                            std::optional<qint64> holder,
                            const std::optional<ProgramReport> &report)
{
    const SettingsSnapshot snapshot = settings.snapshot();
    const StoredHealth health = loadHealth(settings.programFolder());
    const Sources sources{snapshot, paths, storedStorage(snapshot), report, health.cameras};
    ProgramStatus status;
    status.pid = holder;
    status.storage = paths.native(sources.storageText).value_or(sources.storageText);
    status.storagePresent = folderExists(status.storage);
    takeRoom(status, settings, health.cameras);
    for (const CameraAddress camera : configuredCameras(snapshot)) {
        status.cameras.push_back(cameraStatus(sources, camera, CameraTable::url(snapshot, camera)));
    }
    return status;
}

bool isWell(const ProgramStatus &status)
{
    return status.storagePresent && !status.isDiskLow &&
           std::ranges::none_of(status.cameras, [](const CameraStatus &camera) {
               const bool failing =
                   camera.state == CameraState::Failed ||
                   (camera.state == CameraState::Loading && camera.failure.has_value());
               return camera.on &&
                      (failing || camera.late.has_value() || camera.unread.has_value());
           });
}

CommandResult statusResult(const ProgramStatus &status, const StatusCommand &command)
{
    CommandResult result;
    result.out = command.form == ListForm::Json
                     ? QString::fromUtf8(QJsonDocument(statusObject(status)).toJson())
                     : statusLines(status);
    if (!status.pid) {
        result.status = kNothingRuns;
    } else {
        result.status = isWell(status) ? kDone : kRefused;
    }
    return result;
}

} // namespace velmora
