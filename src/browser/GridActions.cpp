#include "browser/GridActions.h"

namespace velmora {

GridActions::GridActions(const Uses &uses, const BrowserData &data, const Selection &selection,
                         BrowserLists &lists)
    : uses_(uses)
    , data_(data)
    , selection_(selection)
    , lists_(lists)
{
}

void GridActions::frameCell(int cell)
{
    if (!data_.state.DirCamEnCours()) {
        uses_.sheet.press(cell);
    }
}

void GridActions::releaseCell()
{
    uses_.sheet.release();
}

void GridActions::zoom(const ImageFile &image)
{
    if (!image.isNone()) {
        uses_.sheet.showZoom(image);
        Q_EMIT copyWanted(nativePath(uses_.storage, image));
    }
}

void GridActions::toggleZoom()
{
    if (uses_.sheet.isZoomVisible()) {
        uses_.sheet.hideZoom();
    } else if (!selection_.image().isNone()) {
        uses_.sheet.showZoom(selection_.image());
    }
}

void GridActions::ZoomImage_Click()
{
    uses_.sheet.hideZoom();
}

// The click that precedes every double click has already selected the cell's image; a refresh may
// have selected another one since.
void GridActions::Vue_DblClick(int cell)
{
    const ImageFile clicked = lists_.clicked();
    if (!uses_.sheet.image(cell).isNone() && !clicked.isNone()) {
        Q_EMIT openWanted(nativePath(uses_.storage, clicked));
    }
}

void GridActions::LstDir_DblClick()
{
    Q_EMIT openWanted(uses_.storage.native(uses_.folders.of(data_.state.camera())));
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
