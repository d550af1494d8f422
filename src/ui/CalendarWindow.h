// The window that shows when images of the camera on show were taken.
//
//   calendar
//     calendarDays
//     calendarDay
//     calendarHours
#pragma once

#include "browser/Calendar.h"

#include <QLabel>
#include <QWidget>

namespace velmora {

class CalendarMap;

class CalendarWindow : public QWidget
{
    Q_OBJECT

public:
    /// The calendar outlives the window.
    explicit CalendarWindow(Calendar &calendar);

    /// Shows the window in front.
    void present();

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void showDay();

    Calendar &calendar_;
    CalendarMap *map_ = nullptr;
    QLabel *day_ = nullptr;
};

} // namespace velmora
