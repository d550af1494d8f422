// The parts of the image browser, put together. Only ImageBrowser knows them.
#pragma once

#include "browser/BrowserModes.h"
#include "browser/BrowserServices.h"
#include "browser/Choice.h"
#include "browser/FileActions.h"
#include "browser/GridActions.h"
#include "browser/ListUpdates.h"

namespace velmora {

/// In order of dependency.
struct BrowserParts
{
    /// Everything passed in outlives the parts.
    BrowserParts(const BrowserServices &services, BrowserData &data, Projector &film)
        : folders(services, data.state)
        , selection(data)
        , lists(services, data, folders, selection, film)
        , updates(data, folders, selection, lists)
        , modes(services, data, selection, lists, film)
        , grid(services.capture.storage, folders, data, selection, lists)
        , files(services.capture.storage, folders, data, selection, lists)
        , line(services.scope, folders, lists)
        , choice(data, selection, lists, line)
    {
    }

    CameraFolders folders;
    Selection selection;
    BrowserLists lists;
    ListUpdates updates;
    BrowserModes modes;
    GridActions grid;
    FileActions files;
    ActionLine line;
    Choice choice;
};

} // namespace velmora
