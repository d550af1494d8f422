// The command line's options for making a film without windows.
#pragma once

#include "cameras/CameraAddress.h"
#include "tools/FilmForm.h"
#include "tools/FilmRange.h"

#include <QString>

#include <optional>
#include <variant>

class QCommandLineParser;

namespace velmora {

struct FilmRequest
{
    QString programFolder; // as given, empty for the default
    CameraAddress camera;
    FilmSpan span;
    QString target; // as given
    FilmHours hours;
    qsizetype every = 1;
    std::optional<int> seconds; // that the film is to last
    std::optional<FilmRate> rate;
    QSize size; // empty: the size of the first picture
    bool isStamped = false;
};

void addFilmOptions(QCommandLineParser &parser);

/// True when a film was requested.
[[nodiscard]] bool asksForFilm(const QCommandLineParser &parser);

/// An option that describes a film although none is requested; empty if there is none.
[[nodiscard]] QString strayFilmOption(const QCommandLineParser &parser);

/// What was requested, or why it makes no sense.
[[nodiscard]] std::variant<FilmRequest, QString> filmRequest(const QCommandLineParser &parser);

/// The rate of a film of this many images; leaves in `picks` those that it shows.
[[nodiscard]] FilmRate thinOut(FilmPicks &picks, const FilmRequest &request);

} // namespace velmora
