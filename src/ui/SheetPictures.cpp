#include "ui/SheetPictures.h"

namespace velmora {
namespace {

constexpr int kZoomPlace = kCells; // after the cells

} // namespace

SheetPictures::SheetPictures(ContactSheet &widgets, const Sheet &sheet,
                             const StorageFolder &storage, PictureLoader &loader)
    : widgets_(widgets)
    , sheet_(sheet)
    , storage_(storage)
    , loader_(loader)
{
    fillSoon_.setSingleShot(true);
    connect(&fillSoon_, &QTimer::timeout, this, &SheetPictures::fill);
    connect(&loader_, &PictureLoader::loaded, this, &SheetPictures::show);
    connect(&widgets_, &ContactSheet::resized, this, &SheetPictures::refresh);
    bindSheet();
}

void SheetPictures::bindSheet()
{
    connect(&sheet_, &Sheet::imageChanged, this, &SheetPictures::refresh);
    connect(&sheet_, &Sheet::frameChanged, this, &SheetPictures::showFrame);
    connect(&sheet_, &Sheet::zoomChanged, this, &SheetPictures::showZoom);
}

// One action changes many cells; they are updated together when it has ended.
void SheetPictures::refresh()
{
    fillSoon_.start(0);
}

void SheetPictures::showFrame(int cell)
{
    widgets_.frame(cell).setBorderStyle(static_cast<int>(sheet_.frame(cell)));
}

void SheetPictures::showZoom()
{
    if (!sheet_.isZoomVisible()) {
        widgets_.zoom().clear();
    }
    widgets_.setZoomVisible(sheet_.isZoomVisible());
    refresh();
}

QString SheetPictures::wanted(int place) const
{
    return nativePath(storage_, place == kZoomPlace ? sheet_.zoomed() : sheet_.image(place));
}

PictureView &SheetPictures::view(int place)
{
    return place == kZoomPlace ? widgets_.zoom() : widgets_.cell(place);
}

void SheetPictures::order(int place, QList<PictureOrder> &orders)
{
    const QString path = wanted(place);
    if (path.isEmpty()) {
        view(place).clear();
        return;
    }
    const Fit fit = place == kZoomPlace ? Fit::KeepShape : Fit::Stretch;
    orders.append({place, path, {view(place).pixels(), fit}});
}

void SheetPictures::fill()
{
    QList<PictureOrder> orders;
    order(kZoomPlace, orders);
    for (const FrameStyle style : {FrameStyle::Framed, FrameStyle::Plain}) {
        for (int cell = 0; cell < kCells; ++cell) {
            if (sheet_.frame(cell) == style) {
                order(cell, orders);
            }
        }
    }
    loader_.load(orders);
}

// While the storage folder is away, a picture on show stays, but not for another file.
void SheetPictures::show(const PictureOrder &order, const QImage &image)
{
    if (order.path != wanted(order.place)) {
        return;
    }
    PictureView &shown = view(order.place);
    if (!image.isNull() || storage_.isPresent()) {
        shown.showPicture(order.path, image);
    } else if (shown.path() != order.path) {
        shown.clear();
    }
}

} // namespace velmora
