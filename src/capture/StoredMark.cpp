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

PictureMark KeptMarks::of(const SettingsSnapshot &settings, CameraAddress camera) const
{
    const auto known = notStored_.find(camera);
    return known == notStored_.end() ? storedMark(settings, camera) : known->second;
}

void KeptMarks::keep(const SettingsFile &settings, CameraAddress camera, const PictureMark &mark)
{
    const QString section = cameraSection(camera);
    if (mark.digest.isEmpty()) {
        return;
    }
    settings.write(section, keys::kDigest.key, QString::fromLatin1(mark.digest));
    if (!mark.look.isEmpty()) {
        settings.write(section, keys::kLook.key, QString::fromLatin1(mark.look));
    }
    const bool isStored = storedMark(settings.snapshot(section), camera).digest == mark.digest;
    if (isStored) {
        notStored_.erase(camera);
    } else {
        notStored_.insert_or_assign(camera, mark);
    }
}

} // namespace velmora
