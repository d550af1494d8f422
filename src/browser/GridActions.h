// What mouse and keys do on the contact sheet besides choosing an image: zoom, copy, open, search.
#pragma once

#include "browser/BrowserLists.h"
#include "browser/NameSearch.h"

#include <QObject>

namespace velmora {

class GridActions : public QObject
{
    Q_OBJECT

public:
    /// What it uses besides the browser's lists and selection.
    struct Uses
    {
        const StorageFolder &storage;
        const CameraFolders &folders;
        Sheet &sheet;
    };

    /// Everything passed in outlives the object.
    GridActions(const Uses &uses, const BrowserData &data, const Selection &selection,
                BrowserLists &lists);

    /// The left button was pressed on a cell with a picture: it too is framed until the button is
    /// released.
    void frameCell(int cell);
    void releaseCell();

    /// Enlarges an image and requests a copy of it; does nothing for none.
    void zoom(const ImageFile &image);

    /// Enlarges the selected image, or puts the enlarged one away.
    void toggleZoom();

    /// The enlarged image was clicked.
    void ZoomImage_Click();

    /// A cell was double-clicked: in camera view, hands the selected image to the desktop, unless
    /// the cell is empty.
    void Vue_DblClick(int cell);

    /// The list of images was double-clicked: hands the selected camera's folder to the desktop.
    void LstDir_DblClick();

    /// Finds an image by date and time ("nom de fichier"): selects the first whose name holds both,
    /// or else the first of that day, and returns the outcome.
    SearchOutcome NomFichier(const QString &lDate, const QString &lTime);

Q_SIGNALS:
    /// Native paths.
    void openWanted(const QString &path);
    void copyWanted(const QString &path);

private:
    Uses uses_;
    const BrowserData &data_;
    const Selection &selection_;
    BrowserLists &lists_;
};

} // namespace velmora
