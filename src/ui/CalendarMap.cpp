#include "ui/CalendarMap.h"

#include "base/ImagesText.h"
#include "ui/DayNumbers.h"
#include "ui/HeatColour.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace velmora {
namespace {

using namespace std::chrono;

constexpr int kDaysInLine = 31;
constexpr int kMonthsInYear = 12;
constexpr int kGap = 2;

QDate toDate(year_month_day day)
{
    return {int{day.year()}, static_cast<int>(unsigned{day.month()}),
            static_cast<int>(unsigned{day.day()})};
}

// The same day of another month, or its last one if it is shorter.
year_month_day inMonth(year_month month, unsigned day)
{
    const year_month_day last = month / std::chrono::last;
    return month / std::chrono::day(std::min(day, unsigned{last.day()}));
}

// The day to which a key leads from another; nothing for other keys.
std::optional<year_month_day> dayBehindKey(int key, year_month_day day)
{
    const year_month month = day.year() / day.month();
    const auto byMonths = [&](int count) {
        return inMonth(month + months(count), unsigned{day.day()});
    };
    switch (key) {
    case Qt::Key_Left:
        return year_month_day(sys_days(day) - days(1));
    case Qt::Key_Right:
        return year_month_day(sys_days(day) + days(1));
    case Qt::Key_Up:
        return byMonths(-1);
    case Qt::Key_Down:
        return byMonths(1);
    case Qt::Key_PageUp:
        return byMonths(-kMonthsInYear);
    case Qt::Key_PageDown:
        return byMonths(kMonthsInYear);
    default:
        return std::nullopt;
    }
}

} // namespace

CalendarMap::CalendarMap(Calendar &calendar)
    : calendar_(calendar)
    , numbers_(new DayNumbers(this))
{
    setObjectName(QStringLiteral("calendarDays"));
    setAccessibleName(tr("Images of each day"));
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(&calendar_, &Calendar::counted, this, &CalendarMap::rebuild);
    connect(&calendar_, &Calendar::dayChosen, this, &CalendarMap::showChosen);
}

QString CalendarMap::dayText(year_month_day day, qsizetype images)
{
    return tr("%1: %2").arg(QLocale().toString(toDate(day), QLocale::LongFormat),
                            imagesText(images));
}

QSize CalendarMap::sizeHint() const
{
    return {labelWidth() + kDaysInLine * 2 * fontMetrics().averageCharWidth() * 2,
            lineHeight() * (kMonthsInYear + 2)};
}

int CalendarMap::lineHeight() const
{
    return fontMetrics().height() + 2 * kGap;
}

int CalendarMap::labelWidth() const
{
    return fontMetrics().horizontalAdvance(QStringLiteral("0000-00")) + 4 * kGap;
}

int CalendarMap::cellWidth() const
{
    return std::max(4, (viewport()->width() - labelWidth()) / kDaysInLine);
}

int CalendarMap::lineOf(year_month_day day) const
{
    const year_month_day first = calendar_.days().front().day;
    return static_cast<int>((day.year() / day.month() - first.year() / first.month()).count());
}

int CalendarMap::lines() const
{
    return calendar_.days().empty() ? 0 : lineOf(calendar_.days().back().day) + 1;
}

year_month CalendarMap::monthOf(int line) const
{
    const year_month_day first = calendar_.days().front().day;
    return first.year() / first.month() + months(line);
}

QRect CalendarMap::cellOf(int line, unsigned day) const
{
    const int y = line * lineHeight() - verticalScrollBar()->value();
    return {labelWidth() + static_cast<int>(day - 1) * cellWidth(), y, cellWidth() - 1,
            lineHeight() - 1};
}

void CalendarMap::rebuild()
{
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(lineHeight());
    verticalScrollBar()->setRange(0, std::max(0, lines() * lineHeight() - viewport()->height()));
    showChosen();
}

// Updates what a screen reader says, and scrolls to the day's line.
void CalendarMap::showChosen()
{
    const auto chosen = calendar_.chosen();
    setAccessibleDescription(choiceText());
    if (chosen && lines() > 0) {
        const int top = std::clamp(lineOf(*chosen), 0, lines() - 1) * lineHeight();
        const int value = verticalScrollBar()->value();
        verticalScrollBar()->setValue(
            std::clamp(value, top + lineHeight() - viewport()->height(), top));
    }
    viewport()->update();
}

void CalendarMap::placeNumbers()
{
    setViewportMargins(0, lineHeight(), 0, 0);
    const QRect below = viewport()->geometry();
    numbers_->setGeometry(below.left(), below.top() - lineHeight(), below.width(), lineHeight());
    numbers_->setColumns(labelWidth(), cellWidth());
}

