// What the demonstration cameras see: drawn scenes of which parts move with time. Drawing depends
// on nothing but camera and time, so the same moment always gives the same picture.
#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

namespace velmora::demo {

constexpr int kSceneCount = 8;

/// A picture of 640 x 480 pixels with a strip that says the camera's number, the scene and the
/// time. camera: 0-based, below kSceneCount. time: shown in its own zone.
[[nodiscard]] QImage drawScene(int camera, const QDateTime &time);

/// Name of the scene for people. camera: as for drawScene.
[[nodiscard]] QString sceneName(int camera);

} // namespace velmora::demo
