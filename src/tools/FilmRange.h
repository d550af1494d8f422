// Which images of a camera go into a film: a span of time, hours of the day, and how many of them.
#pragma once

#include "browser/ImageNames.h"
#include "tools/FilmForm.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmora {

/// Bounds of the names, as text: not before `first`, and before `behind`.
struct FilmSpan
{
    QByteArray first;
    QByteArray behind;

    bool operator==(const FilmSpan &) const = default;
};

/// The span from one moment to another, inclusive. A moment is "2006-03-07", "2006-03-07T14:30" or
/// "2006-03-07T14:30:15"; one without a time, or without seconds, means that whole day or minute.
/// Nothing when either is not such a moment.
[[nodiscard]] std::optional<FilmSpan> filmSpan(const QString &from, const QString &to);

/// From the start of one hour to the start of another, which may be on the next day.
struct FilmHours
{
    int from = 0; // 0 to 23
    int to = 24;  // 1 to 24

    [[nodiscard]] bool isWholeDay() const { return from == 0 && to == 24; }

    [[nodiscard]] bool contains(int hour) const
    {
        return from < to ? hour >= from && hour < to : hour >= from || hour < to;
    }

    bool operator==(const FilmHours &) const = default;
};

/// "6-20"; nothing for any other text.
[[nodiscard]] std::optional<FilmHours> filmHours(const QString &text);

/// Positions in a camera's list of images, kept as runs: a million of them take no room.
class FilmPicks
{
public:
    /// Adds the positions from `first` up to before `end`, which follow those added before.
    void add(qsizetype first, qsizetype end);

    [[nodiscard]] qsizetype count() const;

    /// at: below count().
    [[nodiscard]] qsizetype position(qsizetype at) const;

    /// Keeps every n-th of these, beginning with the first. n: 1 or more.
    void keepEvery(qsizetype n);

    /// Keeps at most that many of these, spread evenly over all of them. most: 1 or more.
    void keepAtMost(qsizetype most);

private:
    struct Run
    {
        qsizetype first = 0;
        qsizetype before = 0; // number of positions in the runs before it
    };

    std::vector<Run> runs_;
    qsizetype all_ = 0;
    std::optional<qsizetype> kept_; // positions in all runs
    qsizetype every_ = 1;
};

/// Keeps as many of these as a film of that length shows, spread evenly; too few are shown longer
/// each, unless the rate is fixed. seconds: 1 or more. Returns the film's rate.
[[nodiscard]] FilmRate fillSeconds(FilmPicks &picks, int seconds, FilmRate rate, bool isFixed);

/// The images of a list within a span and those hours.
[[nodiscard]] FilmPicks filmPicks(const ImageNames &names, const FilmSpan &span,
                                  const FilmHours &hours);

/// The images from one position of the list to another, inclusive, within those hours.
[[nodiscard]] FilmPicks filmPicks(const ImageNames &names, qsizetype first, qsizetype last,
                                  const FilmHours &hours);

} // namespace velmora
