#include "browser/ListUpdates.h"

#include <algorithm>
#include <ranges>

namespace velmora {

ListUpdates::ListUpdates(const BrowserData &data, CameraFolders &folders, Selection &selection,
                         BrowserLists &lists)
    : data_(data)
    , folders_(folders)
    , selection_(selection)
    , lists_(lists)
{
}

// The list may still belong to an address that the camera no longer has.
bool ListUpdates::isListed(CameraAddress camera) const
{
    return data_.files.folder() == folders_.of(camera);
}

QCoro::Task<> ListUpdates::relist()
{
    if (data_.state.view() == View::Group) {
        co_await rebuild();
        co_return;
    }
    const bool wasListed = isListed(data_.state.camera());
    const FileList::Selected before = co_await lists_.listAgain();
    const int last = data_.files.count() - 1;
    lists_.showAround(wasListed ? std::min(before.index, last) : -1);
}

// Rows with the same address have one folder.
bool ListUpdates::showsNoneOf(CameraAddress camera) const
{
    if (data_.state.view() == View::Group) {
        return std::ranges::any_of(
            std::views::iota(0, kRows), [this, folder = folders_.of(camera)](int row) {
                return data_.state.DerniereImage(row).isNone() &&
                       folders_.of({data_.state.camera().group, row}) == folder;
            });
    }
    return isListed(camera) ? data_.files.count() == 0 : camera == data_.state.camera();
}

QCoro::Task<> ListUpdates::showFirst(CameraAddress camera)
{
    if (!showsNoneOf(camera)) { // shown by an action in between
        co_return;
    }
    const bool hasFilmNone = isListed(camera) && data_.files.count() == 0;
    co_await rebuild();
    if (hasFilmNone) {
        co_await lists_.restartFilm();
    }
}

bool ListUpdates::isOutdated(CameraAddress camera) const
{
    const BrowserState &state = data_.state;
    if (state.view() == View::Camera) {
        return camera == state.camera() && !isListed(camera);
    }
    return camera.group == state.camera().group &&
           state.DerniereImage(camera.row).folder != folders_.of(camera);
}

QCoro::Task<> ListUpdates::followAddress(CameraAddress camera)
{
    if (isOutdated(camera)) { // unless another action has shown it since
        const auto leaving = folders_.leaveMissing();
        co_await rebuild();
    }
}

QCoro::Task<> ListUpdates::catchUp()
{
    if (data_.state.view() == View::Group && hasLostAny()) {
        co_await rebuild();
    }
    if (data_.state.view() == View::Camera || isListed(data_.state.camera())) {
        co_await dropDeleted(data_.state.camera());
    } else {
        co_await lists_.followGroup();
        showGroupPosition();
        selection_.announce();
    }
}

QCoro::Task<> ListUpdates::rebuild()
{
    const int row = selection_.row();
    co_await lists_.DirImage();
    if (data_.state.view() == View::Group && row >= 0) {
        co_await lists_.reselect(row);
    }
}

// The group view shows what was written last on a camera's newest day; the image with the latest
// date, which is never deleted for its age, may be another.
bool ListUpdates::hasLost(CameraAddress camera) const
{
    const QString folder = folders_.of(camera);
    return std::ranges::any_of(std::views::iota(0, kRows), [this, &folder](int row) {
        const ImageFile &image = data_.state.DerniereImage(row);
        return image.folder == folder && folders_.hasLost(image);
    });
}

bool ListUpdates::hasLostAny() const
{
    return std::ranges::any_of(std::views::iota(0, kRows), [this](int row) {
        return folders_.hasLost(data_.state.DerniereImage(row));
    });
}

// The images of the selected camera are counted.
void ListUpdates::showGroupPosition()
{
    selection_.showPosition(selection_.row() < 0 ? ShownPosition::None : ShownPosition::Count);
}

QCoro::Task<> ListUpdates::dropDeleted(CameraAddress camera)
{
    const bool isOfList = isListed(camera) && isListed(data_.state.camera());
    if (data_.state.view() == View::Group) {
        if (hasLost(camera)) {
            co_await rebuild();
        }
        if (isOfList) {
            co_await lists_.LitDir();
            showGroupPosition();
        }
    } else if (isOfList) {
        const FileList::Selected before = co_await lists_.listAgain();
        lists_.showAround(data_.files.find(before.image).value_or(-1));
    }
}

} // namespace velmora
