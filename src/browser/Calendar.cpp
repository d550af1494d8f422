#include "browser/Calendar.h"

#include <QFile>

#include <algorithm>

namespace velmora {

using std::chrono::year_month_day;

Calendar::Calendar(ImageBrowser &browser)
    : browser_(browser)
{
    connect(&files(), &QAbstractItemModel::modelReset, this, [this] {
        if (open_) {
            count();
        }
    });
    // Queued, since one of the listed images is selected first.
    connect(&files(), &QAbstractItemModel::modelReset, this, &Calendar::goOn, Qt::QueuedConnection);
}

void Calendar::open()
{
    open_ = true;
    chosen_.reset();
    anchor_.reset();
    count();
}

void Calendar::count()
{
    days_ = countDays(files().names());
    const auto images = [](const DayCount &day) { return day.images.count; };
    const auto fullest = std::ranges::max_element(days_, {}, images);
    most_ = fullest == days_.end() ? 0 : fullest->images.count;
    if (days_.empty()) {
        chosen_.reset();
        anchor_.reset();
    } else if (!chosen_) {
        chosen_ = days_.back().day;
    }
    hours_ = chosen_ ? countHours(files().names(), *chosen_) : HourCounts();
    Q_EMIT counted();
}

qsizetype Calendar::imagesOf(year_month_day day) const
{
    const auto found = std::ranges::lower_bound(days_, day, {}, &DayCount::day);
    return found != days_.end() && found->day == day ? found->images.count : 0;
}

void Calendar::choose(year_month_day day)
{
    if (chosen_ != day || anchor_) {
        anchor_.reset();
        chosen_ = day;
        hours_ = countHours(files().names(), day);
        Q_EMIT dayChosen();
    }
}

void Calendar::extendTo(year_month_day day)
{
    const auto anchor = anchor_ ? anchor_ : chosen_;
    choose(day);
    if (anchor && *anchor != day) {
        anchor_ = anchor;
        Q_EMIT dayChosen();
        Q_EMIT rangeChosen({std::min(*anchor, day), std::max(*anchor, day)});
    }
}

std::optional<DayRange> Calendar::range() const
{
    return anchor_ && chosen_
               ? std::optional(DayRange{std::min(*anchor_, *chosen_), std::max(*anchor_, *chosen_)})
               : std::nullopt;
}

qsizetype Calendar::imagesOf(const DayRange &range) const
{
    qsizetype sum = 0;
    for (const DayCount &day : days_) {
        sum += range.contains(day.day) ? day.images.count : 0;
    }
    return sum;
}

void Calendar::goToDay(year_month_day day)
{
    choose(day);
    const auto found = std::ranges::lower_bound(days_, day, {}, &DayCount::day);
    const bool isThere = found != days_.end() && found->day == day;
    goTo(dayKey(day) + "_120000", isThere ? found->images : ImageRun());
}

void Calendar::goToHour(int hour)
{
    if (chosen_ && hour >= 0 && hour < kHoursOfDay) {
        const QByteArray text = QByteArray::number(hour).rightJustified(2, '0');
        goTo(dayKey(*chosen_) + '_' + text + "3000", hours_.at(static_cast<std::size_t>(hour)));
    }
}

// The group view shows something else; the move is made once the list has replaced it.
void Calendar::goTo(const QByteArray &moment, const ImageRun &run)
{
    if (browser_.shown().state.view() == View::Group) {
        waiting_ = run.count > 0 ? files().names().name(run.first).left(15) : moment;
        browser_.setMode(Mode::Camera, false);
    } else if (run.count > 0) {
        browser_.chooseFile(static_cast<int>(run.first));
    } else if (const auto nearest = nearestTo(files().names(), moment)) {
        browser_.chooseFile(static_cast<int>(*nearest));
    }
}

void Calendar::goOn()
{
    if (waiting_.isEmpty() || browser_.shown().state.view() != View::Camera) {
        return;
    }
    const auto nearest = nearestTo(files().names(), std::exchange(waiting_, {}));
    if (nearest) {
        browser_.chooseFile(static_cast<int>(*nearest));
    }
}

void Calendar::follow(CameraAddress camera, const QString &fileName)
{
    const QByteArray name = QFile::encodeName(fileName);
    const auto day = dayOfKey(name);
    const bool isListed = files().names().find(name).has_value();
    if (!open_ || camera != browser_.shown().state.camera() || !day || isListed) {
        return;
    }
    const auto at = std::ranges::lower_bound(days_, *day, {}, &DayCount::day);
    const auto found =
        at != days_.end() && at->day == *day ? at : days_.insert(at, {*day, {files().count(), 0}});
    most_ = std::max(most_, ++found->images.count);
    chosen_ = chosen_.value_or(*day);
    Q_EMIT counted();
}

} // namespace velmora
