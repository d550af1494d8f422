// What the image browser shows: the choice, the lists and the contact sheet.
#pragma once

#include "browser/BrowserState.h"
#include "browser/FileList.h"
#include "browser/Sheet.h"

#include <QStringListModel>

namespace velmora {

/// The choice, the view and what is selected change in `Selection`, the lists in `BrowserLists`;
/// the sheet's pictures also where its cells are filled, and its zoom image where a click or a mode
/// shows it or puts it away. Everything else reads: the browser's other parts, the slideshow, the
/// film maker, the alarm and the windows.
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
