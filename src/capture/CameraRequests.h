// Makes the request for a camera's picture: address, time limit, login, work folder.
#pragma once

#include "cameras/CameraChoices.h"
#include "cameras/StorageFolder.h"
#include "capture/CaptureOptions.h"
#include "capture/HttpRequest.h"

namespace velmora {

/// Everything passed in outlives the object.
class CameraRequests
{
public:
    CameraRequests(const SettingsFile &settings, const StorageFolder &storage,
                   CaptureOptions &options);

    /// url: the stored address with its alternatives resolved. settings: at least the camera's own
    /// section.
    [[nodiscard]] HttpRequest stored(const SettingsSnapshot &settings, CameraAddress camera,
                                     const QString &url) const;

    /// The same for the live view, which uses the address in the box.
    [[nodiscard]] HttpRequest live(CameraAddress camera, const QString &url) const;

    /// For an address and a login that are being tried.
    [[nodiscard]] HttpRequest trial(const QString &address, const CameraLogin &login) const;

    /// Puts the time limit in force into its box.
    void normaliseLimit() { options_.normaliseTimeout(); }

private:
    [[nodiscard]] HttpRequest completed(HttpRequest request, const CameraLogin &login) const;

    const SettingsFile &settings_;
    const StorageFolder &storage_;
    CaptureOptions &options_;
};

} // namespace velmora
