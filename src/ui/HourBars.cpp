#include "ui/HourBars.h"

#include "base/ImagesText.h"
#include "ui/HeatColour.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

constexpr int kHeight = 72;

// From one number below the bars to the next, so that they stand apart.
int hoursBetween(const QFontMetrics &letters, int width)
{
    const int widest = letters.horizontalAdvance(QStringLiteral("00 "));
    for (const int hours : {1, 2, 3, 4, 6}) {
        if (hours * width / kHoursOfDay >= widest) {
            return hours;
        }
    }
    return kHoursOfDay / 2;
}

} // namespace

HourBars::HourBars(Calendar &calendar)
    : calendar_(calendar)
{
    setObjectName(QStringLiteral("calendarHours"));
    setAccessibleName(tr("Images of each hour of the day"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumHeight(kHeight);
    connect(&calendar_, &Calendar::counted, this, &HourBars::showHour);
    connect(&calendar_, &Calendar::dayChosen, this, &HourBars::showHour);
}

QSize HourBars::sizeHint() const
{
    return {kHoursOfDay * fontMetrics().horizontalAdvance(QStringLiteral("000")), kHeight};
}

qsizetype HourBars::imagesOf(int hour) const
{
    return calendar_.hours().at(static_cast<std::size_t>(hour)).count;
}

void HourBars::showHour()
{
    setAccessibleDescription(hourText(hour_));
    update();
}

QString HourBars::hourText(int hour) const
{
    return calendar_.chosen() ? tr("%1 h: %2").arg(hour).arg(imagesText(imagesOf(hour)))
                              : QString();
}

int HourBars::hourAt(int x) const
{
    return std::clamp(x * kHoursOfDay / width(), 0, kHoursOfDay - 1);
}

bool HourBars::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *const help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), hourText(hourAt(help->x())), this);
        return true;
    }
    return QWidget::event(event);
}

void HourBars::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    qsizetype most = 1;
    for (const ImageRun &run : calendar_.hours()) {
        most = std::max(most, run.count);
    }
    const int text = fontMetrics().height();
    const int room = height() - text - 2;
    const int step = hoursBetween(fontMetrics(), width());
    for (int hour = 0; hour < kHoursOfDay; ++hour) {
        const int left = hour * width() / kHoursOfDay;
        const int right = (hour + 1) * width() / kHoursOfDay;
        const auto bar = static_cast<int>(imagesOf(hour) * room / most);
        const int tall = imagesOf(hour) > 0 ? std::max(2, bar) : 0;
        const QRect place(left + 1, room - tall, right - left - 2, tall);
        painter.fillRect(place, heatColour(palette(), imagesOf(hour), most));
        const bool isChosen = hasFocus() && hour == hour_;
        painter.setPen(palette().color(QPalette::Text));
        if (hour % step == 0) {
            const int beside = (step - 1) * (right - left) / 2;
            painter.drawText(QRect(left - beside, room + 2, right - left + 2 * beside, text),
                             Qt::AlignCenter, QString::number(hour));
        }
        if (isChosen) {
            painter.drawRect(left, 0, right - left - 1, height() - 1);
        }
    }
}

HourBars::Pressed HourBars::pressedAt(int x) const
{
    return {hourAt(x), calendar_.camera(), calendar_.chosen()};
}

void HourBars::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        pressed_ = pressedAt(event->position().toPoint().x());
    }
}

// The hour under the pointer at the press is meant, of the day that was shown then.
void HourBars::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint place = event->position().toPoint();
    const auto pressed = std::exchange(pressed_, std::nullopt);
    if (pressed == pressedAt(place.x()) && rect().contains(place)) {
        hour_ = pressed->hour;
        showHour();
        calendar_.goToHour(hour_);
    }
}

void HourBars::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        hour_ = std::max(0, hour_ - 1);
        break;
    case Qt::Key_Right:
        hour_ = std::min(kHoursOfDay - 1, hour_ + 1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        calendar_.goToHour(hour_);
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    showHour();
}

} // namespace velmora
