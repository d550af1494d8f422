// Lamp colours as the settings file holds them: BGR integers, 0x00BBGGRR.
#pragma once

#include <QtGlobal>

namespace velmora {

/// The settings file may hold any integer; these have a meaning.
enum class LampColour : qint32 {
    None = 0,
    Red = 255,      // failed, or no address; storage folder missing
    Orange = 33023, // loading
    Green = 65280,  // good; storage folder present
    Yellow = 65535  // picture arrived
};

} // namespace velmora
