#include "browser/SliceView.h"

#include "browser/Slice.h"

namespace velmora {

SliceView::SliceView(const Uses &uses, BrowserData &data, Selection &selection)
    : uses_(uses)
    , data_(data)
    , selection_(selection)
{
}

void SliceView::show()
{
    data_.sheet.clearFrames();
    const Slice slice = sliceAround(data_.files.ListIndex(), data_.files.count());
    showFrom(slice.start);
    selection_.frame(slice.frame);
    uses_.log.trace(QStringLiteral("Load Fin"));
    selection_.showPlace(Place::Position);
}

void SliceView::showFrom(int start)
{
    for (int cell = 0; cell < kCells; ++cell) {
        const ImageFile image = data_.files.file(start + cell);
        data_.sheet.setImage(cell, image);
        startConformity(image);
    }
}

void SliceView::startConformity(const ImageFile &image)
{
    if (image.isNone() || uses_.conformity.isRunning() || !uses_.storage.isUsable() ||
        !Conformity::isShortForm(image.name.toUtf8())) {
        return;
    }
    if (uses_.conformity.wants(nativePath(uses_.storage, image))) {
        uses_.scope.launch(uses_.conformity.run());
    }
}

} // namespace velmora
