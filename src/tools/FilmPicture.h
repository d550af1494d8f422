// A stored image on its way into a film: the JPEG as it is where possible, else encoded again.
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

namespace velmora {

enum class FilmPictureState {
    Good,
    Gone,  // deleted since it was listed
    Broken // no picture, or an incomplete one
};

struct FilmPicture
{
    FilmPictureState state = FilmPictureState::Broken;
    QByteArray jpeg;
    QSize size;
};

/// The text drawn into a picture: date and time from its name, and the camera.
[[nodiscard]] QString filmStamp(const QString &fileName, const QString &camera);

/// The picture in a file (native path), for ffmpeg: a complete JPEG of an ordinary kind.
[[nodiscard]] FilmPicture filmPicture(const QString &path);

/// The same at the film's size, with a text in its lower left corner. Needs the toolkit's fonts.
[[nodiscard]] FilmPicture stampedPicture(const QString &path, QSize size, const QString &text);

} // namespace velmora
