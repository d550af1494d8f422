#include "browser/GridActions.h"

namespace velmora {

GridActions::GridActions(const StorageFolder &storage, const CameraFolders &folders,
                         const BrowserData &data, Sheet &sheet, const Selection &selection,
                         BrowserLists &lists)
    : storage_(storage)
    , folders_(folders)
    , data_(data)
    , sheet_(sheet)
    , selection_(selection)
    , lists_(lists)
{
}

void GridActions::frameCell(int cell)
{
    if (!data_.state.DirCamEnCours()) {
        sheet_.press(cell);
    }
}

void GridActions::releaseCell()
{
    sheet_.release();
}

void GridActions::zoom(const ImageFile &image)
{
    if (!image.isNone()) {
        sheet_.showZoom(image);
        Q_EMIT copyWanted(nativePath(storage_, image));
    }
}

void GridActions::toggleZoom()
{
    if (sheet_.isZoomVisible()) {
        sheet_.hideZoom();
    } else if (!selection_.image().isNone()) {
        sheet_.showZoom(selection_.image());
    }
}

void GridActions::ZoomImage_Click()
{
    sheet_.hideZoom();
}

// The click that precedes every double click has already selected the cell's image; a refresh may
// have selected another one since.
void GridActions::Vue_DblClick(int cell)
{
    const ImageFile clicked = lists_.clicked();
    if (!sheet_.image(cell).isNone() && !clicked.isNone()) {
        Q_EMIT openWanted(nativePath(storage_, clicked));
    }
}

void GridActions::LstDir_DblClick()
{
    Q_EMIT openWanted(storage_.native(folders_.of(data_.state.camera())));
}

SearchOutcome GridActions::NomFichier(const QString &lDate, const QString &lTime)
{
    const std::optional<SearchKeys> keys = searchKeys(lDate, lTime);
    if (!keys) {
        return SearchOutcome::NoDate;
    }
    const ImageNames &names = data_.files.names();
    const std::optional<qsizetype> moment = names.firstContaining(keys->moment);
    const std::optional<qsizetype> found = moment ? moment : names.firstContaining(keys->day);
    if (!found) {
        return SearchOutcome::NoImageOfTheDay;
    }
    lists_.selectFile(static_cast<int>(*found));
    return moment ? SearchOutcome::Found : SearchOutcome::DayFound;
}

} // namespace velmora
