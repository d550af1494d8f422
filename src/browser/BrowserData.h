// What the image browser shows: the choice, the lists and the contact sheet. Its parts and the
// slideshow share it.
#pragma once

#include "browser/BrowserState.h"
#include "browser/FileList.h"
#include "browser/Sheet.h"

#include <QStringListModel>

namespace velmora {

struct BrowserData
{
    BrowserState state;

    /// `LstDir`: the images of the selected camera.
    FileList files;

    /// `LstDirCam`: a row for each camera of the group, with its newest image or empty.
    QStringListModel cameraRows;

    Sheet sheet;
};

} // namespace velmora
