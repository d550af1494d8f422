// Which images of a camera a film is made of: a span of time, hours of the day, and how many of
// them.
#pragma once

#include "browser/ImageNames.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmora {

/// What names have to lie between, as text: not before `first`, and before `behind`.
struct FilmSpan
{
    QByteArray first;
    QByteArray behind;

    bool operator==(const FilmSpan &) const = default;
};

/// The span from one moment to another, both included. A moment is "2006-03-07",
/// "2006-03-07T14:30" or "2006-03-07T14:30:15"; one without a time, or without seconds, is that
/// whole day or minute. Nothing when one of them is no such moment.
[[nodiscard]] std::optional<FilmSpan> filmSpan(const QString &from, const QString &to);

/// From the begin of one hour up to the begin of another, which may be of the next day.
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

/// "6-20"; nothing for another text.
[[nodiscard]] std::optional<FilmHours> filmHours(const QString &text);

/// Positions in a camera's list of images, kept as runs: a million of them take no room.
class FilmPicks
{
public:
    /// The positions from `first` on, up to before `end`; behind those added before.
    void add(qsizetype first, qsizetype end);

    [[nodiscard]] qsizetype count() const;

    /// at: below count().
    [[nodiscard]] qsizetype position(qsizetype at) const;

    /// Of these, every n-th, beginning with the first. n: 1 or more.
    void keepEvery(qsizetype n);

    /// Of these, at most so many, spread evenly over all of them. most: 1 or more.
    void keepAtMost(qsizetype most);

private:
    struct Run
    {
        qsizetype first = 0;
        qsizetype before = 0; // positions in the runs in front of it
    };

    std::vector<Run> runs_;
    qsizetype all_ = 0;
    std::optional<qsizetype> kept_; // of all of them
    qsizetype every_ = 1;
};

/// The images of a list that lie in a span and in those hours.
[[nodiscard]] FilmPicks filmPicks(const ImageNames &names, const FilmSpan &span,
                                  const FilmHours &hours);

/// The images from one position of the list to another, both included, in those hours.
[[nodiscard]] FilmPicks filmPicks(const ImageNames &names, qsizetype first, qsizetype last,
                                  const FilmHours &hours);

} // namespace velmora
