#include "base/ProfileCache.h"

#include "base/ProfileFile.h"

#include <chrono>
#include <utility>

namespace velmora {

ProfileCache::ProfileCache(QString path)
    : path_(std::move(path))
{
}

std::shared_ptr<const ProfileText> ProfileCache::text()
{
    const std::optional<FolderStamp> stamp = fileStamp(path_);
    if (stamp && stamp->bytes > kLargeBytes) {
        return largeText(*stamp);
    }
    kept_.reset();
    return std::make_shared<const ProfileText>(readProfile(path_));
}

QByteArray ProfileCache::value(QByteArrayView section, QByteArrayView key, qsizetype size)
{
    const std::optional<FolderStamp> stamp = fileStamp(path_);
    if (!stamp || stamp->bytes <= kLargeBytes) {
        kept_.reset();
        return readProfileValue(path_, section, key, {}, size);
    }
    const std::shared_ptr<const ProfileText> text = largeText(*stamp);
    const QByteArrayView value = text->value(section, key).value_or(QByteArrayView());
    return value.first(qMin(value.size(), size - 1)).toByteArray();
}

// A file that has just been changed may change again without its stamp; it is not kept.
std::shared_ptr<const ProfileText> ProfileCache::largeText(const FolderStamp &stamp)
{
    if (kept_ && stamp_ == stamp) {
        return kept_;
    }
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    auto text = std::make_shared<ProfileText>(readProfile(path_));
    kept_.reset();
    if (tellsChanges(stamp, now) && text->bytes().size() == stamp.bytes) {
        text->index();
        stamp_ = stamp;
        kept_ = text;
    }
    return text;
}

} // namespace velmora
