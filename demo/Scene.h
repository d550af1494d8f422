// What the demonstration cameras see: drawn scenes with moving parts. Drawing depends only on
// camera and time, so the same moment always gives the same picture.
#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

namespace velmora::demo {

constexpr int kSceneCount = 8;

/// A picture of 640 x 480 pixels with a strip that shows the camera's number, the scene and the
/// time. camera: 0-based, below kSceneCount. time: shown in its own zone.
[[nodiscard]] QImage drawScene(int camera, const QDateTime &time);

/// The scene's name for display. camera: as for drawScene.
[[nodiscard]] QString sceneName(int camera);

} // namespace velmora::demo
