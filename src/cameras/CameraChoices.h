// What a user may choose for a camera beyond its row: a name, which pictures are kept, a login.
// Each camera has its own section for this ("Camera07"), which is made with the first choice.
#pragma once

#include "cameras/CameraAddress.h"
#include "cameras/KeepChoice.h"
#include "settings/SettingsFile.h"

#include <QString>

#include <optional>

namespace velmora {

/// User and password kept apart from the address.
struct CameraLogin
{
    QString user;
    QString password;

    bool operator==(const CameraLogin &) const = default;
};

/// Section of a camera's choices: "Camera" + group + row.
[[nodiscard]] QString cameraSection(CameraAddress camera);

/// A camera's number beside its name and on the command line: "3:7".
[[nodiscard]] QString cameraText(CameraAddress camera);

/// The camera that such a text names; nothing for any other text.
[[nodiscard]] std::optional<CameraAddress> cameraFromText(QStringView text);

/// Why a text cannot be a camera's name, in words; nothing when it can.
[[nodiscard]] std::optional<QString> nameRefusal(QStringView name);

/// Why a login cannot be stored, in words that do not repeat it; nothing when it can.
[[nodiscard]] std::optional<QString> loginRefusal(const CameraLogin &login);

inline constexpr int kMaxNameLength = 60;

/// The name given to a camera, empty when there is none.
[[nodiscard]] QString cameraName(const SettingsSnapshot &settings, CameraAddress camera);

/// "3:7 Garage", or "3:7" for a camera without a name: for messages and lists of what happened.
[[nodiscard]] QString cameraTitle(const SettingsSnapshot &settings, CameraAddress camera);

/// The same, empty for a camera without a name: for titles.
[[nodiscard]] QString namedTitle(const SettingsSnapshot &settings, CameraAddress camera);

/// "Garage", or the address in readable form.
[[nodiscard]] QString nameOrAddress(const SettingsSnapshot &settings, CameraAddress camera);

/// "3:7 Garage", or "3:7" and the address in readable form.
[[nodiscard]] QString cameraLabel(const SettingsSnapshot &settings, CameraAddress camera);

/// What is shown in place of a camera's address: "3:7 Garage", or the address in readable form.
[[nodiscard]] QString shownCamera(const SettingsSnapshot &settings, CameraAddress camera);

/// What to tell the user of a camera whose pictures come without a date.
[[nodiscard]] QString undatedNotice(const SettingsSnapshot &settings, CameraAddress camera);

[[nodiscard]] KeepChoice cameraKeep(const SettingsSnapshot &settings, CameraAddress camera);

[[nodiscard]] CameraLogin cameraLogin(const SettingsSnapshot &settings, CameraAddress camera);

/// The same, read straight from the file, which costs less for a single camera.
[[nodiscard]] QString cameraTitle(const SettingsFile &settings, CameraAddress camera);

/// Stores a name that nameRefusal() accepts, without the blanks around it; an empty one removes the
/// name.
void setCameraName(SettingsDraft &draft, CameraAddress camera, QStringView name);

/// A choice that no longer needs it discards what is known of the last picture kept.
void setCameraKeep(SettingsDraft &draft, CameraAddress camera, const KeepChoice &choice);

void setCameraLogin(SettingsDraft &draft, CameraAddress camera, const CameraLogin &login);

/// The key, in the section about health, that says a camera is never late.
[[nodiscard]] QString neverLateKey(CameraAddress camera);

/// Removes the camera, with all that was chosen for it or remembered about it.
void forgetCamera(SettingsDraft &draft, CameraAddress camera);

} // namespace velmora
