#include "admin/SettingKeys.h"

#include "admin/Refusals.h"
#include "base/OneLine.h"
#include "cameras/CameraChoices.h"
#include "cameras/CameraTable.h"
#include "cameras/Credentials.h"
#include "cameras/StorageFolder.h"
#include "capture/CaptureOptions.h"

#include <QDir>
#include <QRegularExpression>

namespace velmora {
namespace {

const QString kOn = QStringLiteral("on");
const QString kOff = QStringLiteral("off");

/// A key as typed: "tick", "group.3", "camera.0:7.keep".
struct Key
{
    QString word; // "tick", "group", "keep"…
    CameraAddress camera;
};

/// The draft, and what else the value of a key depends on.
struct Target
{
    SettingsDraft &draft;
    const NativePaths &paths;
};

std::optional<Key> parsedKey(const QString &text)
{
    static const QRegularExpression global(QStringLiteral("^(storage|tick|timeout|debug)$"));
    static const QRegularExpression group(QStringLiteral("^(group)\\.([0-9])$"));
    static const QRegularExpression camera(
        QStringLiteral("^camera\\.([0-9]:[0-9])\\.(keep|name|auto|delete)$"));
    if (const auto match = global.match(text); match.hasMatch()) {
        return Key{match.captured(1), {}};
    }
    if (const auto match = group.match(text); match.hasMatch()) {
        return Key{match.captured(1), {match.captured(2).toInt(), 0}};
    }
    if (const auto match = camera.match(text); match.hasMatch()) {
        return Key{match.captured(2), cameraFromText(match.captured(1)).value_or(CameraAddress{})};
    }
    return std::nullopt;
}

std::optional<bool> switchFrom(const QString &text)
{
    if (text == kOn || text == QStringLiteral("1")) {
        return true;
    }
    return text == kOff || text == QStringLiteral("0") ? std::optional(false) : std::nullopt;
}

CommandResult noSwitch(const QString &value)
{
    return CommandResult::malformed(
        QStringLiteral("'%1' is neither on nor off.").arg(withoutCredentials(value)));
}

CommandResult setSwitch(Target &target, const SwitchKey &key, const QString &value)
{
    const std::optional<bool> on = switchFrom(value);
    if (!on) {
        return noSwitch(value);
    }
    key.write(target.draft, *on);
    return {};
}

bool isNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+(\\.[0-9]+)?$"));
    return number.match(text).hasMatch();
}

// "\srv\cams" and "C:\in" are the program's own form of a path.
bool isPathText(const QString &value)
{
    static const QRegularExpression ownForm(QStringLiteral("^(\\\\|[A-Za-z]:)"));
    return ownForm.match(value).hasMatch();
}

// Of any kind of slashes: "http:\\\\cam" is no folder either.
bool isAddress(const QString &value)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:[/\\\\]|://"));
    return scheme.match(value).hasMatch();
}

