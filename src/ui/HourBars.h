// The 24 hours of a day as bars.
#pragma once

#include "browser/Calendar.h"

#include <QWidget>

namespace velmora {

/// The arrow keys move from hour to hour; Enter and a click go to the hour's first image. Where the
/// bars are too narrow for numbers side by side, only those of every second, third … hour are
/// shown.
class HourBars : public QWidget
{
    Q_OBJECT

public:
    /// The calendar outlives the widget.
    explicit HourBars(Calendar &calendar);

    [[nodiscard]] QSize sizeHint() const override;

    /// The tool tip is that of the hour under the pointer.
    bool event(QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Pressed
    {
        int hour;
        CameraAddress camera;
        std::optional<std::chrono::year_month_day> day;

        bool operator==(const Pressed &) const = default;
    };

    void showHour();
    [[nodiscard]] Pressed pressedAt(int x) const;
    [[nodiscard]] qsizetype imagesOf(int hour) const;
    [[nodiscard]] QString hourText(int hour) const;
    [[nodiscard]] int hourAt(int x) const;

    Calendar &calendar_;
    int hour_ = 12;
    std::optional<Pressed> pressed_; // by the left button
};

} // namespace velmora
