// The state shared by the parts of the image browser: what is chosen, and the flags that keep one
// action from disturbing another. It changes only by named steps.
#pragma once

#include "browser/ImageFile.h"
#include "cameras/CameraAddress.h"

#include <QScopedValueRollback>

#include <array>

namespace velmora {

inline constexpr int kCells = 10;

enum class View {
    Camera, // ten consecutive images of one camera
    Group   // the newest image of each camera of a group
};

/// The browser's parts take the steps, each named after what has happened; everything else reads.
class BrowserState
{
public:
    /// What is selected in the lists of groups and cameras.
    [[nodiscard]] CameraAddress camera() const { return camera_; }

    void cameraChosen(CameraAddress camera) { camera_ = camera; }

    [[nodiscard]] View view() const { return view_; }

    void viewSwitched(View view) { view_ = view; }

    /// The newest image of a camera ("dernière image") in group view; none for a camera without
    /// images.
    [[nodiscard]] const ImageFile &DerniereImage(int row) const { return newest_.at(index(row)); }

    void newestFound(int row, const ImageFile &image) { newest_.at(index(row)) = image; }

    /// The cell of the selected image ("cadre actif"), 0 to 9.
    [[nodiscard]] int CadreActif() const { return framed_; }

    void cellFramed(int cell) { framed_ = cell; }

    /// Camera folders may be read ("lecture"). Once true, this stays true.
    [[nodiscard]] bool LectureOK() const { return mayRead_; }

    void allowReading() { mayRead_ = true; }

    /// The group view is being filled ("en cours"): clicks on its cells are ignored.
    [[nodiscard]] bool DirCamEnCours() const { return isFilling_; }

    /// Filling goes on for as long as the result lives.
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
