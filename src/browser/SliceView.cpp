#include "browser/SliceView.h"

#include "browser/Slice.h"

namespace velmora {

SliceView::SliceView(const Uses &uses, const FileList &files, Sheet &sheet, Selection &selection)
    : uses_(uses)
    , files_(files)
    , sheet_(sheet)
    , selection_(selection)
{
}

void SliceView::show()
{
    sheet_.clearFrames();
    const Slice slice = sliceAround(files_.ListIndex(), files_.count());
    showFrom(slice.start);
    selection_.frame(slice.frame);
    uses_.log.trace(QStringLiteral("Load Fin"));
    selection_.showPosition(ShownPosition::Position);
}

void SliceView::showFrom(int start)
{
    for (int cell = 0; cell < kCells; ++cell) {
        const ImageFile image = files_.file(start + cell);
        sheet_.setImage(cell, image);
        startConformity(image);
    }
}

// The files of a row without an address are those of the storage folder itself, which a pass leaves
// alone: it would be due again each time its end lists them.
void SliceView::startConformity(const ImageFile &image)
{
    if (image.isNone() || uses_.conformity.isRunning() || !uses_.storage.isUsable() ||
        image.folder == uses_.storage.inForce() || !Conformity::isShortForm(image.name.toUtf8())) {
        return;
    }
    if (uses_.conformity.wants(nativePath(uses_.storage, image))) {
        uses_.scope.launch(uses_.conformity.run());
    }
}

} // namespace velmora
