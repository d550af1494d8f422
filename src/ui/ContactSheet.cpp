#include "ui/ContactSheet.h"

#include "ui/SheetLayout.h"

namespace velmora {

ContactSheet::ContactSheet(QWidget *parent)
    : QWidget(parent)
    , ZoomImage(new PictureView(this))
{
    for (int index = 0; index < kCells; ++index) {
        auto *const view = new PictureView(this);
        view->setObjectName(QStringLiteral("Vue%1").arg(index));
        view->setAccessibleName(tr("Image %1 of the sheet").arg(index + 1));
        view->setShape(PictureView::Shape::Stretched);
        view->setMouseTracking(true);
        Vue.at(static_cast<std::size_t>(index)) = view;
        auto *const frame = new CellFrame(this);
        frame->setObjectName(QStringLiteral("Cadre%1").arg(index));
        frame->setAccessibleName(tr("Frame of image %1").arg(index + 1));
        Cadre.at(static_cast<std::size_t>(index)) = frame;
    }
    ZoomImage->setObjectName(QStringLiteral("ZoomImage"));
    ZoomImage->setAccessibleName(tr("Enlarged image"));
    ZoomImage->hide();
}

void ContactSheet::setControls(QWidget &controls)
{
    controls_ = &controls;
    controls.setParent(this);
    corner_ = new CornerControls(controls);
}

void ContactSheet::setZoomVisible(bool visible)
{
    ZoomImage->setVisible(visible);
    if (visible) {
        ZoomImage->raise();
    } else {
        ZoomImage->lower();
    }
}

QSize ContactSheet::sizeHint() const
{
    return SheetLayout::kUsual;
}

QSize ContactSheet::minimumSizeHint() const
{
    return SheetLayout::kSmallest;
}

void ContactSheet::resizeEvent(QResizeEvent *)
{
    const SheetLayout layout(size());
    for (int index = 0; index < kCells; ++index) {
        cell(index).setGeometry(layout.cell(index));
        frame(index).setGeometry(layout.cell(index));
    }
    ZoomImage->setGeometry(layout.zoom());
    if (controls_ != nullptr) {
        corner_->fit(layout.scale());
        controls_->setGeometry(layout.controls());
    }
    Q_EMIT resized();
}

} // namespace velmora
