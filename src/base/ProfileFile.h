// A settings file on disk. Nothing of it is kept between calls.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace velmora {

enum class ProfileWrite {
    Written,
    Unchanged, // the key already had this value; the file was not touched
    Failed     // the file is as it was
};

/// A file of more bytes is read, but changed no more: replacing it at every change would hold up
/// everything else.
inline constexpr qint64 kMostProfileBytes = qint64{16} * 1024 * 1024;

/// The bytes of a settings file, empty when it is missing, unreadable or no regular file. Native
/// path.
[[nodiscard]] QByteArray readProfile(const QString &path);

/// The stored value of a key, or `fallback` without the blanks at its end, cut to size - 1 bytes.
[[nodiscard]] QByteArray readProfileValue(const QString &path, QByteArrayView section,
                                          QByteArrayView key, QByteArrayView fallback,
                                          qsizetype size);

/// Gives a key a value, or takes it out (no value). The file is made when missing, never when a key
/// is taken out. At every instant the file on disk is the whole old or the whole new text. A file
/// without write permission stays as it is, whoever runs the program, and so does one of more than
/// kMostProfileBytes.
ProfileWrite writeProfileValue(const QString &path, QByteArrayView section, QByteArrayView key,
                               std::optional<QByteArrayView> value);

/// Writes many values at once: `change` gets the text as it stands, empty when there is no file,
/// and gives what it is to be. No other program writes in between, and all of it is on disk or
/// none.
ProfileWrite changeProfile(const QString &path,
                           const std::function<QByteArray(const QByteArray &)> &change);

} // namespace velmora
