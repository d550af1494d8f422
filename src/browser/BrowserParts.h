// The parts of the image browser, put together. Only ImageBrowser knows them.
#pragma once

#include "browser/BrowserModes.h"
#include "browser/Choice.h"
#include "browser/FileActions.h"
#include "browser/GridActions.h"
#include "browser/ImageBrowser.h"
#include "browser/ListUpdates.h"

namespace velmora {

/// In order of dependency.
struct BrowserParts
{
    /// Everything passed in outlives the parts.
    BrowserParts(const ImageBrowser::Uses &uses, BrowserData &data, Projector &film)
        : folders(uses.storage, uses.scheduler, uses.clock, data.state)
        , selection(data)
        , slice({uses.storage, uses.conformity, uses.log, uses.scope}, data.files, data.sheet,
                selection)
        , lists({uses.settings, uses.log, uses.problems, film}, data, folders, selection, slice)
        , updates(data, folders, selection, lists)
        , modes({data.sheet, uses.settings, uses.storage, uses.scheduler, uses.clock, film}, data,
                folders, selection, lists)
        , grid({uses.storage, folders, data.sheet}, data, selection, lists)
        , files(uses.storage, folders, data, selection, lists)
        , line(uses.scope, folders, lists)
        , choice(data, selection, lists, line)
    {
    }

    CameraFolders folders;
    Selection selection;
    SliceView slice;
    BrowserLists lists;
    ListUpdates updates;
    BrowserModes modes;
    GridActions grid;
    FileActions files;
    ActionLine line;
    Choice choice;
};

} // namespace velmora
