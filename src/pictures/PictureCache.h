// Pictures that are still shown, or were a moment ago, so that a window that is drawn anew or goes
// back a step need not decode them again.
#pragma once

#include "pictures/PictureFile.h"
#include "pictures/PictureReader.h"

#include <QCache>
#include <QImage>
#include <QString>

#include <optional>

namespace velmora {

/// Bounded by bytes; what was not asked for the longest time goes first. A picture is known by
/// path, wish and the file's identity, so that a file that was replaced is decoded anew. Paths are
/// native. That a file holds no picture is remembered as well.
class PictureCache
{
public:
    explicit PictureCache(qsizetype maxBytes);

    /// What is remembered of the file: its picture, a null image when there is none in it; nothing
    /// when it is not remembered, gone or changed on disk. Asks the disk for the identity, once.
    [[nodiscard]] std::optional<QImage> known(const QString &path, const PictureWish &wish);

    /// The picture when it is remembered; a null image when it is not, or when there is none.
    [[nodiscard]] QImage find(const QString &path, const PictureWish &wish);

    /// The picture, from memory or decoded and remembered; a null image when there is none.
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
        FileIdentity identity;
        QImage image;
    };

    [[nodiscard]] QImage decode(const Key &key);

    QCache<Key, Entry> entries_;
    int decodes_ = 0;
};

} // namespace velmora
