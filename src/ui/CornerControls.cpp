#include "ui/CornerControls.h"

#include <QFontMetrics>
#include <QLabel>
#include <QLayout>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// Pixels at the designed size.
constexpr int kNameRoom = 166;
constexpr int kLineRoom = 16;
constexpr int kWrappedLines = 2;

int scaled(int pixels, double scale)
{
    return pixels >= QWIDGETSIZE_MAX ? pixels : static_cast<int>(std::floor(pixels * scale));
}

// How far the user's letters have to shrink in the corner as it was designed: an image's name is
// seen whole, and all lines stand below each other.
double fittingIn(const QFont &font)
{
    const QFontMetrics letters(font);
    const int name = letters.horizontalAdvance(QStringLiteral("00000000_0000000000.jpg"));
    return std::min({1.0, static_cast<double>(kNameRoom) / name,
                     static_cast<double>(kLineRoom) / letters.height()});
}

int linesOf(const QWidget &box)
{
    const auto *const label = qobject_cast<const QLabel *>(&box);
    return label != nullptr && label->wordWrap() ? kWrappedLines : 1;
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
    const double space = std::min(1.0, scale);
    const double letters = std::min(1.0, scale * fittingIn(font_));
    if (space == scale_ && letters == letters_) {
        return;
    }
    scale_ = space;
    letters_ = letters;
    QFont font = font_;
    font.setPointSizeF(font_.pointSizeF() * letters_);
    controls_.setFont(font);
    const bool shrinks = scale_ < 1 || letters_ < 1;
    const int line = QFontMetrics(font).height();
    for (const Box &box : boxes_) {
        box.widget->setMinimumWidth(scaled(box.smallest.width(), scale_));
        box.widget->setMinimumHeight(shrinks ? line * linesOf(*box.widget) : box.smallest.height());
        box.widget->setMaximumWidth(scaled(box.largest.width(), scale_));
    }
    for (const Line &row : lines_) {
        row.layout->setSpacing(scaled(row.spacing, scale_));
        row.layout->setContentsMargins(
            scaled(row.margins.left(), scale_), scaled(row.margins.top(), scale_),
            scaled(row.margins.right(), scale_), scaled(row.margins.bottom(), scale_));
    }
}

} // namespace velmora
