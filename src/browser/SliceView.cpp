#include "browser/SliceView.h"

#include "browser/Slice.h"

namespace velmora {

SliceView::SliceView(const BrowserServices &services, BrowserData &data, Selection &selection)
    : services_(services)
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
    services_.capture.log.trace(QStringLiteral("Load Fin"));
    selection_.setCount(
        QStringLiteral("%1 / %2").arg(data_.files.ListIndex() + 1).arg(data_.files.count()));
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
    const StorageFolder &storage = services_.capture.storage;
    if (image.isNone() || services_.conformity.isRunning() || !storage.isUsable() ||
        !Conformity::isShortForm(image.name.toUtf8())) {
        return;
    }
    if (services_.conformity.wants(nativePath(storage, image))) {
        services_.scope.launch(services_.conformity.run());
    }
}

} // namespace velmora
