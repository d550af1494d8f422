#include "browser/GridActions.h"

namespace velmora {

GridActions::GridActions(StorageFolder &storage, BrowserLists &lists)
    : storage_(storage)
    , lists_(lists)
{
}

void GridActions::frameCell(int cell)
{
    if (!lists_.state().DirCamEnCours) {
        lists_.sheet().press(cell);
    }
}

void GridActions::releaseCell()
{
    lists_.sheet().release();
}

// Cells are counted from the framed one, which shows the selected image.
ImageFile GridActions::imageIn(int cell) const
{
    const BrowserState &state = lists_.state();
    if (state.view == View::Group) {
        return state.newestOf(cell);
    }
    return lists_.files().file(lists_.files().ListIndex() - state.CadreActif + cell);
}

QCoro::Task<> GridActions::zoomCell(int cell)
{
    if (lists_.state().DirCamEnCours || lists_.sheet().isZoomVisible()) {
        co_return;
    }
    const ImageFile image = imageIn(cell);
    if (!image.isNone()) {
        lists_.sheet().showZoom(image);
        Q_EMIT copyWanted(nativePath(storage_, image));
    }
    if (lists_.state().view == View::Group) {
        co_await lists_.LstDirCam_Click(cell);
    }
}

void GridActions::toggleZoom()
{
    if (lists_.sheet().isZoomVisible()) {
        lists_.sheet().hideZoom();
    } else if (!lists_.selected().isNone()) {
        lists_.sheet().showZoom(lists_.selected());
    }
}

void GridActions::ZoomImage_Click()
{
    lists_.sheet().hideZoom();
}

// The click in front of every double click has selected the cell's image already.
void GridActions::Vue_DblClick(int cell)
{
    if (!lists_.sheet().image(cell).isNone()) {
        Q_EMIT openWanted(nativePath(storage_, lists_.files().selected()));
    }
}

void GridActions::LstDir_DblClick()
{
    Q_EMIT openWanted(storage_.native(lists_.folderOf(lists_.state().camera)));
}

SearchOutcome GridActions::NomFichier(const QString &lDate, const QString &lTime)
{
    const std::optional<SearchKeys> keys = searchKeys(lDate, lTime);
    if (!keys) {
        return SearchOutcome::NoDate;
    }
    const ImageNames &names = lists_.files().names();
    const std::optional<qsizetype> moment = names.firstContaining(keys->moment);
    const std::optional<qsizetype> found = moment ? moment : names.firstContaining(keys->day);
    if (!found) {
        return SearchOutcome::NoImageOfTheDay;
    }
    lists_.selectFile(static_cast<int>(*found));
    return moment ? SearchOutcome::Found : SearchOutcome::DayFound;
}

} // namespace velmora
