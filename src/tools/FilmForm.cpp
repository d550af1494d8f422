#include "tools/FilmForm.h"

#include <QFileInfo>
#include <QList>
#include <QRegularExpression>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kSmallest = 2;
constexpr int kLargest = 7680;

QStringList encodersOf(FilmForm form)
{
    switch (form) {
    case FilmForm::Mp4:
        return {QStringLiteral("libx264"), QStringLiteral("libopenh264")};
    case FilmForm::WebM:
        return {QStringLiteral("libvpx-vp9"), QStringLiteral("libvpx")};
    case FilmForm::WebP:
        return {QStringLiteral("libwebp_anim"), QStringLiteral("libwebp")};
    case FilmForm::Gif:
        break;
    }
    return {QStringLiteral("gif")};
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

// Quality rather than a bit rate: scenes with little movement come out small.
QStringList encoderOptions(const QString &encoder)
{
    if (encoder == u"libx264") {
        return words("-crf 23 -movflags +faststart");
    }
    if (encoder == u"libopenh264") {
        return words("-b:v 4M -movflags +faststart");
    }
    if (encoder == u"libvpx-vp9") {
        return words("-crf 32 -b:v 0 -deadline good -cpu-used 5 -row-mt 1");
    }
    if (encoder == u"libvpx") {
        return words("-crf 12 -b:v 4M -deadline good -cpu-used 5");
    }
    return words("-loop 0");
}

QString container(FilmForm form)
{
    switch (form) {
    case FilmForm::Mp4:
        return QStringLiteral("mp4");
    case FilmForm::WebM:
        return QStringLiteral("webm");
    case FilmForm::WebP:
        return QStringLiteral("webp");
    case FilmForm::Gif:
        break;
    }
    return QStringLiteral("gif");
}

// One palette for each picture: a common one would mean keeping them all in memory.
QString filters(FilmForm form, QSize size)
{
    const QString fitted = QStringLiteral("scale=%1:%2:force_original_aspect_ratio=decrease,"
                                          "pad=%1:%2:(ow-iw)/2:(oh-ih)/2:black,setsar=1")
                               .arg(size.width())
                               .arg(size.height());
    if (form == FilmForm::Gif) {
        return fitted + QStringLiteral(",split[a][b];[a]palettegen=stats_mode=single[p];"
                                       "[b][p]paletteuse=new=1");
    }
    return fitted + QStringLiteral(",format=yuv420p");
}

} // namespace

std::optional<FilmForm> filmForm(const QString &fileName)
{
    const QString ending = QFileInfo(fileName).suffix().toLower();
    for (const FilmForm form : {FilmForm::Mp4, FilmForm::WebM, FilmForm::WebP, FilmForm::Gif}) {
        if (ending == container(form)) {
            return form;
        }
    }
    return std::nullopt;
}

// A line of the list: "V....D libx264   libx264 H.264 …".
QString filmEncoder(FilmForm form, const QByteArray &listed)
{
    const QString text = QString::fromLatin1(listed);
    for (const QString &name : encodersOf(form)) {
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
    switch (form) {
    case FilmForm::Mp4:
        return QStringLiteral("H.264 (.mp4)");
    case FilmForm::WebM:
        return QStringLiteral("VP9 or VP8 (.webm)");
    case FilmForm::WebP:
        return QStringLiteral("animated WebP (.webp)");
    case FilmForm::Gif:
        break;
    }
    return QStringLiteral("GIF (.gif)");
}

QSize filmSize(QSize wanted)
{
    const QSize bounded = wanted.width() > kLargest || wanted.height() > kLargest
                              ? wanted.scaled(kLargest, kLargest, Qt::KeepAspectRatio)
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
    arguments += filters(form, size);
    arguments += {QStringLiteral("-c:v"), encoder};
    arguments += encoderOptions(encoder);
    arguments += {QStringLiteral("-f"), container(form), QStringLiteral("file:") + path};
    return arguments;
}

// Measured on street scenes; still scenes take a third of this, noisy nights twice as much.
qint64 filmBytes(FilmForm form, QSize size, qint64 pictures)
{
    constexpr double kBitsPerPixel = 0.1;
    constexpr double kGifTimes = 40;
    constexpr double kWebPTimes = 6;
    const double times = form == FilmForm::Gif    ? kGifTimes
                         : form == FilmForm::WebP ? kWebPTimes
                                                  : 1;
    const double pixels = static_cast<double>(size.width()) * size.height();
    return static_cast<qint64>(pixels * static_cast<double>(pictures) * kBitsPerPixel * times / 8);
}

} // namespace velmora
