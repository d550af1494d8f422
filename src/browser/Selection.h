// The selection in the image browser, and what its window shows of it.
#pragma once

#include "browser/BrowserData.h"

#include <QObject>

namespace velmora {

/// What is shown of the place in the list of images.
enum class ShownPosition {
    None,
    Count,   // how many images the selected camera has
    Position // and where among them the selected one is
};

/// The camera, the view, what is selected in it, its frame, and position and count belong together:
/// they change here.
class Selection : public QObject
{
    Q_OBJECT

public:
    /// The data outlives the object.
    explicit Selection(BrowserData &data);

    /// The image that is highlighted in the view's list and framed on the sheet, on which keys act.
    /// None when nothing is selected, or a camera without images.
    [[nodiscard]] ImageFile image() const;

    /// The selected row of `LstDirCam`, -1 for none.
    [[nodiscard]] int row() const { return row_; }

    /// Place in the list of images ("nombre d'images"), as shown: "3 / 20", "20", or nothing.
    [[nodiscard]] QString NbI() const;

    /// Whether the button that plays the images as a film is enabled.
    [[nodiscard]] bool isFilmEnabled() const { return isFilmEnabled_; }

    /// Selects a group and a camera in the lists, or one of them, nothing more.
    void choose(CameraAddress camera);
    void setGroup(int group);
    void setCamera(int row);

    /// Changes the view, nothing more; position and count, which belong to the view, are cleared.
    void setView(View view);

    /// Selects a row of the group view and the camera in it; its images are not listed yet.
    void selectRow(int row);

    /// Nothing is selected in the view any more.
    void drop();

    /// The selected image of the camera view is in this cell.
    void frame(int cell);

    /// Shows the place as it is now.
    void showPosition(ShownPosition shown);

    /// Shown with the next change.
    void enableFilm(bool enabled) { isFilmEnabled_ = enabled; }

    /// The window must update what it shows.
    void announce() { Q_EMIT changed(); }

Q_SIGNALS:
    /// Texts, buttons or selections of the window have changed.
    void changed();

private:
    BrowserData &data_;
    ShownPosition shown_ = ShownPosition::None;
    int position_ = 0; // from 1 on
    int count_ = 0;
    int row_ = -1;
    bool isFilmEnabled_ = false;
};

} // namespace velmora
