// A camera's newest image, as the group view shows it.
#pragma once

#include <QByteArray>

namespace velmora {

struct NewestImage
{
    QByteArray name; // native bytes; empty: the camera has none
};

} // namespace velmora
