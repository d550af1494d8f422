// What is selected in the image browser, and what its window tells of it.
#pragma once

#include "browser/BrowserData.h"

#include <QObject>

namespace velmora {

/// The selection of the view, its frame, and position and count go together: they change here.
class Selection : public QObject
{
    Q_OBJECT

public:
    /// The data outlives the object.
    explicit Selection(BrowserData &data);

    /// The image that is highlighted in the list of the view and framed on the sheet. It is what
    /// keys act on. None when nothing is selected, or a camera without images.
    [[nodiscard]] ImageFile image() const;

    /// The selected row of `LstDirCam`, -1 for none.
    [[nodiscard]] int row() const { return row_; }

    /// Position and count of the list, as shown.
    [[nodiscard]] const QString &NbI() const { return count_; }

    /// The button that plays the images as a film.
    [[nodiscard]] bool isFilmEnabled() const { return isFilmEnabled_; }

    /// Selects a group or a camera in its list, and no more.
    void setGroup(int group);
    void setCamera(int row);

    /// Changes the view, and no more; position and count, which belong to the view, are cleared.
    void setView(View view);

    /// Selects a row of the group view and the camera in it; its images are not listed yet.
    void selectRow(int row);

    /// Nothing is selected any more in the view.
    void drop();

    /// The selected image of the camera view stands in this cell.
    void frame(int cell);

    void setCount(const QString &text);

    /// Told with the next change.
    void enableFilm(bool enabled) { isFilmEnabled_ = enabled; }

    /// What the window shows is to be looked at again.
    void announce() { Q_EMIT changed(); }

Q_SIGNALS:
    /// Texts, buttons or selections of the window are others than before.
    void changed();

private:
    BrowserData &data_;
    QString count_;
    int row_ = -1;
    bool isFilmEnabled_ = false;
};

} // namespace velmora
