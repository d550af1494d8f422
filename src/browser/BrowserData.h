// What the image browser shows: the choice, the lists and the contact sheet.
#pragma once

#include "browser/BrowserState.h"
#include "browser/FileList.h"
#include "browser/Sheet.h"

#include <QStringListModel>

namespace velmora {

/// Only the browser's parts change it, the choice and the view `Selection` alone. The slideshow,
/// the film maker, the alarm and the windows read it.
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
