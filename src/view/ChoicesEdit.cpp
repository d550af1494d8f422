#include "view/ChoicesEdit.h"

#include "cameras/AddressRule.h"
#include "cameras/CameraTable.h"

#include <QCoreApplication>

namespace velmora {

ChoicesEdit::ChoicesEdit(const SettingsFile &settings)
    : settings_(settings)
{
}

CameraFields ChoicesEdit::begin(CameraAddress camera)
{
    const SettingsSnapshot settings = settings_.snapshot();
    camera_ = camera;
    stored_ = CameraTable::url(settings, camera);
    return {cameraName(settings, camera), stored_, cameraLogin(settings, camera),
            cameraKeep(settings, camera)};
}

QString ChoicesEdit::title() const
{
    return cameraTitle(settings_.snapshot(), camera_);
}

std::optional<QString> ChoicesEdit::refusal(const CameraFields &now) const
{
    for (const auto &refusal : {addressRefusal(now.address, camera_.row), nameRefusal(now.name),
                                loginRefusal(now.login)}) {
        if (refusal) {
            return refusal;
        }
    }
    return isOfSameCamera()
               ? std::nullopt
               : std::optional(QCoreApplication::translate(
                     "ChoicesEdit", "The row has got another address meanwhile: nothing "
                                    "was stored. Cancel, and open the sheet again"));
}

bool ChoicesEdit::isOfSameCamera() const
{
    return CameraTable::url(settings_.snapshot(), camera_) == stored_;
}

void ChoicesEdit::followAddress()
{
    stored_ = CameraTable::url(settings_.snapshot(), camera_);
}

// The other fields may have been changed elsewhere since the sheet was filled.
SettingsChange ChoicesEdit::store(const CameraFields &now) const
{
    const bool isEmptied = now.address.isEmpty() && !filled_.address.isEmpty();
    if (isEmptied) {
        return SettingsChange::Made;
    }
    return settings_.change([&](SettingsDraft &draft) {
        if (now.name != filled_.name) {
            setCameraName(draft, camera_, now.name);
        }
        if (now.keep != filled_.keep) {
            setCameraKeep(draft, camera_, now.keep);
        }
        if (now.login != filled_.login || now.address != filled_.address) {
            setCameraLogin(draft, camera_, now.login);
        }
    });
}

} // namespace velmora
