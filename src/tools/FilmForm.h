// The formats of a film, and ffmpeg's arguments for each.
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace velmora {

enum class FilmForm { Mp4, WebM, WebP, Gif };

inline constexpr std::array kFilmForms{FilmForm::Mp4, FilmForm::WebM, FilmForm::WebP,
                                       FilmForm::Gif};

/// By a file name's extension, in any case; nothing for an unknown one.
[[nodiscard]] std::optional<FilmForm> filmForm(const QString &fileName);

/// Pixels along a film's longer side, which players accept.
inline constexpr int kLargestFilm = 7680;

/// "mp4".
[[nodiscard]] QString filmExtension(FilmForm form);

/// All of them, for the user: ".mp4, .webm, .webp or .gif".
[[nodiscard]] QString filmExtensions();

/// This many pictures in that many seconds.
struct FilmRate
{
    qint64 pictures = 25;
    qint64 seconds = 1;

    [[nodiscard]] double perSecond() const
    {
        return static_cast<double>(pictures) / static_cast<double>(seconds);
    }
};

/// The best of the encoders listed by ffmpeg for a format; empty if it has none.
[[nodiscard]] QString filmEncoder(FilmForm form, const QByteArray &listed);

/// The format as shown to the user: "H.264 (.mp4)".
[[nodiscard]] QString filmFormText(FilmForm form);

/// The size of a film for a requested size: even, since encoders share colours between two pixels,
/// and within what players accept.
[[nodiscard]] QSize filmSize(QSize wanted);

/// Arguments that make ffmpeg read JPEG pictures from its standard input and write a film to a
/// path, each picture as large as fits, on black.
[[nodiscard]] QStringList ffmpegArguments(FilmForm form, const QString &encoder, FilmRate rate,
                                          QSize size, const QString &path);

/// Approximate size of a film in bytes.
[[nodiscard]] qint64 filmBytes(FilmForm form, QSize size, qint64 pictures);

} // namespace velmora
