// Notices cameras whose pictures come without a date, so that the user can be told of the choice
// for such cameras.
#pragma once

#include "cameras/CameraAddress.h"

#include <QString>

namespace velmora {

class UndatedWatch
{
public:
    /// A good picture came without a date. True once for each camera, at the third in a row. With a
    /// different address, it is a different camera.
    [[nodiscard]] bool addUndated(CameraAddress camera, const QString &address);

    /// A picture came with one.
    void addDated(CameraAddress camera);

    /// For this camera the choice is made: should it be taken back, it counts from the beginning.
    void forget(CameraAddress camera);

private:
    static constexpr int kEnough = 3;

    struct Count
    {
        QString address;
        int seen = 0;
    };

    PerCamera<Count> counts_;
};

} // namespace velmora