void CalendarMap::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    placeNumbers();
    rebuild();
}

void CalendarMap::paintCell(QPainter &painter, QRect cell, qsizetype images) const
{
    if (images > 0) {
        painter.fillRect(cell, heatColour(palette(), images, calendar_.most()));
    } else {
        painter.setPen(lineColour(palette()));
        painter.drawRect(cell.adjusted(0, 0, -1, -1));
    }
}

void CalendarMap::paintLine(QPainter &painter, int line) const
{
    const year_month month = monthOf(line);
    const QRect label(0, cellOf(line, 1).top(), labelWidth() - 2 * kGap, lineHeight());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("%1-%2")
                         .arg(int{month.year()})
                         .arg(unsigned{month.month()}, 2, 10, QLatin1Char('0')));
    const unsigned last = unsigned{(month / std::chrono::last).day()};
    const std::optional<DayRange> range = calendar_.range();
    for (unsigned day = 1; day <= last; ++day) {
        const year_month_day date = month / std::chrono::day(day);
        const QRect cell = cellOf(line, day);
        paintCell(painter, cell, calendar_.imagesOf(date));
        if (calendar_.chosen() == date || (range && range->contains(date))) {
            painter.setPen(QPen(palette().color(QPalette::Text), 2));
            painter.drawRect(cell.adjusted(1, 1, -1, -1));
        }
    }
}

void CalendarMap::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().base());
    const int first = verticalScrollBar()->value() / lineHeight();
    const int behind = std::min(lines(), first + viewport()->height() / lineHeight() + 2);
    for (int line = first; line < behind; ++line) {
        paintLine(painter, line);
    }
    if (lines() == 0) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(viewport()->rect(), Qt::AlignCenter, tr("no images"));
    }
}

std::optional<year_month_day> CalendarMap::dayAt(QPoint place) const
{
    const int line = (place.y() + verticalScrollBar()->value()) / lineHeight();
    const int day = (place.x() - labelWidth()) / cellWidth() + 1;
    if (place.x() < labelWidth() || line < 0 || line >= lines() || day > kDaysInLine) {
        return std::nullopt;
    }
    const year_month_day date = monthOf(line) / std::chrono::day(static_cast<unsigned>(day));
    return date.ok() ? std::optional(date) : std::nullopt;
}

void CalendarMap::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        pressed_ = dayAt(event->position().toPoint());
        pressedAt_ = event->position().toPoint();
        pressedCamera_ = calendar_.camera();
    }
}

// The day that was under the pointer at the press is meant, whatever is listed in between.
void CalendarMap::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const auto day = std::exchange(pressed_, std::nullopt);
    const QPoint way = event->position().toPoint() - pressedAt_;
    const bool isThere = std::abs(way.x()) < cellWidth() && std::abs(way.y()) < lineHeight();
    if (!day || !isThere || pressedCamera_ != calendar_.camera()) {
        return;
    }
    if (event->modifiers() & Qt::ShiftModifier) {
        calendar_.extendTo(*day);
    } else {
        calendar_.goToDay(*day);
    }
}

void CalendarMap::keyPressEvent(QKeyEvent *event)
{
    const auto chosen = calendar_.chosen();
    if (!chosen || calendar_.days().empty()) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    const year_month_day first = calendar_.days().front().day;
    const year_month_day last = calendar_.days().back().day;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
        event->key() == Qt::Key_Space) {
        calendar_.goToDay(*chosen);
    } else if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
        take(event->key() == Qt::Key_Home ? first : last, event->modifiers());
    } else if (const auto day = dayBehindKey(event->key(), *chosen)) {
        take(std::clamp(*day, first, last), event->modifiers());
    } else {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void CalendarMap::take(year_month_day day, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ShiftModifier) {
        calendar_.extendTo(day);
    } else {
        calendar_.choose(day);
    }
}

QString CalendarMap::choiceText() const
{
    const auto chosen = calendar_.chosen();
    const auto range = calendar_.range();
    if (!range) {
        return chosen ? dayText(*chosen, calendar_.imagesOf(*chosen)) : QString();
    }
    const auto text = [](year_month_day day) {
        return QLocale().toString(toDate(day), QLocale::LongFormat);
    };
    return tr("%1 to %2: %3")
        .arg(text(range->first), text(range->last), imagesText(calendar_.imagesOf(*range)));
}

bool CalendarMap::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *const help = static_cast<QHelpEvent *>(event);
        const auto day = dayAt(help->pos());
        QToolTip::showText(help->globalPos(),
                           day ? dayText(*day, calendar_.imagesOf(*day)) : QString(), viewport());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace velmora
