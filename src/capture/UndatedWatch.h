// Notices cameras whose pictures come without a date, so that the user can be told of the choice
// for such cameras.
#pragma once

#include "cameras/CameraAddress.h"

namespace velmora {

class UndatedWatch
{
public:
    /// A good picture came without a date. True once for each camera, at the third in a row.
    [[nodiscard]] bool addUndated(CameraAddress camera);

    /// A picture came with one.
    void addDated(CameraAddress camera);

private:
    static constexpr int kEnough = 3;

    PerCamera<int> counts_;
};

} // namespace velmora
