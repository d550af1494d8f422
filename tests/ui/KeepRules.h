// Which images a film or a copy of a range has, and whether a file is a whole film, by the rules
// alone.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace velmora::test {

/// What the window's boxes say.
struct KeepBoxes
{
    QString from;
    QString to;
    int firstHour = 0;
    int endHour = 24;
    int thinning = 0; // none, every nth, seconds
    int number = 1;
    int rate = 25;
};

/// Whether both moments are ones.
[[nodiscard]] bool areMoments(const KeepBoxes &boxes);

/// The names among these, which are in order.
[[nodiscard]] QStringList picked(const QStringList &names, const KeepBoxes &boxes);

/// How long a film of so many of them lasts, in seconds.
[[nodiscard]] double lengthOf(qsizetype images, const KeepBoxes &boxes);

/// The number of pictures of a whole GIF; nothing for any other file.
[[nodiscard]] std::optional<int> picturesOfGif(const QString &path);

/// Whether a file is a whole film of the form that its name says.
[[nodiscard]] bool isWholeFilm(const QString &path);

/// The numbers in what the window says of a copy, and how it ended.
struct CopyText
{
    int copied = 0;
    int there = 0;
    int gone = 0;
    QString rest;
};

/// Nothing for any other text.
[[nodiscard]] std::optional<CopyText> copyText(const QString &text);

/// Likewise of a film.
struct FilmText
{
    int shown = 0;
    int broken = 0;
    int gone = 0;
};

[[nodiscard]] std::optional<FilmText> filmText(const QString &text);

} // namespace velmora::test
