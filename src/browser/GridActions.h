// What mouse and keys do on the contact sheet beyond choosing an image: zoom, copy, open, search.
#pragma once

#include "browser/BrowserLists.h"
#include "browser/NameSearch.h"

#include <QObject>

namespace velmora {

class GridActions : public QObject
{
    Q_OBJECT

public:
    /// Everything given outlives the object.
    GridActions(const StorageFolder &storage, const CameraFolders &folders, BrowserData &data,
                const Selection &selection, BrowserLists &lists);

    /// The left button went down on a cell that holds a picture: it has a frame, too, until the
    /// button comes up.
    void frameCell(int cell);
    void releaseCell();

    /// The right button went down on a cell: selects its camera in group view, shows its image
    /// large and asks for a copy of it. Does nothing while an image is shown large already; an
    /// empty cell has nothing to show.
    QCoro::Task<> zoomCell(int cell);

    /// Shows the selected image large, or puts a large one away.
    void toggleZoom();

    /// The large image was clicked.
    void ZoomImage_Click();

    /// A cell was clicked twice, in camera view: gives the selected image to the desktop, unless
    /// the cell is empty.
    void Vue_DblClick(int cell);

    /// A double click on the list: gives the selected camera's folder to the desktop.
    void LstDir_DblClick();

    /// Selects the first image whose name holds date and time, or else the first of that day, and
    /// tells what came of it.
    SearchOutcome NomFichier(const QString &lDate, const QString &lTime);

Q_SIGNALS:
    /// Native paths.
    void openWanted(const QString &path);
    void copyWanted(const QString &path);

private:
    [[nodiscard]] ImageFile imageIn(int cell) const;

    const StorageFolder &storage_;
    const CameraFolders &folders_;
    BrowserData &data_;
    const Selection &selection_;
    BrowserLists &lists_;
};

} // namespace velmora
