#include "ui/CalendarWindow.h"

#include "ui/CalendarMap.h"
#include "ui/HourBars.h"
#include "ui/ToFront.h"
#include "ui/WindowKeys.h"

#include <QHideEvent>
#include <QVBoxLayout>

namespace velmora {

CalendarWindow::CalendarWindow(Calendar &calendar)
    : calendar_(calendar)
{
    setObjectName(QStringLiteral("calendar"));
    setWindowTitle(tr("Calendar"));
    map_ = new CalendarMap(calendar_);
    day_ = new QLabel;
    day_->setObjectName(QStringLiteral("calendarDay"));
    day_->setAccessibleName(tr("The chosen day"));
    day_->setTextFormat(Qt::PlainText);
    auto *const lines = new QVBoxLayout(this);
    lines->addWidget(map_, 1);
    lines->addWidget(day_);
    lines->addWidget(new HourBars(calendar_));
    connect(&calendar_, &Calendar::counted, this, &CalendarWindow::showDay);
    connect(&calendar_, &Calendar::dayChosen, this, &CalendarWindow::showDay);
    closeOnEscape(*this);
    map_->setFocus();
}

void CalendarWindow::present()
{
    calendar_.open();
    bringToFront(*this);
}

void CalendarWindow::showDay()
{
    const bool isOne = !calendar_.range();
    day_->setText(isOne ? map_->choiceText()
                        : tr("%1 (a film of them: Keep, in the browser)").arg(map_->choiceText()));
}

// A minimised window is not closed.
void CalendarWindow::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous()) {
        calendar_.close();
    }
    QWidget::hideEvent(event);
}

} // namespace velmora
