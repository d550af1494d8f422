// The state that the parts of the image browser share: what is chosen, and the flags that keep one
// action from disturbing another. It changes by named steps alone.
#pragma once

#include "browser/ImageFile.h"
#include "cameras/CameraAddress.h"

#include <QScopedValueRollback>

#include <array>

namespace velmora {

inline constexpr int kCells = 10;

enum class View {
    Camera, // ten images of one camera in a row
    Group   // the newest image of each camera of a group
};

/// The browser's parts take the steps; everyone else reads.
class BrowserState
{
public:
    /// What the lists of groups and cameras have selected.
    [[nodiscard]] CameraAddress camera() const { return camera_; }

    void choose(CameraAddress camera) { camera_ = camera; }

    [[nodiscard]] View view() const { return view_; }

    void show(View view) { view_ = view; }

    /// The newest image of a camera of the group, in group view; none for a camera without images.
    [[nodiscard]] const ImageFile &DerniereImage(int row) const { return newest_.at(index(row)); }

    void setNewest(int row, const ImageFile &image) { newest_.at(index(row)) = image; }

    /// The cell, 0 to 9, that is framed as the selected one.
    [[nodiscard]] int CadreActif() const { return framed_; }

    void frame(int cell) { framed_ = cell; }

    /// Camera folders may be read. Once they may, they always may.
    [[nodiscard]] bool LectureOK() const { return mayRead_; }

    void allowReading() { mayRead_ = true; }

    /// The cells of the group view are being filled: clicks on them are ignored.
    [[nodiscard]] bool DirCamEnCours() const { return isFilling_; }

    /// They are, for as long as the result lives.
    [[nodiscard]] QScopedValueRollback<bool> beginFilling()
    {
        return QScopedValueRollback<bool>(isFilling_, true);
    }

    /// The slideshow runs from the browser.
    [[nodiscard]] bool CineActif() const { return isFilming_; }

    void filmOpened() { isFilming_ = true; }

    void filmClosed() { isFilming_ = false; }

private:
    static std::size_t index(int row) { return static_cast<std::size_t>(row); }

    CameraAddress camera_;
    View view_ = View::Camera;
    std::array<ImageFile, kRows> newest_;
    int framed_ = 0;
    bool mayRead_ = false;
    bool isFilling_ = false;
    bool isFilming_ = false;
};

} // namespace velmora
