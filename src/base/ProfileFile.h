// A settings file on disk. Nothing is kept between calls.
#pragma once

#include "base/ProfileText.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <span>
#include <system_error>

namespace velmora {

enum class ProfileWrite {
    Written,
    Unchanged, // the key already had this value; the file was not touched
    Failed     // the file is as it was, but see writeProfileValues()
};

/// A larger file is read, but no longer changed: replacing it at every change would hold up
/// everything else.
inline constexpr qint64 kMostProfileBytes = qint64{16} * 1024 * 1024;

/// A file larger than this cannot be settings and is not read either.
inline constexpr qint64 kMostReadBytes = qint64{256} * 1024 * 1024;

/// True when nothing stands at the path. A file that cannot be examined is not known to be missing;
/// a link that leads nowhere may lead to a disk that is away. Native path.
[[nodiscard]] bool isProfileMissing(const QString &path);

/// The bytes of a settings file, empty when it is missing. Nothing when it is there and cannot be
/// read: after an error, when it is no regular file or larger than kMostReadBytes.
[[nodiscard]] std::optional<QByteArray> readProfile(const QString &path);

/// The error with which a settings file that is there cannot be read; none for one that is missing,
/// no regular file or too large.
[[nodiscard]] std::error_code profileFault(const QString &path);

/// True for a settings file that is mounted by itself, as containers do it: it cannot be replaced.
[[nodiscard]] bool isProfileMounted(const QString &path);

/// The stored value of a key, or `fallback` without its trailing blanks, cut to size - 1 bytes.
[[nodiscard]] QByteArray readProfileValue(const QString &path, QByteArrayView section,
                                          QByteArrayView key, QByteArrayView fallback,
                                          qsizetype size);

/// Gives a key a value, or removes it (no value). A missing file is made, but not to remove a key.
/// At every instant the file on disk is the whole old or the whole new text. A file without write
/// permission stays as it is, even for an administrator; so does one larger than kMostProfileBytes.
ProfileWrite writeProfileValue(const QString &path, QByteArrayView section, QByteArrayView key,
                               std::optional<QByteArrayView> value);

/// Gives different keys their values, except those whose condition the file does not meet any more.
/// Where no value changes its length, each is written like a single one, but the file is opened and
/// read only once: after a failure those before it are written. Otherwise all of them reach the
/// disk together or none.
ProfileWrite writeProfileValues(const QString &path, std::span<const ProfileValue> values);

/// Writes many values at once: `change` takes the current text, empty when there is no file, and
/// returns the new one. No other program writes in between, and either all of it reaches the disk
/// or none.
ProfileWrite changeProfile(const QString &path,
                           const std::function<QByteArray(const QByteArray &)> &change);

} // namespace velmora
