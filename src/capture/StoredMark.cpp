#include "capture/StoredMark.h"

#include "cameras/CameraChoices.h"

namespace velmora {

PictureMark storedMark(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString section = cameraSection(camera);
    return {settings.read(section, kDigestKey).toLatin1(),
            settings.read(section, kLookKey).toLatin1()};
}

void storeMark(const SettingsFile &settings, CameraAddress camera, const PictureMark &mark)
{
    const QString section = cameraSection(camera);
    if (!mark.digest.isEmpty()) {
        settings.write(section, kDigestKey, QString::fromLatin1(mark.digest));
    }
    if (!mark.look.isEmpty()) {
        settings.write(section, kLookKey, QString::fromLatin1(mark.look));
    }
}

} // namespace velmora
