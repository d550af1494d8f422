// The switches of the image browser.
#pragma once

namespace velmora {

enum class Mode {
    Auto,   // `cAuto`: new images are shown as they are captured
    Camera, // `cCamera`: group view instead of camera view
    Scan    // `cScan`: group after group, or camera after camera, every ten seconds
};

} // namespace velmora
