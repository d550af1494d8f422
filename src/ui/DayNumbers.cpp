#include "ui/DayNumbers.h"

#include <QPainter>

namespace velmora {
namespace {

constexpr int kDays = 31;
constexpr int kStep = 5;

} // namespace

DayNumbers::DayNumbers(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DayNumbers::setColumns(int left, int width)
{
    left_ = left;
    width_ = width;
    update();
}

void DayNumbers::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.setPen(palette().color(QPalette::Text));
    const int widest = fontMetrics().horizontalAdvance(QStringLiteral("30 "));
    const bool isTight = widest > width_;
    const int room = isTight ? widest : width_ - 1; // without the gap between two columns
    for (int day = 1; day <= kDays; ++day) {
        if (!isTight || day == 1 || day % kStep == 0) {
            const int middle = left_ + (day - 1) * width_ + (width_ - 1) / 2;
            painter.drawText(QRect(middle - room / 2, 0, room, height()), Qt::AlignCenter,
                             QString::number(day));
        }
    }
}

} // namespace velmora
