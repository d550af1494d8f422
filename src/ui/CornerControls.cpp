#include "ui/CornerControls.h"

#include <QFontMetrics>
#include <QLayout>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

int scaled(int pixels, double scale)
{
    return pixels >= QWIDGETSIZE_MAX ? pixels : static_cast<int>(std::floor(pixels * scale));
}

} // namespace

CornerControls::CornerControls(QWidget &controls)
    : QObject(&controls)
    , controls_(controls)
    , font_(controls.font())
{
    const QList<QWidget *> widgets = controls_.findChildren<QWidget *>();
    for (QWidget *const widget : widgets) {
        if (widget->parentWidget() == &controls_) { // not part of a control
            boxes_.append({widget, widget->minimumSize(), widget->maximumSize()});
        }
    }
    const QList<QLayout *> layouts = controls_.findChildren<QLayout *>();
    for (QLayout *const layout : layouts) {
        lines_.append({layout, layout->spacing(), layout->contentsMargins()});
    }
}

// A box may be lower than its frame would like, but not than its text.
void CornerControls::fit(double scale)
{
    const double wanted = std::min(1.0, scale);
    if (wanted == scale_) {
        return;
    }
    scale_ = wanted;
    QFont font = font_;
    font.setPointSizeF(font_.pointSizeF() * scale_);
    controls_.setFont(font);
    const int letters = QFontMetrics(font).height();
    for (const Box &box : boxes_) {
        const bool shrinks = scale_ < 1;
        box.widget->setMinimumWidth(scaled(box.smallest.width(), scale_));
        box.widget->setMinimumHeight(shrinks ? letters : box.smallest.height());
        box.widget->setMaximumWidth(scaled(box.largest.width(), scale_));
    }
    for (const Line &line : lines_) {
        line.layout->setSpacing(scaled(line.spacing, scale_));
        line.layout->setContentsMargins(
            scaled(line.margins.left(), scale_), scaled(line.margins.top(), scale_),
            scaled(line.margins.right(), scale_), scaled(line.margins.bottom(), scale_));
    }
}

} // namespace velmora
