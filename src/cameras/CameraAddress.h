// Which of the hundred cameras, and their order: group after group.
#pragma once

#include <QtGlobal> // moc cannot parse <compare> if it comes first

#include <array>
#include <compare>
#include <cstddef>
#include <ranges>

namespace velmora {

inline constexpr int kGroups = 10;
inline constexpr int kRows = 10;
inline constexpr int kCameras = kGroups * kRows;

/// A camera by group and row, both 0 to 9.
struct CameraAddress
{
    int group = 0;
    int row = 0;

    auto operator<=>(const CameraAddress &) const = default;
};

/// The camera at a position in the order of all. index: 0 to 99.
constexpr CameraAddress cameraAt(int index)
{
    return {index / kRows, index % kRows};
}

/// The position of a camera in the order of all: 0 to 99.
constexpr int indexOf(CameraAddress camera)
{
    return camera.group * kRows + camera.row;
}

/// All cameras in order.
inline constexpr auto kAllCameras =
    std::views::iota(0, kCameras) | std::views::transform(&cameraAt);

/// One value for each camera.
template <typename Value>
class PerCamera
{
public:
    Value &operator[](CameraAddress camera) { return values_.at(place(camera)); }

    const Value &operator[](CameraAddress camera) const { return values_.at(place(camera)); }

    bool operator==(const PerCamera &) const = default;

    // In the order of all.
    auto begin() { return values_.begin(); }

    auto end() { return values_.end(); }

    [[nodiscard]] auto begin() const { return values_.begin(); }

    [[nodiscard]] auto end() const { return values_.end(); }

private:
    static std::size_t place(CameraAddress camera)
    {
        return static_cast<std::size_t>(indexOf(camera));
    }

    std::array<Value, kCameras> values_{};
};

} // namespace velmora
