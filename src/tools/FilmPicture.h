// A stored image on its way into a film: the JPEG as it is where that will do, else made anew.
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

namespace velmora {

enum class FilmPictureState {
    Good,
    Gone,  // deleted since it was listed
    Broken // no picture, or not a whole one
};

struct FilmPicture
{
    FilmPictureState state = FilmPictureState::Broken;
    QByteArray jpeg;
    QSize size;
};

/// What is written into a picture: date and time of its name, and the camera.
[[nodiscard]] QString filmStamp(const QString &fileName, const QString &camera);

/// The picture of a file (native path), for ffmpeg: a whole JPEG of a usual kind.
[[nodiscard]] FilmPicture filmPicture(const QString &path);

/// The same at the film's size, with a text in its lower left corner. Needs the toolkit's fonts.
[[nodiscard]] FilmPicture stampedPicture(const QString &path, QSize size, const QString &text);

} // namespace velmora
