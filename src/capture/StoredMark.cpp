#include "capture/StoredMark.h"

#include "cameras/CameraChoices.h"
#include "settings/Keys.h"

namespace velmora {

PictureMark storedMark(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString section = cameraSection(camera);
    return {settings.read(section, keys::kDigest.key).toLatin1(),
            settings.read(section, keys::kLook.key).toLatin1()};
}

void storeMark(const SettingsFile &settings, CameraAddress camera, const PictureMark &mark)
{
    const QString section = cameraSection(camera);
    if (!mark.digest.isEmpty()) {
        settings.write(section, keys::kDigest.key, QString::fromLatin1(mark.digest));
    }
    if (!mark.look.isEmpty()) {
        settings.write(section, keys::kLook.key, QString::fromLatin1(mark.look));
    }
}

} // namespace velmora
