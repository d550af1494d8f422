#include "cameras/CameraRemarks.h"

namespace velmora {

const QString &CameraRemarks::of(CameraAddress camera) const
{
    return remarks_.at(static_cast<std::size_t>(camera.group))
        .at(static_cast<std::size_t>(camera.row));
}

void CameraRemarks::set(CameraAddress camera, const QString &remark)
{
    QString &current = remarks_.at(static_cast<std::size_t>(camera.group))
                           .at(static_cast<std::size_t>(camera.row));
    if (current != remark) {
        current = remark;
        Q_EMIT changed(camera);
    }
}

} // namespace velmora
