#include "admin/CameraCommands.h"

#include "admin/ListPlan.h"
#include "admin/Refusals.h"
#include "base/FileReader.h"
#include "base/OneLine.h"
#include "base/SystemCalls.h"
#include "base/UniqueFd.h"
#include "cameras/AddressRule.h"
#include "cameras/CameraChoices.h"
#include "cameras/CameraTable.h"
#include "cameras/ConfiguredCameras.h"
#include "cameras/Credentials.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <fcntl.h>
#include <set>
#include <unistd.h>

namespace velmora {
namespace {

CommandResult stored(const SettingsFile &settings, SettingsChange change, CommandResult result)
{
    if (change == SettingsChange::Failed) {
        return CommandResult::refused(notStoredText(settings));
    }
    result.changed = result.status == kDone;
    return result;
}

// Uses the same words as the main window's row.
std::optional<QString> addRefusal(const AddCommand &command, CameraAddress place)
{
    if (const auto refusal = addressRefusal(command.address, place.row)) {
        return refusal;
    }
    if (const auto loss = addressLoss(command.address, place.row)) {
        return loss;
    }
    if (holdsControls(command.address)) {
        return QStringLiteral("A camera's address is one line without control characters");
    }
    if (command.keep && !command.keep->isInRange()) {
        return percentRefusal();
    }
    return nameRefusal(command.name);
}

QString offHint(const SettingsSnapshot &settings, int group)
{
    return CameraTable::isGroupActive(settings, group)
               ? QString()
               : QStringLiteral("Group %1 is off; --set group.%1=on switches it on").arg(group);
}

CommandResult addTo(SettingsDraft &draft, const AddCommand &command)
{
    const SettingsSnapshot settings = draft.snapshot();
    const std::optional<CameraAddress> place =
        command.camera ? command.camera : firstFreeRow(settings);
    if (!place) {
        return CommandResult::refused(QStringLiteral("All hundred rows are taken"));
    }
    if (!CameraTable::url(settings, *place).isEmpty()) {
        return CommandResult::refused(
            QStringLiteral("Row %1 has a camera already").arg(cameraText(*place)));
    }
    if (const auto refusal = addRefusal(command, *place)) {
        return CommandResult::refused(*refusal);
    }
    storeCamera(draft, *place, command.address, command.name);
    if (command.keep) {
        setCameraKeep(draft, *place, *command.keep);
    }
    return {kDone, cameraText(*place) + u'\n', offHint(settings, place->group), true};
}

QString keepOf(const SettingsSnapshot &settings, CameraAddress camera)
{
    return keepText(cameraKeep(settings, camera));
}

QJsonObject cameraObject(const SettingsSnapshot &settings, CameraAddress camera)
{
    return {
        {QStringLiteral("group"), camera.group},
        {QStringLiteral("row"), camera.row},
        {QStringLiteral("address"), addressWithoutCredentials(CameraTable::url(settings, camera))},
        {QStringLiteral("name"), cameraName(settings, camera)},
        {QStringLiteral("on"), CameraTable::isGroupActive(settings, camera.group)},
        {QStringLiteral("keep"), keepOf(settings, camera)}};
}

QString cameraLine(const SettingsSnapshot &settings, CameraAddress camera)
{
    return QStringList{cameraText(camera),
                       addressWithoutCredentials(CameraTable::url(settings, camera)),
                       cameraName(settings, camera),
                       CameraTable::isGroupActive(settings, camera.group) ? QStringLiteral("on")
                                                                          : QStringLiteral("off"),
                       keepOf(settings, camera)}
               .join(u'\t') +
           u'\n';
}

// A pipe is waited for, as the user who names one expects.
WholeFile readList(const QString &path)
{
    if (path == QStringLiteral("-")) {
        return readToEnd(STDIN_FILENO, kMostListFileBytes);
    }
    const UniqueFd file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    return file ? readToEnd(file.get(), kMostListFileBytes) : WholeFile{std::nullopt, lastError()};
}

// Of the groups into which cameras go.
QStringList offHints(const SettingsSnapshot &settings, const ListPlan &plan)
{
    std::set<int> groups;
    for (const PlannedCamera &planned : plan.cameras) {
        if (planned.fate == Fate::Added && planned.place) {
            groups.insert(planned.place->group);
        }
    }
    QStringList hints;
    for (const int group : groups) {
        hints.append(offHint(settings, group));
    }
    hints.removeAll(QString());
    return hints;
}

CommandResult importInto(SettingsDraft &draft, const CameraList &list)
{
    const ListPlan plan = planList(list, draft.snapshot());
    if (!plan.isSound()) {
        return CommandResult::refused(plan.faults() + QStringLiteral("\nNothing was stored."));
    }
    CommandResult result;
    QStringList notes;
    for (const PlannedCamera &planned : plan.cameras) {
        const QString address = addressWithoutCredentials(planned.camera.address);
        if (planned.fate == Fate::Added) {
            result.out +=
                cameraText(planned.place.value_or(CameraAddress{})) + u' ' + address + u'\n';
        } else {
            notes.append(QStringLiteral("line %1: %2 %3")
                             .arg(planned.camera.line)
                             .arg(address, planned.remark));
        }
    }
    result.error = (notes + offHints(draft.snapshot(), plan)).join(u'\n');
    applyPlan(plan, draft);
    return result;
}

// Writes the whole list or nothing of it; returns why not. What is not flushed by itself, commit()
// takes for written also on a full disk.
std::optional<QString> writeList(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    const bool isWritten = file.open(QFile::WriteOnly) &&
                           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
                           file.write(text) == text.size() && file.flush() && file.commit();
    return isWritten ? std::nullopt : std::optional(file.errorString());
}

// A device or a pipe is written to as it stands: a file must not take its place.
std::optional<QString> writeInto(const QString &path, const QByteArray &text)
{
    QFile file(path);
    const bool isWritten = file.open(QFile::WriteOnly | QFile::ExistingOnly | QFile::Unbuffered) &&
                           file.write(text) == text.size();
    return isWritten ? std::nullopt : std::optional(file.errorString());
}

} // namespace

CommandResult addCamera(const SettingsFile &settings, const AddCommand &command)
{
    CommandResult result;
    const SettingsChange change =
        settings.change([&](SettingsDraft &draft) { result = addTo(draft, command); });
    return stored(settings, change, std::move(result));
}

CommandResult removeCamera(const SettingsFile &settings, const RemoveCommand &command)
{
    CommandResult result;
    const CameraAddress camera = command.camera;
    const SettingsChange change = settings.change([&](SettingsDraft &draft) {
        if (CameraTable::url(draft.snapshot(), camera).isEmpty()) {
            result = CommandResult::refused(
                QStringLiteral("Row %1 has no camera").arg(cameraText(camera)));
            return;
        }
        setUrl(draft, camera, {});
        forgetRow(draft, camera);
        forgetCamera(draft, camera);
    });
    return stored(settings, change, std::move(result));
}

CommandResult listCameras(const SettingsFile &settings, const ListCommand &command)
{
    const SettingsSnapshot snapshot = settings.snapshot();
    QJsonArray array;
    QString lines;
    for (const CameraAddress camera : configuredCameras(snapshot)) {
        array.append(cameraObject(snapshot, camera));
        lines += cameraLine(snapshot, camera);
    }
    const bool json = command.form == ListForm::Json;
    return {kDone, json ? QString::fromUtf8(QJsonDocument(array).toJson()) : lines, {}, false};
}

CommandResult importList(const SettingsFile &settings, const ImportListCommand &command)
{
    const WholeFile file = readList(command.file);
    if (!file.bytes) {
        return CommandResult::refused(unreadListText(shownTypedPath(command.file),
                                                     QString::fromStdString(file.error.message())));
    }
    const CameraList list = readCameraList(*file.bytes);
    CommandResult result;
    const SettingsChange change =
        settings.change([&](SettingsDraft &draft) { result = importInto(draft, list); });
    return stored(settings, change, std::move(result));
}

CommandResult exportList(const SettingsFile &settings, const ExportListCommand &command)
{
    const QByteArray text = cameraListText(tableAsList(settings.snapshot()));
    if (command.file == QStringLiteral("-")) {
        return {kDone, QString::fromUtf8(text), {}, false};
    }
    const QFileInfo target(command.file);
    const bool isOther = target.exists() && !target.isFile() && !target.isDir();
    const auto fault = isOther ? writeInto(command.file, text) : writeList(command.file, text);
    return fault ? CommandResult::refused(QStringLiteral("The list %1 cannot be written: %2")
                                              .arg(shownTypedPath(command.file), *fault))
                 : CommandResult{};
}

} // namespace velmora
