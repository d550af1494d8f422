#include "view/CameraRemarks.h"

namespace velmora {

const QString &CameraRemarks::of(CameraAddress camera) const
{
    return remarks_[camera];
}

void CameraRemarks::set(CameraAddress camera, const QString &remark)
{
    QString &current = remarks_[camera];
    if (current != remark) {
        current = remark;
        Q_EMIT changed(camera);
    }
}

} // namespace velmora
