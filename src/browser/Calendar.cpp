#include "browser/Calendar.h"

#include "base/DateText.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace velmora {

using std::chrono::year_month_day;

namespace {

// Where there was none, the one that was stored stands behind the list until that is read again.
void addOne(ImageRun &run, qsizetype behind)
{
    run.first = run.count == 0 ? behind : run.first;
    ++run.count;
}

} // namespace

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
    if (std::exchange(open_, true)) {
        return;
    }
    chosen_.reset();
    anchor_.reset();
    count();
}

void Calendar::count()
{
    days_ = countDays(files().names());
    stored_.clear();
    const auto images = [](const DayCount &day) { return day.images.count; };
    const auto fullest = std::ranges::max_element(days_, {}, images);
    most_ = fullest == days_.end() ? 0 : fullest->images.count;
    if (days_.empty()) {
        chosen_.reset();
        anchor_.reset();
    } else if (!chosen_) {
        chosen_ = days_.back().day;
    }
    countChosen();
    Q_EMIT counted();
}

void Calendar::countChosen()
{
    hours_ = chosen_ ? countHours(files().names(), *chosen_) : HourCounts();
    for (const QByteArray &name : stored_) {
        const auto hour = hourOfName(name);
        if (hour && dayOfName(name) == chosen_) {
            addOne(hours_.at(static_cast<std::size_t>(*hour)), files().count());
        }
    }
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
        countChosen();
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
    goTo({files().camera(), day, std::nullopt});
}

void Calendar::goToHour(int hour)
{
    if (chosen_ && hour >= 0 && hour < kHoursOfDay) {
        goTo({files().camera(), *chosen_, hour});
    }
}

// The group view shows something else, and images stored since the list was read are not in it: the
// move is made once the list has been read.
void Calendar::goTo(const Goal &goal)
{
    if (browser_.shown().state.view() == View::Group) {
        waiting_ = goal;
        showCamera(goal.camera); // first, so that the camera view lists no other camera's images
        browser_.setMode(Mode::Camera, false);
    } else if (imagesAt(goal).first >= files().count() && imagesAt(goal).count > 0) {
        waiting_ = goal;
        browser_.refresh();
    } else {
        waiting_.reset();
        select(goal);
    }
    wishes_ = browser_.wishes();
}

// A paused film keeps its list, and so the calendar, when another group is chosen.
void Calendar::showCamera(CameraAddress camera)
{
    const CameraAddress shown = browser_.shown().state.camera();
    if (camera.group != shown.group) {
        browser_.chooseGroup(camera.group);
    }
    if (camera.row != shown.row) {
        browser_.chooseCamera(camera.row);
    }
}

void Calendar::goOn()
{
    if (browser_.shown().state.view() != View::Camera) {
        return;
    }
    const std::optional<Goal> goal = std::exchange(waiting_, std::nullopt);
    if (goal && wishes_ == browser_.wishes() && goal->camera == files().camera()) {
        select(*goal);
    }
}

// The first image there, or else the nearest to the middle of the day or the hour.
void Calendar::select(const Goal &goal)
{
    const ImageRun run = imagesAt(goal);
    if (run.count > 0 && run.first < files().count()) {
        browser_.chooseFile(static_cast<int>(run.first));
        return;
    }
    const QByteArray time =
        goal.hour ? twoDigits(*goal.hour).toLatin1() + "3000" : QByteArray("120000");
    if (const auto nearest = nearestTo(files().names(), dayKey(goal.day) + '_' + time)) {
        browser_.chooseFile(static_cast<int>(*nearest));
    }
}

ImageRun Calendar::imagesAt(const Goal &goal) const
{
    if (goal.hour) {
        return hours_.at(static_cast<std::size_t>(*goal.hour));
    }
    const auto found = std::ranges::lower_bound(days_, goal.day, {}, &DayCount::day);
    return found != days_.end() && found->day == goal.day ? found->images : ImageRun();
}

void Calendar::follow(CameraAddress camera, const QString &fileName)
{
    const QByteArray name = QFile::encodeName(fileName);
    const auto day = dayOfName(name);
    const bool isKnown =
        files().names().find(name) || std::ranges::find(stored_, name) != stored_.end();
    const bool isNew = isListedName(name) && !isKnown;
    if (!open_ || !browser_.isListed(camera) || !day || !isNew) {
        return;
    }
    add(*day);
    stored_.push_back(name);
    chosen_ = chosen_.value_or(*day);
    countChosen();
    Q_EMIT counted();
}

void Calendar::add(year_month_day day)
{
    auto at = std::ranges::lower_bound(days_, day, {}, &DayCount::day);
    if (at == days_.end() || at->day != day) {
        at = days_.insert(at, {day, {}});
    }
    addOne(at->images, files().count());
    most_ = std::max(most_, at->images.count);
}

} // namespace velmora
