// What the image browser shows: the choice, the lists and the contact sheet.
#pragma once

#include "browser/BrowserState.h"
#include "browser/FileList.h"
#include "browser/Sheet.h"

#include <QStringListModel>

namespace velmora {

/// The browser's parts change it: choice, view and selection in `Selection` alone, the lists in
/// `BrowserLists` alone. Whatever is outside the browser only reads it.
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
