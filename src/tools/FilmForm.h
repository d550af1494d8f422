// The forms of a film and how ffmpeg is asked for each.
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace velmora {

enum class FilmForm { Mp4, WebM, WebP, Gif };

/// By the ending of a file's name, in any case; nothing for another ending.
[[nodiscard]] std::optional<FilmForm> filmForm(const QString &fileName);

/// Pictures in so many seconds.
struct FilmRate
{
    qint64 pictures = 25;
    qint64 seconds = 1;

    [[nodiscard]] double perSecond() const
    {
        return static_cast<double>(pictures) / static_cast<double>(seconds);
    }
};

/// Of the encoders that ffmpeg lists the best for a form; empty when it has none.
[[nodiscard]] QString filmEncoder(FilmForm form, const QByteArray &listed);

/// What is wanted of it, for people: "H.264 (.mp4)".
[[nodiscard]] QString filmFormText(FilmForm form);

/// The size that a film has for a size asked for: even, since encoders share colours between two
/// pixels, and within what players take.
[[nodiscard]] QSize filmSize(QSize wanted);

/// Arguments that make ffmpeg read JPEG pictures from its standard input and write a film to a
/// path, each picture as large as fits, on black.
[[nodiscard]] QStringList ffmpegArguments(FilmForm form, const QString &encoder, FilmRate rate,
                                          QSize size, const QString &path);

/// Bytes that a film will about have.
[[nodiscard]] qint64 filmBytes(FilmForm form, QSize size, qint64 pictures);

} // namespace velmora
