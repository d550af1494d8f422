#include "cameras/CameraChoices.h"

#include "base/AnsiText.h"
#include "base/Digits.h"
#include "base/OneLine.h"
#include "cameras/CameraTable.h"
#include "cameras/ShownAddress.h"
#include "settings/StoredText.h"

namespace velmora {
namespace {

// Blanks around a stored value are stripped when it is read, and then one pair of quotes.
QString quoted(QStringView value)
{
    const bool isQuoted = value.size() > 1 && value.front() == value.back() &&
                          (value.front() == u'"' || value.front() == u'\'');
    const bool needsQuotes = isQuoted || value.startsWith(u' ') || value.endsWith(u' ');
    return needsQuotes ? u'"' + value.toString() + u'"' : value.toString();
}

template <typename Settings>
QString read(const Settings &settings, CameraAddress camera, CameraKey key)
{
    return settings.read(cameraSection(camera), key.key);
}

void writeOrRemove(SettingsDraft &draft, CameraAddress camera, CameraKey key, QStringView value)
{
    const QString section = cameraSection(camera);
    if (!value.isEmpty()) {
        draft.write(section, key.key, quoted(value));
    } else if (!draft.read(section, key.key).isEmpty()) {
        draft.remove(section, key.key);
    }
}

template <typename Settings>
QString nameIn(const Settings &settings, CameraAddress camera)
{
    return onOneLine(read(settings, camera, keys::kName)).trimmed().left(kMaxNameLength);
}

QString titleOf(CameraAddress camera, const QString &name)
{
    return name.isEmpty() ? cameraText(camera) : cameraText(camera) + u' ' + name;
}

} // namespace

QString cameraSection(CameraAddress camera)
{
    return keys::kCameraWord.toString() + QString::number(camera.group) +
           QString::number(camera.row);
}

QString cameraText(CameraAddress camera)
{
    return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
}

std::optional<CameraAddress> cameraFromText(QStringView text)
{
    if (text.size() != 3 || !isDigit(text[0]) || text[1] != u':' || !isDigit(text[2])) {
        return std::nullopt;
    }
    return CameraAddress{text[0].unicode() - u'0', text[2].unicode() - u'0'};
}

std::optional<QString> nameRefusal(QStringView name)
{
    if (name.trimmed().size() > kMaxNameLength) {
        return QStringLiteral("A camera's name may have at most 60 characters, this one has %1")
            .arg(name.trimmed().size());
    }
    if (holdsControls(name) || !fitsAnsi(name)) {
        return QStringLiteral("A camera's name is one line of the Western European character set");
    }
    return std::nullopt;
}

std::optional<QString> loginRefusal(const CameraLogin &login)
{
    for (const QString &text : {login.user, login.password}) {
        if (!isStorable(text)) {
            return QStringLiteral("User and password are one line each of at most 254 characters "
                                  "of the Western European character set");
        }
    }
    return std::nullopt;
}

QString cameraName(const SettingsSnapshot &settings, CameraAddress camera)
{
    return nameIn(settings, camera);
}

QString cameraTitle(const SettingsSnapshot &settings, CameraAddress camera)
{
    return titleOf(camera, nameIn(settings, camera));
}

QString cameraTitle(const SettingsFile &settings, CameraAddress camera)
{
    return titleOf(camera, nameIn(settings, camera));
}

QString namedTitle(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString name = nameIn(settings, camera);
    return name.isEmpty() ? QString() : titleOf(camera, name);
}

QString nameOrAddress(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString name = nameIn(settings, camera);
    return name.isEmpty() ? shownAddress(CameraTable::url(settings, camera)) : name;
}

QString cameraLabel(const SettingsSnapshot &settings, CameraAddress camera)
{
    return titleOf(camera, nameOrAddress(settings, camera));
}

QString shownCamera(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString name = nameIn(settings, camera);
    return name.isEmpty() ? shownAddress(CameraTable::url(settings, camera))
                          : titleOf(camera, name);
}

QString undatedNotice(const SettingsSnapshot &settings, CameraAddress camera)
{
    return QStringLiteral("Camera %1 sends its pictures without a date, so only one is kept. "
                          "\"Keep what differs\" in the camera's sheet keeps the others")
        .arg(cameraTitle(settings, camera));
}

KeepChoice cameraKeep(const SettingsSnapshot &settings, CameraAddress camera)
{
    const KeepChoice choice =
        keepFromText(read(settings, camera, keys::kKeep)).value_or(KeepChoice{});
    return choice.isInRange() ? choice : KeepChoice{};
}

// A password without a user does not count.
CameraLogin cameraLogin(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString user = read(settings, camera, keys::kUser);
    return user.isEmpty() ? CameraLogin{}
                          : CameraLogin{user, read(settings, camera, keys::kPassword)};
}

void setCameraName(SettingsDraft &draft, CameraAddress camera, QStringView name)
{
    writeOrRemove(draft, camera, keys::kName, name.trimmed());
}

void setCameraKeep(SettingsDraft &draft, CameraAddress camera, const KeepChoice &choice)
{
    writeOrRemove(draft, camera, keys::kKeep,
                  choice.keep == Keep::Dated ? QString() : keepText(choice));
    if (choice.keep == Keep::Dated) {
        writeOrRemove(draft, camera, keys::kDigest, {});
    }
    if (choice.keep != Keep::Clearly) {
        writeOrRemove(draft, camera, keys::kLook, {});
    }
}

void setCameraLogin(SettingsDraft &draft, CameraAddress camera, const CameraLogin &login)
{
    writeOrRemove(draft, camera, keys::kUser, login.user);
    writeOrRemove(draft, camera, keys::kPassword, login.password);
}

QString neverLateKey(CameraAddress camera)
{
    return QStringLiteral("%1%2%3").arg(keys::kNever).arg(camera.group).arg(camera.row);
}

void forgetCamera(SettingsDraft &draft, CameraAddress camera)
{
    for (const CameraKey key : keys::kCameraChoices) {
        writeOrRemove(draft, camera, key, {});
    }
    const QString neverLate = neverLateKey(camera);
    if (!draft.read(keys::kHealth, neverLate).isEmpty()) {
        draft.remove(keys::kHealth, neverLate);
    }
}

} // namespace velmora
