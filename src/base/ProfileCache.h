// Caches the text of a settings file for those who read many values from it.
#pragma once

#include "base/FileStamp.h"
#include "base/ProfileText.h"

#include <QString>

#include <memory>
#include <optional>

namespace velmora {

/// A settings file is read again for each value, so that no one sees an old one. For a file that
/// has grown beyond reason, that would take seconds for each window: its text is kept until the
/// file's stamp shows a change.
class ProfileCache
{
public:
    static constexpr qint64 kLargeBytes = 1'000'000;

    /// path: native path of the file, which need not exist.
    explicit ProfileCache(QString path);

    /// The current text, empty when there is no file. While there is one that cannot be read, what
    /// was last read of it: a passing error must not make settings look empty, by which cameras
    /// would be forgotten and images go elsewhere.
    [[nodiscard]] std::shared_ptr<const ProfileText> text();

    /// The stored value of a key, of the same text; empty when there is none, cut to size - 1
    /// bytes.
    [[nodiscard]] QByteArray value(QByteArrayView section, QByteArrayView key, qsizetype size);

private:
    [[nodiscard]] std::shared_ptr<const ProfileText> keptText();
    [[nodiscard]] QByteArray read();
    [[nodiscard]] bool reload(); // false when that failed

    QString path_;
    bool isLarge_ = false;           // when it was last read
    std::optional<FileStamp> stamp_; // of the file, if large, when it was last looked at
    std::shared_ptr<const ProfileText> kept_;
    QByteArray whole_;                        // what was last read; shares the kept text's memory
    std::shared_ptr<const ProfileText> last_; // of a small file: parsed only when its bytes change
};

} // namespace velmora
