// Remarks on each camera: why it gives no picture, or what is odd about those it gives.
#pragma once

#include "cameras/CameraAddress.h"

#include <QObject>
#include <QString>

namespace velmora {

/// Kept as long as the program runs, and never stored.
class CameraRemarks : public QObject
{
    Q_OBJECT

public:
    /// As shown to the user, without credentials; empty when all is well or nothing is known yet.
    [[nodiscard]] const QString &of(CameraAddress camera) const;

    /// An empty text means that all is well.
    void set(CameraAddress camera, const QString &remark);

Q_SIGNALS:
    /// The remark on this camera has changed.
    void changed(velmora::CameraAddress camera);

private:
    PerCamera<QString> remarks_;
};

} // namespace velmora
