// The question asked before an image is deleted.
#pragma once

#include "browser/ImageFile.h"
#include "cameras/CameraAddress.h"

namespace velmora {

/// What the user is asked before a file is deleted.
struct KillQuestion
{
    ImageFile target;
    CameraAddress camera; // whose image it is
    QString text;         // "Kill " and the file's name
};

} // namespace velmora
