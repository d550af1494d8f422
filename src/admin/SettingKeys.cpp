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

#include <algorithm>
#include <iterator>

namespace velmora {
namespace {

const QString kOn = QStringLiteral("on");
const QString kOff = QStringLiteral("off");

/// The draft, and what else the value of a key depends on.
struct Target
{
    SettingsDraft &draft;
    const NativePaths &paths;
};

struct Stored
{
    const SettingsSnapshot &settings;
    const NativePaths &paths;
};

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

// "$" would let a line end pass.
bool isNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+(\\.[0-9]+)?\\z"));
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
CommandResult setStorageFolder(Target &target, CameraAddress /*camera*/, const QString &value)
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

CommandResult setNumber(Target &target, const QString &value, QStringView word,
                        void (*store)(SettingsDraft &draft, QStringView value))
{
    if (!isNumber(value)) {
        return CommandResult::malformed(QStringLiteral("%1 needs a number.").arg(word));
    }
    store(target.draft, value);
    return {};
}

CommandResult setRowSwitch(Target &target, CameraAddress camera, RowKey key, const QString &value)
{
    return setSwitch(target, {groupSection(camera.group), rowKey(key.word, camera.row)}, value);
}

QString onOff(bool on)
{
    return on ? kOn : kOff;
}

QString storageFolder(const Stored &stored, CameraAddress /*camera*/)
{
    const QString text = storedStorage(stored.settings);
    return stored.paths.native(text).value_or(text);
}

/// What a key belongs to, and with it how it is typed: "tick", "group.3", "camera.0:7.keep".
enum class Scope { Program, Group, Camera };

struct KeyRow
{
    Scope scope;
    QStringView word;
    CommandResult (*set)(Target &target, CameraAddress camera, const QString &value);
    QString (*get)(const Stored &stored, CameraAddress camera);
};

constexpr KeyRow kKeys[] = {
    {Scope::Program, u"storage", setStorageFolder, storageFolder},
    {Scope::Program, u"tick",
     [](Target &target, CameraAddress, const QString &value) {
         return setNumber(target, value, u"tick", setStoredTempo);
     },
     [](const Stored &stored, CameraAddress) { return storedTempo(stored.settings); }},
    {Scope::Program, u"timeout",
     [](Target &target, CameraAddress, const QString &value) {
         return setNumber(target, value, u"timeout", setStoredTimeout);
     },
     [](const Stored &stored, CameraAddress) { return storedTimeout(stored.settings); }},
    {Scope::Program, u"debug",
     [](Target &target, CameraAddress, const QString &value) {
         return setSwitch(target, keys::kDebug, value);
     },
     [](const Stored &stored, CameraAddress) { return onOff(keys::kDebug.read(stored.settings)); }},
    {Scope::Group, u"group",
     [](Target &target, CameraAddress camera, const QString &value) {
         return setSwitch(target, {listSection(camera.group), keys::kGroupSwitch}, value);
     },
     [](const Stored &stored, CameraAddress camera) {
         return onOff(CameraTable::isGroupActive(stored.settings, camera.group));
     }},
    {Scope::Camera, u"keep", setKeep,
     [](const Stored &stored, CameraAddress camera) {
         return keepText(cameraKeep(stored.settings, camera));
     }},
    {Scope::Camera, u"name", setName,
     [](const Stored &stored, CameraAddress camera) {
         return cameraName(stored.settings, camera);
     }},
    {Scope::Camera, u"auto",
     [](Target &target, CameraAddress camera, const QString &value) {
         return setRowSwitch(target, camera, keys::kAutoDelai, value);
     },
     [](const Stored &stored, CameraAddress camera) {
         return onOff(CameraTable::schedule(stored.settings, camera).automatic);
     }},
    {Scope::Camera, u"delete",
     [](Target &target, CameraAddress camera, const QString &value) {
         return setRowSwitch(target, camera, keys::kEffM, value);
     },
     [](const Stored &stored, CameraAddress camera) {
         return onOff(CameraTable::deletesOld(stored.settings, camera));
     }},
};

/// A key as typed, taken apart.
struct Key
{
    const KeyRow &row;
    CameraAddress camera;
};

std::optional<Key> keyOf(Scope scope, QStringView word, CameraAddress camera)
{
    const auto *const row = std::ranges::find_if(
        kKeys, [&](const KeyRow &key) { return key.scope == scope && key.word == word; });
    return row == std::end(kKeys) ? std::nullopt : std::optional(Key{*row, camera});
}

std::optional<Key> parsedKey(const QString &text)
{
    static const QRegularExpression program(QStringLiteral("^([a-z]+)\\z"));
    static const QRegularExpression group(QStringLiteral("^([a-z]+)\\.([0-9])\\z"));
    static const QRegularExpression camera(QStringLiteral("^camera\\.([0-9]:[0-9])\\.([a-z]+)\\z"));
    if (const auto match = group.match(text); match.hasMatch()) {
        return keyOf(Scope::Group, match.capturedView(1), {match.capturedView(2).toInt(), 0});
    }
    if (const auto match = camera.match(text); match.hasMatch()) {
        return keyOf(Scope::Camera, match.capturedView(2),
                     cameraFromText(match.capturedView(1)).value_or(CameraAddress{}));
    }
    return keyOf(Scope::Program, program.match(text).capturedView(1), {});
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
    return key ? key->row.set(target, key->camera, assignment.sliced(equals + 1))
               : unknownKey(name);
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
        result.out += key->row.get({snapshot, paths}, key->camera) + u'\n';
    }
    return result;
}

} // namespace velmora
