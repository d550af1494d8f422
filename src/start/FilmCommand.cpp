#include "start/FilmCommand.h"

#include "cameras/CameraChoices.h"

#include <QCommandLineParser>

#include <cmath>

namespace velmora {
namespace {

constexpr double kMostPerSecond = 240;
constexpr int kMostSeconds = 24 * 3600;
constexpr int kThousandths = 1000;

const QString kFilm = QStringLiteral("film");
const QString kHours = QStringLiteral("hours");
const QString kEvery = QStringLiteral("every");
const QString kSeconds = QStringLiteral("seconds");
const QString kFps = QStringLiteral("fps");
const QString kSize = QStringLiteral("size");
const QString kStamp = QStringLiteral("stamp");

std::optional<int> wholeNumber(const QString &text, int most)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= 1 && value <= most ? std::optional(value) : std::nullopt;
}

std::optional<QSize> sizeOf(const QString &text)
{
    const auto width = wholeNumber(text.section(u'x', 0, 0), kLargestFilm);
    const auto height = wholeNumber(text.section(u'x', 1), kLargestFilm);
    return width && height ? std::optional(QSize(*width, *height)) : std::nullopt;
}

std::optional<FilmRate> rateOf(const QString &text)
{
    bool isNumber = false;
    const double perSecond = text.toDouble(&isNumber);
    const bool fits = isNumber && perSecond >= 1.0 / kThousandths && perSecond <= kMostPerSecond;
    return fits ? std::optional(FilmRate{std::llround(perSecond * kThousandths), kThousandths})
                : std::nullopt;
}

// Passes each given option's value to its reader; keeps the message for the first that makes no
// sense.
class Values
{
public:
    explicit Values(const QCommandLineParser &parser)
        : parser_(parser)
    {
    }

    template <typename Target, typename Read>
    void take(const QString &option, Target &target, const QString &wanted, Read read)
    {
        if (!parser_.isSet(option)) {
            return;
        }
        if (const auto value = read(parser_.value(option))) {
            // NOLINTNEXTLINE(bugprone-optional-value-conversion): some targets are plain values
            target = *value;
        } else if (problem.isEmpty()) {
            problem = QStringLiteral("--%1 needs %2.").arg(option, wanted);
        }
    }

    QString problem;

private:
    const QCommandLineParser &parser_;
};

QCommandLineOption option(const QString &name, const char *text, const char *value)
{
    return {name, QString::fromLatin1(text), QString::fromLatin1(value)};
}

QString takeOptions(const QCommandLineParser &parser, FilmRequest &request)
{
    Values values(parser);
    values.take(kFilm, request.camera, QStringLiteral("a camera, group and row, as 0:3"),
                cameraFromText);
    values.take(kHours, request.hours, QStringLiteral("two hours of the day, as 6-20"), filmHours);
    const auto number = [](const QString &text) { return wholeNumber(text, 1'000'000); };
    values.take(kEvery, request.every, QStringLiteral("a number from 1 on"), number);
    const auto seconds = [](const QString &text) { return wholeNumber(text, kMostSeconds); };
    values.take(kSeconds, request.seconds, QStringLiteral("a number from 1 on"), seconds);
    values.take(kFps, request.rate, QStringLiteral("pictures a second, up to 240"), rateOf);
    values.take(kSize, request.size, QStringLiteral("a size, as 1280x720"), sizeOf);
    if (values.problem.isEmpty() && parser.isSet(kEvery) && parser.isSet(kSeconds)) {
        return QStringLiteral("--every and --seconds do not go together.");
    }
    return values.problem;
}

} // namespace

void addFilmOptions(QCommandLineParser &parser)
{
    const QString film = QStringLiteral(
        "Makes a film of a camera's images: --film <g:r> FROM TO OUT. FROM and TO are as "
        "2006-03-07 or 2006-03-07T14:30, in the time that the images' names have; OUT ends in %1. "
        "Exits 0, 1 when it cannot be made, 130 when interrupted.");
    parser.addOption({kFilm, film.arg(filmExtensions()), QStringLiteral("g:r")});
    parser.addOption(option(kHours, "With --film: images of these hours only, as 6-20.", "hours"));
    parser.addOption(option(kEvery, "With --film: every n-th image only.", "n"));
    parser.addOption(
        option(kSeconds, "With --film: images spread so that the film lasts so long.", "n"));
    parser.addOption(option(kFps, "With --film: pictures a second (25).", "n"));
    parser.addOption(
        option(kSize, "With --film: its size, as 1280x720 (that of the first image).", "wxh"));
    parser.addOption(
        {kStamp, QStringLiteral("With --film: writes date, time and camera into the pictures.")});
}

bool asksForFilm(const QCommandLineParser &parser)
{
    return parser.isSet(kFilm);
}

QString strayFilmOption(const QCommandLineParser &parser)
{
    for (const QString &option : {kHours, kEvery, kSeconds, kFps, kSize, kStamp}) {
        if (parser.isSet(option) && !asksForFilm(parser)) {
            return option;
        }
    }
    return {};
}

std::variant<FilmRequest, QString> filmRequest(const QCommandLineParser &parser)
{
    FilmRequest request;
    const QStringList words = parser.positionalArguments();
    if (words.size() != 3) {
        return QStringLiteral("--film needs a camera, FROM, TO and OUT.");
    }
    const auto span = filmSpan(words.at(0), words.at(1));
    if (!span) {
        return QStringLiteral("FROM and TO are days or times, as 2006-03-07 or 2006-03-07T14:30.");
    }
    request.span = *span;
    request.target = words.at(2);
    request.isStamped = parser.isSet(kStamp);
    const QString problem = takeOptions(parser, request);
    if (!problem.isEmpty()) {
        return problem;
    }
    return request;
}

FilmRate thinOut(FilmPicks &picks, const FilmRequest &request)
{
    picks.keepEvery(request.every);
    const FilmRate rate = request.rate.value_or(FilmRate());
    return request.seconds ? fillSeconds(picks, *request.seconds, rate, request.rate.has_value())
                           : rate;
}

} // namespace velmora
