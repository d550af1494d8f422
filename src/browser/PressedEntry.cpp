#include "browser/PressedEntry.h"

namespace velmora {

PressedEntry::PressedEntry(ImageBrowser &browser)
    : browser_(browser)
{
}

void PressedEntry::pressFile(int index)
{
    entry_ = Entry{state().view(), state().camera(), browser_.shown().files.file(index), 0};
}

void PressedEntry::pressCameraRow(int row)
{
    entry_ = Entry{state().view(), {state().camera().group, row}, {}, row};
}

void PressedEntry::pressCell(int cell)
{
    entry_ = Entry{
        state().view(), {state().camera().group, cell}, browser_.shown().sheet.image(cell), cell};
}

void PressedEntry::releaseFile()
{
    if (!entry_) {
        return;
    }
    if (const std::optional<int> index = browser_.shown().files.find(entry_->image)) {
        browser_.chooseFile(*index);
    }
}

void PressedEntry::releaseCameraRow()
{
    if (entry_ && state().view() == View::Group && entry_->camera.group == state().camera().group) {
        browser_.chooseCameraRow(entry_->camera.row);
    }
}

// In camera view, the number of the cell where the image would now be; it may be off the sheet at
// either end.
std::optional<int> PressedEntry::cellNow() const
{
    if (!entry_ || entry_->view != state().view()) {
        return std::nullopt;
    }
    if (state().view() == View::Group) {
        return entry_->camera.group == state().camera().group ? std::optional(entry_->cell)
                                                              : std::nullopt;
    }
    const FileList &files = browser_.shown().files;
    const bool isBeingLeft = files.ListIndex() < 0 && files.count() > 0;
    if (entry_->image.isNone() && isBeingLeft) {
        return std::nullopt; // its place in the list counts from the selected image
    }
    if (entry_->image == browser_.shown().sheet.image(entry_->cell)) {
        return entry_->cell; // including empty ones
    }
    const std::optional<int> index = files.find(entry_->image);
    return index ? std::optional(state().CadreActif() + *index - files.ListIndex()) : std::nullopt;
}

void PressedEntry::releaseCell()
{
    if (const std::optional<int> cell = cellNow()) {
        browser_.clickCell(*cell);
    }
}

void PressedEntry::frameCell()
{
    if (entry_ && cellNow() == entry_->cell) {
        browser_.frameCell(entry_->cell);
    }
}

} // namespace velmora
