#include "tools/FilmRange.h"

#include "browser/DayCounts.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>

namespace velmora {
namespace {

// How the names of a moment begin: "20060307", "20060307_1430" or "20060307_143015".
std::optional<QByteArray> momentKey(const QString &typed)
{
    const QString text = typed.trimmed();
    const QDate day = QDate::fromString(text.left(10), QStringLiteral("yyyy-MM-dd"));
    if (!day.isValid()) {
        return std::nullopt;
    }
    const QByteArray key = day.toString(QStringLiteral("yyyyMMdd")).toLatin1();
    if (text.size() == 10) {
        return key;
    }
    const QString clock = text.mid(11);
    for (const QString &form : {QStringLiteral("HH:mm"), QStringLiteral("HH:mm:ss")}) {
        const QTime time = QTime::fromString(clock, form);
        if (time.isValid() && (text.at(10) == u'T' || text.at(10) == u' ')) {
            return key + '_' + time.toString(QString(form).remove(u':')).toLatin1();
        }
    }
    return std::nullopt;
}

// Adds the hours of a day that lie in a range of positions, in order.
void addDay(FilmPicks &picks, const ImageNames &names, std::chrono::year_month_day day,
            const FilmHours &hours, const ImageRun &range)
{
    const qsizetype end = range.first + range.count;
    for (int hour = 0; hour < kHoursOfDay; ++hour) {
        if (hours.contains(hour)) {
            const ImageRun run = countHour(names, day, hour);
            picks.add(std::max(run.first, range.first), std::min(run.first + run.count, end));
        }
    }
}

} // namespace

std::optional<FilmSpan> filmSpan(const QString &from, const QString &to)
{
    const auto first = momentKey(from);
    const auto last = momentKey(to);
    if (!first || !last) {
        return std::nullopt;
    }
    return FilmSpan{*first, *last + '\xff'};
}

std::optional<FilmHours> filmHours(const QString &text)
{
    const QStringList ends = text.split(u'-');
    if (ends.size() != 2) {
        return std::nullopt;
    }
    bool isFirst = false;
    bool isLast = false;
    const FilmHours hours{ends.at(0).toInt(&isFirst), ends.at(1).toInt(&isLast)};
    const bool fits = hours.from >= 0 && hours.from < kHoursOfDay && hours.to >= 0 &&
                      hours.to <= kHoursOfDay && hours.from != hours.to;
    return isFirst && isLast && fits ? std::optional(hours) : std::nullopt;
}

void FilmPicks::add(qsizetype first, qsizetype end)
{
    if (first < end) {
        runs_.push_back({first, all_});
        all_ += end - first;
    }
}

qsizetype FilmPicks::count() const
{
    return kept_.value_or((all_ + every_ - 1) / every_);
}

qsizetype FilmPicks::position(qsizetype at) const
{
    const qsizetype place = kept_ ? at * all_ / *kept_ : at * every_;
    const auto isBefore = [place](const Run &run) { return run.before <= place; };
    const Run &run = *std::prev(std::ranges::partition_point(runs_, isBefore));
    return run.first + place - run.before;
}

void FilmPicks::keepEvery(qsizetype n)
{
    every_ = n;
}

void FilmPicks::keepAtMost(qsizetype most)
{
    if (all_ > most) {
        kept_ = most;
    }
}

FilmPicks filmPicks(const ImageNames &names, const FilmSpan &span, const FilmHours &hours)
{
    return filmPicks(names, names.countBefore(span.first), names.countBefore(span.behind) - 1,
                     hours);
}

FilmPicks filmPicks(const ImageNames &names, qsizetype first, qsizetype last,
                    const FilmHours &hours)
{
    FilmPicks picks;
    if (hours.isWholeDay()) {
        picks.add(first, last + 1);
        return picks;
    }
    qsizetype at = first;
    while (at <= last) {
        const auto day = dayOfName(names.name(at));
        if (!day) {
            ++at;
            continue;
        }
        addDay(picks, names, *day, hours, {at, last + 1 - at});
        at = std::max(at + 1, names.countBefore(dayKey(*day) + '\xff'));
    }
    return picks;
}

FilmRate fillSeconds(FilmPicks &picks, int seconds, FilmRate rate, bool isFixed)
{
    const qint64 wanted = std::max<qint64>(1, seconds * rate.pictures / rate.seconds);
    const qsizetype all = picks.count();
    picks.keepAtMost(wanted);
    const bool isShort = all > 0 && all < wanted && !isFixed;
    return isShort ? FilmRate{all, seconds} : rate;
}

} // namespace velmora
