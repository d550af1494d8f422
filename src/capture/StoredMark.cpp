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

std::vector<SettingsValue> markToStore(CameraAddress camera, const PictureMark &mark)
{
    const QString section = cameraSection(camera);
    std::vector<SettingsValue> values;
    if (!mark.digest.isEmpty()) {
        values.push_back({section, keys::kDigest.key.toString(), QString::fromLatin1(mark.digest)});
    }
    if (!mark.look.isEmpty()) {
        values.push_back({section, keys::kLook.key.toString(), QString::fromLatin1(mark.look)});
    }
    return values;
}

PictureMark KeptMarks::of(const SettingsSnapshot &settings, CameraAddress camera) const
{
    const auto known = notStored_.find(camera);
    return known == notStored_.end() ? storedMark(settings, camera) : known->second;
}

void KeptMarks::keep(CameraAddress camera, const PictureMark &mark, bool isStored)
{
    if (mark.digest.isEmpty()) {
        return;
    }
    if (isStored) {
        notStored_.erase(camera);
    } else {
        notStored_.insert_or_assign(camera, mark);
    }
}

} // namespace velmora