// As in any command, a path begins at the current folder, and "~" is home: not every shell has
// replaced it behind "storage=".
QString nativeFolder(const QString &value)
{
    const bool isBelowHome = value == u'~' || value.startsWith(QStringLiteral("~/"));
    const QString path = isBelowHome ? QDir::homePath() + value.sliced(1) : value;
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

// A native path is treated as a folder chosen, the program's own form as one typed.
CommandResult setStorageFolder(Target &target, const QString &value)
{
    if (value.trimmed().isEmpty() || isAddress(value) || holdsControls(value)) {
        return CommandResult::malformed(QStringLiteral("storage needs a folder."));
    }
    const bool isTyped = isPathText(value);
    const QString native = isTyped ? QString() : nativeFolder(value);
    auto refusal = isTyped ? storageTextRefusal(value) : storageRefusal(target.paths, native);
    if (refusal) {
        const QString path = isTyped ? value : native;
        return CommandResult::refused(refusal->replace(path, shownTypedPath(path)));
    }
    setStorage(target.draft, isTyped ? value : target.paths.folderText(native));
    return {};
}

CommandResult setKeep(Target &target, CameraAddress camera, const QString &value)
{
    const std::optional<KeepChoice> choice = keepFromText(value);
    if (!choice) {
        return CommandResult::malformed(
            QStringLiteral("'%1' is none of dated, differing and clearly:PERCENT.")
                .arg(withoutCredentials(value)));
    }
    if (!choice->isInRange()) {
        return CommandResult::refused(percentRefusal());
    }
    setCameraKeep(target.draft, camera, *choice);
    return {};
}

CommandResult setName(Target &target, CameraAddress camera, const QString &value)
{
    if (const auto refusal = nameRefusal(value)) {
        return CommandResult::refused(*refusal);
    }
    setCameraName(target.draft, camera, value);
    return {};
}

CommandResult setNumber(Target &target, const QString &word, const QString &value)
{
    if (!isNumber(value)) {
        return CommandResult::malformed(QStringLiteral("%1 needs a number.").arg(word));
    }
    if (word == QStringLiteral("tick")) {
        setStoredTempo(target.draft, value);
    } else {
        setStoredTimeout(target.draft, value);
    }
    return {};
}

CommandResult setKey(Target &target, const Key &key, const QString &value)
{
    const CameraAddress camera = key.camera;
    if (key.word == QStringLiteral("storage")) {
        return setStorageFolder(target, value);
    }
    if (key.word == QStringLiteral("tick") || key.word == QStringLiteral("timeout")) {
        return setNumber(target, key.word, value);
    }
    if (key.word == QStringLiteral("debug")) {
        return setSwitch(target, keys::kDebug, value);
    }
    if (key.word == QStringLiteral("group")) {
        return setSwitch(target, {listSection(camera.group), keys::kGroupSwitch}, value);
    }
    if (key.word == QStringLiteral("keep")) {
        return setKeep(target, camera, value);
    }
    if (key.word == QStringLiteral("name")) {
        return setName(target, camera, value);
    }
    const RowKey wanted = key.word == QStringLiteral("auto") ? keys::kAutoDelai : keys::kEffM;
    return setSwitch(target, {groupSection(camera.group), rowKey(wanted.word, camera.row)}, value);
}

CommandResult unknownKey(const QString &text)
{
    return CommandResult::malformed(
        QStringLiteral("There is no setting '%1'.").arg(withoutCredentials(text)));
}

CommandResult assign(Target &target, const QString &assignment)
{
    const qsizetype equals = assignment.indexOf(u'=');
    if (equals < 0) {
        return CommandResult::malformed(QStringLiteral("--set needs KEY=VALUE."));
    }
    const QString name = assignment.first(equals);
    const std::optional<Key> key = parsedKey(name);
    return key ? setKey(target, *key, assignment.sliced(equals + 1)) : unknownKey(name);
}

CommandResult assignAll(Target target, const QStringList &assignments)
{
    CommandResult result;
    for (const QString &assignment : assignments) {
        result = assign(target, assignment);
        if (result.status != kDone) {
            break;
        }
    }
    return result;
}

QString onOff(bool on)
{
    return on ? kOn : kOff;
}

QString storageValue(const SettingsSnapshot &settings, const NativePaths &paths)
{
    const QString text = storedStorage(settings);
    return paths.native(text).value_or(text);
}

QString valueOf(const SettingsSnapshot &settings, const NativePaths &paths, const Key &key)
{
    const CameraAddress camera = key.camera;
    if (key.word == QStringLiteral("storage")) {
        return storageValue(settings, paths);
    }
    if (key.word == QStringLiteral("tick")) {
        return storedTempo(settings);
    }
    if (key.word == QStringLiteral("timeout")) {
        return storedTimeout(settings);
    }
    if (key.word == QStringLiteral("debug")) {
        return onOff(keys::kDebug.read(settings));
    }
    if (key.word == QStringLiteral("group")) {
        return onOff(CameraTable::isGroupActive(settings, camera.group));
    }
    if (key.word == QStringLiteral("keep")) {
        return keepText(cameraKeep(settings, camera));
    }
    if (key.word == QStringLiteral("name")) {
        return cameraName(settings, camera);
    }
    return onOff(key.word == QStringLiteral("auto")
                     ? CameraTable::schedule(settings, camera).automatic
                     : CameraTable::deletesOld(settings, camera));
}

} // namespace

// Whether assignments make sense depends neither on what is stored nor on whether anything can be.
CommandResult setKeys(const SettingsFile &settings, const NativePaths &paths,
                      const SetCommand &command)
{
    SettingsDraft trial{QByteArray()};
    CommandResult result = assignAll({trial, paths}, command.assignments);
    if (result.status != kDone) {
        return result;
    }
    const SettingsChange change = settings.change(
        [&](SettingsDraft &draft) { result = assignAll({draft, paths}, command.assignments); });
    if (change == SettingsChange::Failed) {
        return CommandResult::refused(notStoredText(settings));
    }
    result.changed = true;
    return result;
}

CommandResult getKeys(const SettingsFile &settings, const NativePaths &paths,
                      const GetCommand &command)
{
    const SettingsSnapshot snapshot = settings.snapshot();
    CommandResult result;
    for (const QString &text : command.keys) {
        const std::optional<Key> key = parsedKey(text);
        if (!key) {
            return unknownKey(text);
        }
        result.out += valueOf(snapshot, paths, *key) + u'\n';
    }
    return result;
}

} // namespace velmora
