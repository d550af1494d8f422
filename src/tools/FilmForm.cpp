#include "tools/FilmForm.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <span>

namespace velmora {
namespace {

constexpr int kSmallest = 2;
constexpr int kMostOfGif = 50; // pictures a second

struct Encoder
{
    const char *name;
    const char
        *options; // quality rather than a bit rate: scenes with little movement come out small
};

constexpr std::array kMp4Encoders{
    Encoder{"libx264", "-crf 23 -movflags +faststart"},
    Encoder{"libopenh264", "-b:v 4M -movflags +faststart"},
};
constexpr std::array kWebMEncoders{
    Encoder{"libvpx-vp9", "-crf 32 -b:v 0 -deadline good -cpu-used 5 -row-mt 1"},
    Encoder{"libvpx", "-crf 12 -b:v 4M -deadline good -cpu-used 5"},
};
constexpr std::array kWebPEncoders{Encoder{"libwebp_anim", "-loop 0"},
                                   Encoder{"libwebp", "-loop 0"}};
constexpr std::array kGifEncoders{Encoder{"gif", "-loop 0"}};

constexpr const char *kColours = "format=yuv420p";

// One palette for each picture: a common one would mean keeping them all in memory.
constexpr const char *kPalette =
    "split[a][b];[a]palettegen=stats_mode=single[p];[b][p]paletteuse=new=1";

struct Row
{
    const char *container; // for ffmpeg, and a file's extension
    const char *text;
    std::span<const Encoder> encoders; // the best one first
    const char *filter;
    double bitsPerPixel; // measured on street scenes; still ones take a third, noisy nights twice
};

// In the order of FilmForm.
constexpr std::array<Row, kFilmForms.size()> kFormats{{
    {"mp4", "H.264 (.mp4)", kMp4Encoders, kColours, 0.1},
    {"webm", "VP9 or VP8 (.webm)", kWebMEncoders, kColours, 0.1},
    {"webp", "animated WebP (.webp)", kWebPEncoders, kColours, 0.6},
    {"gif", "GIF (.gif)", kGifEncoders, kPalette, 4},
}};

const Row &rowOf(FilmForm form)
{
    return kFormats.at(static_cast<std::size_t>(form));
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

QStringList optionsOf(FilmForm form, const QString &encoder)
{
    const auto found = std::ranges::find(rowOf(form).encoders, encoder, [](const Encoder &known) {
        return QString::fromLatin1(known.name);
    });
    return found == rowOf(form).encoders.end() ? QStringList() : words(found->options);
}

// A GIF counts in hundredths of a second, and viewers show anything shorter than two far longer.
QString filters(FilmForm form, FilmRate rate, QSize size)
{
    const bool isTooFast = form == FilmForm::Gif && rate.perSecond() > kMostOfGif;
    const QString slower = isTooFast ? QStringLiteral("fps=%1,").arg(kMostOfGif) : QString();
    return slower + QStringLiteral("scale=%1:%2:force_original_aspect_ratio=decrease,"
                                   "pad=%1:%2:(ow-iw)/2:(oh-ih)/2:black,setsar=1,%3")
                        .arg(size.width())
                        .arg(size.height())
                        .arg(QLatin1String(rowOf(form).filter));
}

} // namespace

std::optional<FilmForm> filmForm(const QString &fileName)
{
    const QString extension = QFileInfo(fileName).suffix().toLower();
    const auto *const found = std::ranges::find_if(
        kFilmForms, [&extension](FilmForm form) { return filmExtension(form) == extension; });
    return found == kFilmForms.end() ? std::nullopt : std::optional(*found);
}

QString filmExtension(FilmForm form)
{
    return QString::fromLatin1(rowOf(form).container);
}

QString filmExtensions()
{
    QStringList extensions;
    for (const FilmForm form : kFilmForms) {
        extensions.append(u'.' + filmExtension(form));
    }
    const QString last = extensions.takeLast();
    return extensions.join(QLatin1String(", ")) + QLatin1String(" or ") + last;
}

// A line of the list: "V....D libx264   libx264 H.264 …".
QString filmEncoder(FilmForm form, const QByteArray &listed)
{
    const QString text = QString::fromLatin1(listed);
    for (const Encoder &encoder : rowOf(form).encoders) {
        const QString name = QString::fromLatin1(encoder.name);
        const QRegularExpression line(
            QStringLiteral("^\\s*V\\S*\\s+%1\\s").arg(QRegularExpression::escape(name)),
            QRegularExpression::MultilineOption);
        if (text.contains(line)) {
            return name;
        }
    }
    return {};
}

QString filmFormText(FilmForm form)
{
    return QString::fromLatin1(rowOf(form).text);
}

QSize filmSize(QSize wanted)
{
    const QSize bounded = wanted.width() > kLargestFilm || wanted.height() > kLargestFilm
                              ? wanted.scaled(kLargestFilm, kLargestFilm, Qt::KeepAspectRatio)
                              : wanted;
    return {std::max(kSmallest, bounded.width() / 2 * 2),
            std::max(kSmallest, bounded.height() / 2 * 2)};
}

QStringList ffmpegArguments(FilmForm form, const QString &encoder, FilmRate rate, QSize size,
                            const QString &path)
{
    QStringList arguments = words("-hide_banner -loglevel error -nostdin -y -f image2pipe");
    arguments += {QStringLiteral("-framerate"),
                  QStringLiteral("%1/%2").arg(rate.pictures).arg(rate.seconds)};
    arguments += words("-c:v mjpeg -i pipe:0 -map_metadata -1 -filter_complex");
    arguments += filters(form, rate, size);
    arguments += {QStringLiteral("-c:v"), encoder};
    arguments += optionsOf(form, encoder);
    arguments += {QStringLiteral("-f"), filmExtension(form), QStringLiteral("file:") + path};
    return arguments;
}

qint64 filmBytes(FilmForm form, QSize size, qint64 pictures)
{
    const double pixels = static_cast<double>(size.width()) * size.height();
    const double bits = pixels * static_cast<double>(pictures) * rowOf(form).bitsPerPixel;
    return static_cast<qint64>(bits / 8);
}

} // namespace velmora
