// The four lists of the image browser's window: groups, cameras, and the images of one camera or
// the newest of each of a group.
#pragma once

#include "browser/ImageBrowser.h"
#include "browser/PressedEntry.h"
#include "settings/SettingsFile.h"
#include "ui/ListBoxes.h"

#include <vector>

namespace velmora {

class BrowserListBoxes : public QObject
{
    Q_OBJECT

public:
    struct Widgets
    {
        ChoiceList &lstGroupe;
        ChoiceList &lstCam;
        FileView &LstDir;
        FileView &LstDirCam;
    };

    /// Everything passed in outlives the object. pressed: receives presses and releases.
    BrowserListBoxes(const Widgets &widgets, ImageBrowser &browser, PressedEntry &pressed);

    /// Shows what is selected in the view's list.
    void show(const BrowserFace &face);

    /// Describes the cameras of the group on show.
    void showNames(const SettingsSnapshot &settings);

    /// Marks which groups and cameras are late.
    void showLate(const std::vector<CameraAddress> &late);

    /// Gives the keyboard focus to the list of images.
    void focusFiles();

Q_SIGNALS:
    void keyUsed(velmora::ListKey key);

private:
    void bindFiles();
    void bindCameraRows();
    void showViewsList(View view);
    void showMarks(int group);

    Widgets widgets_;
    ImageBrowser &browser_;
    PressedEntry &pressed_;
    std::vector<CameraAddress> late_;
};

} // namespace velmora
