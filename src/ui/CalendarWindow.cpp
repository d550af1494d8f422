#include "ui/CalendarWindow.h"

#include "ui/CalendarMap.h"
#include "ui/HourBars.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace velmora {

CalendarWindow::CalendarWindow(Calendar &calendar)
    : calendar_(calendar)
{
    setObjectName(QStringLiteral("calendar"));
    setWindowTitle(tr("Calendar"));
    auto *const map = new CalendarMap(calendar_);
    day_ = new QLabel;
    day_->setObjectName(QStringLiteral("calendarDay"));
    day_->setAccessibleName(tr("The chosen day"));
    day_->setTextFormat(Qt::PlainText);
    auto *const lines = new QVBoxLayout(this);
    lines->addWidget(map, 1);
    lines->addWidget(day_);
    lines->addWidget(new HourBars(calendar_));
    connect(&calendar_, &Calendar::counted, this, &CalendarWindow::showDay);
    connect(&calendar_, &Calendar::dayChosen, this, &CalendarWindow::showDay);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    map->setFocus();
}

void CalendarWindow::present()
{
    calendar_.open();
    showNormal();
    raise();
    activateWindow();
}

void CalendarWindow::showDay()
{
    const auto day = calendar_.chosen();
    day_->setText(day ? CalendarMap::dayText(*day, calendar_.imagesOf(*day)) : QString());
}

void CalendarWindow::hideEvent(QHideEvent *event)
{
    calendar_.close();
    QWidget::hideEvent(event);
}

} // namespace velmora
