// Notices cameras whose pictures come without a date, so that their user can be told of the choice
// for such cameras.
#pragma once

#include "cameras/CameraAddress.h"

#include <array>

namespace velmora {

class UndatedWatch
{
public:
    /// A good picture came without a date. True once for each camera, at the third in a row.
    [[nodiscard]] bool undated(CameraAddress camera);

    /// A picture came with one.
    void dated(CameraAddress camera);

private:
    static constexpr int kEnough = 3;

    int &count(CameraAddress camera)
    {
        return counts_.at(static_cast<std::size_t>(camera.group))
            .at(static_cast<std::size_t>(camera.row));
    }

    std::array<std::array<int, kRows>, kGroups> counts_{};
};

} // namespace velmora
