// What there is to say of each camera: why it gives no picture, or what is odd about those it
// gives.
#pragma once

#include "cameras/CameraAddress.h"

#include <QObject>
#include <QString>

namespace velmora {

/// Lives as long as the program runs; nothing of it is stored.
class CameraRemarks : public QObject
{
    Q_OBJECT

public:
    /// For people, without credentials; empty when all is well or nothing is known yet.
    [[nodiscard]] const QString &of(CameraAddress camera) const;

    /// An empty text says that all is well.
    void set(CameraAddress camera, const QString &remark);

Q_SIGNALS:
    /// What is said of this camera is another than before.
    void changed(velmora::CameraAddress camera);

private:
    PerCamera<QString> remarks_;
};

} // namespace velmora
