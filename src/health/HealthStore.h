// The file in which what is known about the cameras survives a restart.
#pragma once

#include "health/CameraHealth.h"

#include <QString>

namespace velmora {

enum class HealthFile {
    Read,
    Missing, // or damaged
    Newer,   // of a newer version: it is left as it is
    Unread,  // it is there, but an error kept it from being read: it is left as it is
    Foreign  // something else stands there, or is what a link there leads to: it is left as it is
};

struct StoredHealth
{
    HealthFile state = HealthFile::Missing;
    CameraHealths cameras;
};

/// programFolder: native path.
[[nodiscard]] StoredHealth loadHealth(const QString &programFolder);

/// Replaces the file with a whole new one. A failure leaves the old one and is not reported, since
/// everything in it can be counted again.
void saveHealth(const QString &programFolder, const CameraHealths &cameras);

} // namespace velmora
