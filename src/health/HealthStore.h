// The file in which what is known of the cameras lives through a restart.
#pragma once

#include "cameras/CameraAddress.h"
#include "health/CameraHealth.h"

#include <QString>

namespace velmora {

using CameraHealths = PerCamera<CameraHealth>;

enum class HealthFile {
    Read,
    Missing, // or damaged
    Newer    // of a newer version: it is left as it is
};

struct StoredHealth
{
    HealthFile state = HealthFile::Missing;
    CameraHealths cameras;
};

/// programFolder: native path.
[[nodiscard]] StoredHealth loadHealth(const QString &programFolder);

/// Puts a whole new file in the place of the old one; a failure leaves that one and tells nobody,
/// since everything in it can be counted anew.
void saveHealth(const QString &programFolder, const CameraHealths &cameras);

} // namespace velmora
