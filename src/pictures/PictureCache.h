// Pictures that are on show or recently were, so that a window that is repainted or goes back a
// step need not decode them again.
#pragma once

#include "pictures/PictureFile.h"
#include "pictures/PictureReader.h"

#include <QCache>
#include <QImage>
#include <QString>

#include <optional>

namespace velmora {

/// Bounded by bytes; the least recently used goes first. A picture is identified by path, wish and
/// the file's stamp, so that a replaced file is decoded again. Paths are native. It is also
/// remembered that a file holds no picture.
class PictureCache
{
public:
    explicit PictureCache(qsizetype maxBytes);

    /// What is remembered of the file: its picture, or a null image if it holds none; nothing if it
    /// is not remembered, is gone or has changed on disk. Asks the disk for the stamp, once.
    [[nodiscard]] std::optional<QImage> known(const QString &path, const PictureWish &wish);

    /// The picture, from memory or decoded and remembered; a null image if there is none.
    [[nodiscard]] QImage read(const QString &path, const PictureWish &wish);

    /// Number of files decoded so far.
    [[nodiscard]] int decodes() const { return decodes_; }

private:
    struct Key
    {
        QString path;
        PictureWish wish;

        bool operator==(const Key &) const = default;

        friend std::size_t qHash(const Key &key, std::size_t seed = 0) noexcept
        {
            return qHashMulti(seed, key.path, key.wish);
        }
    };

    struct Entry
    {
        FileStamp stamp;
        QImage image;
    };

    [[nodiscard]] QImage decode(const Key &key);

    QCache<Key, Entry> entries_;
    int decodes_ = 0;
};

} // namespace velmora
