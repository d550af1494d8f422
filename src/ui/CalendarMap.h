// Days as cells, one line a month: the more images, the stronger the colour.
#pragma once

#include "browser/Calendar.h"

#include <QAbstractScrollArea>

namespace velmora {

class DayNumbers;

/// The numbers of the days stand above. The chosen day is framed; arrow keys move by day and by
/// month, Page Up and Page Down by year, Enter and a click go to the day's first image.
class CalendarMap : public QAbstractScrollArea
{
    Q_OBJECT

public:
    /// The calendar outlives the widget.
    explicit CalendarMap(Calendar &calendar);

    [[nodiscard]] QSize sizeHint() const override;

    /// A day in words: "7 March 2006: 1440 images".
    [[nodiscard]] static QString dayText(std::chrono::year_month_day day, qsizetype images);

    /// The chosen day, or the days selected together, in words; empty for none.
    [[nodiscard]] QString choiceText() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

    void mouseDoubleClickEvent(QMouseEvent *event) override { mousePressEvent(event); }

    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void rebuild();
    void placeNumbers();
    void showChosen();
    void take(std::chrono::year_month_day day, Qt::KeyboardModifiers modifiers);
    [[nodiscard]] int lines() const;
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int cellWidth() const;
    [[nodiscard]] int labelWidth() const;
    [[nodiscard]] QRect cellOf(int line, unsigned day) const;
    [[nodiscard]] int lineOf(std::chrono::year_month_day day) const;
    [[nodiscard]] std::chrono::year_month monthOf(int line) const;
    [[nodiscard]] std::optional<std::chrono::year_month_day> dayAt(QPoint place) const;
    void paintLine(QPainter &painter, int line) const;
    void paintCell(QPainter &painter, QRect cell, qsizetype images) const;

    Calendar &calendar_;
    DayNumbers *numbers_;
    std::optional<std::chrono::year_month_day> pressed_; // by the left button
    QPoint pressedAt_;
    CameraAddress pressedCamera_;
};

} // namespace velmora
