// The pictures that the cameras send: a scene as JPEG, with the time at which it was taken. A
// camera takes a new one at the start of each of its periods and shows it until the next.
#pragma once

#include <QByteArray>
#include <QDateTime>

#include <chrono>

namespace velmora::demo {

struct Picture
{
    QByteArray jpeg;
    QByteArray lastModified; // RFC 1123 form, GMT: the start of the period
};

/// camera: 0-based, one that has a scene.
[[nodiscard]] std::chrono::seconds picturePeriod(int camera);

/// The picture that the camera shows at this time. camera: as for picturePeriod.
[[nodiscard]] Picture takePicture(int camera, const QDateTime &now);

} // namespace velmora::demo
