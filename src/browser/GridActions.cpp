#include "browser/GridActions.h"

#include "browser/NameSearch.h"

namespace velmora {

GridActions::GridActions(StorageFolder &storage, BrowserLists &lists)
    : storage_(storage)
    , lists_(lists)
{
}

QString GridActions::native(const ImageFile &image) const
{
    return image.isNone() ? QString() : storage_.native(image.folder) + u'/' + image.name;
}

void GridActions::frameCell(int cell)
{
    if (!lists_.state().DirCamEnCours) {
        lists_.sheet().setFrame(cell, FrameStyle::Framed);
    }
}

QCoro::Task<> GridActions::zoomCell(int cell)
{
    const BrowserState &state = lists_.state();
    const ImageFile image =
        state.view == View::Group ? state.newestOf(cell) : lists_.sheet().image(cell);
    if (lists_.state().DirCamEnCours || lists_.sheet().isZoomVisible() || image.isNone()) {
        co_return;
    }
    lists_.sheet().showZoom(image);
    Q_EMIT copyWanted(native(image));
    if (lists_.state().view == View::Group) {
        co_await lists_.LstDirCam_Click(cell);
    }
}

ImageFile GridActions::selectedImage() const
{
    const int cell = lists_.state().CadreActif;
    const bool framed = lists_.sheet().frame(cell) == FrameStyle::Framed;
    return framed ? lists_.sheet().image(cell) : ImageFile();
}

void GridActions::toggleZoom()
{
    if (lists_.sheet().isZoomVisible()) {
        lists_.sheet().hideZoom();
    } else if (!selectedImage().isNone()) {
        lists_.sheet().showZoom(selectedImage());
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
        Q_EMIT openWanted(native(lists_.files().selected()));
    }
}

void GridActions::LstDir_DblClick()
{
    Q_EMIT openWanted(storage_.native(lists_.folderOf(lists_.state().camera)));
}

void GridActions::NomFichier(const QString &lDate, const QString &lTime)
{
    const std::optional<SearchKeys> keys = searchKeys(lDate, lTime);
    if (!keys) {
        return;
    }
    const ImageNames &names = lists_.files().names();
    std::optional<qsizetype> found = names.firstContaining(keys->moment);
    if (!found) {
        found = names.firstContaining(keys->day);
    }
    if (found) {
        lists_.selectFile(static_cast<int>(*found));
    }
}

} // namespace velmora
