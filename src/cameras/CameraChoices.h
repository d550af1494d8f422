// What a person may choose for a camera beyond its row: a name, which pictures are kept, a login.
// Each camera has a section of its own for it ("Camera07"), which is made with the first choice.
#pragma once

#include "cameras/CameraAddress.h"
#include "cameras/KeepChoice.h"
#include "settings/SettingsFile.h"

#include <QString>

#include <optional>

namespace velmora {

/// User and password that stand apart from the address.
struct CameraLogin
{
    QString user;
    QString password;

    bool operator==(const CameraLogin &) const = default;
};

/// Section of a camera's choices: "Camera" + group + row.
[[nodiscard]] QString cameraSection(CameraAddress camera);

/// "3:7": how a camera is named beside its name, and on the command line.
[[nodiscard]] QString cameraText(CameraAddress camera);

/// The camera that such a text tells; nothing for any other text.
[[nodiscard]] std::optional<CameraAddress> cameraFromText(QStringView text);

/// Why a text cannot be a camera's name, in words; nothing when it can.
[[nodiscard]] std::optional<QString> nameRefusal(QStringView name);

inline constexpr int kMaxNameLength = 60;

/// The name given to a camera, empty when there is none.
[[nodiscard]] QString cameraName(const SettingsSnapshot &settings, CameraAddress camera);

/// "3:7 Garage", or "3:7" for a camera without a name: for messages and lists of what happened.
[[nodiscard]] QString cameraTitle(const SettingsSnapshot &settings, CameraAddress camera);

/// What stands for a camera where its address would: "3:7 Garage", or the address as people read
/// it.
[[nodiscard]] QString shownCamera(const SettingsSnapshot &settings, CameraAddress camera);

/// What to tell of a camera whose pictures come without a date.
[[nodiscard]] QString undatedNotice(const SettingsSnapshot &settings, CameraAddress camera);

[[nodiscard]] KeepChoice cameraKeep(const SettingsSnapshot &settings, CameraAddress camera);

[[nodiscard]] CameraLogin cameraLogin(const SettingsSnapshot &settings, CameraAddress camera);

/// The same read straight from the file, which costs less for a single camera.
[[nodiscard]] QString cameraTitle(const SettingsFile &settings, CameraAddress camera);
[[nodiscard]] KeepChoice cameraKeep(const SettingsFile &settings, CameraAddress camera);
[[nodiscard]] CameraLogin cameraLogin(const SettingsFile &settings, CameraAddress camera);

/// Stores what nameRefusal() lets pass; blanks around it do not count, and an empty name takes the
/// name away.
void setCameraName(SettingsDraft &draft, CameraAddress camera, QStringView name);

/// What is known of the picture kept last goes with a choice that no longer needs it.
void setCameraKeep(SettingsDraft &draft, CameraAddress camera, const KeepChoice &choice);

void setCameraLogin(SettingsDraft &draft, CameraAddress camera, const CameraLogin &login);

/// The camera goes, and with it all that was chosen for it or remembered of it.
void forgetCamera(SettingsDraft &draft, CameraAddress camera);

} // namespace velmora
