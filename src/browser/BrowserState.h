// What the parts of the image browser share: the choice that is shown, and the flags that keep one
// action from disturbing another.
#pragma once

#include "browser/ImageFile.h"
#include "cameras/CameraAddress.h"

#include <array>

namespace velmora {

inline constexpr int kCells = 10;

enum class View {
    Camera, // ten images of one camera in a row
    Group   // the newest image of each camera of a group
};

struct BrowserState
{
    static constexpr qint16 kYes = -1;
    static constexpr qint16 kNo = 0;

    CameraAddress camera; // what the lists of groups and cameras have selected
    View view = View::Camera;

    /// The newest image of each camera of the group, in group view.
    std::array<ImageFile, kRows> DerniereImage;

    /// The cell, 0 to 9, that is framed as the selected one.
    int CadreActif = 0;

    /// kYes once camera folders may be read.
    qint16 LectureOK = kNo;

    /// True while the cells of the group view are being filled: clicks on them are ignored.
    bool DirCamEnCours = false;

    /// kYes while the slideshow runs from the browser.
    qint16 CineActif = kNo;

    [[nodiscard]] const ImageFile &newestOf(int row) const
    {
        return DerniereImage.at(static_cast<std::size_t>(row));
    }
};

} // namespace velmora
