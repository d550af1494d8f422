#include "pictures/PictureCache.h"

namespace velmora {
namespace {

constexpr qsizetype kEntryBytes = 512; // cost of an entry besides its pixels, its path included

} // namespace

PictureCache::PictureCache(qsizetype maxBytes)
    : entries_(maxBytes)
{
}

std::optional<QImage> PictureCache::known(const QString &path, const PictureWish &wish)
{
    const std::optional<FileStamp> stamp = fileStamp(path);
    const Key key{path, wish};
    const Entry *const entry = entries_.object(key);
    if (entry != nullptr && stamp == entry->stamp) {
        return entry->image;
    }
    entries_.remove(key); // its file is gone or has changed
    return std::nullopt;
}

QImage PictureCache::read(const QString &path, const PictureWish &wish)
{
    const std::optional<QImage> image = known(path, wish);
    return image ? *image : decode({path, wish});
}

// The stamp is taken before the bytes, so that a change in between shows at the next lookup.
QImage PictureCache::decode(const Key &key)
{
    const PictureFile file(key.path);
    const std::optional<FileStamp> stamp = file.stamp();
    if (!stamp) {
        return {};
    }
    const std::optional<QByteArray> bytes = file.tryToRead();
    if (!bytes) {
        return {}; // the next reading may succeed
    }
    ++decodes_;
    QImage image = decodePicture(*bytes, key.wish);
    entries_.insert(key, new Entry{*stamp, image}, kEntryBytes + image.sizeInBytes());
    return image;
}

} // namespace velmora
