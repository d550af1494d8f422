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
    if (std::shared_ptr<const ProfileText> text = keptText()) {
        return text;
    }
    QByteArray bytes = read();
    if (!last_ || last_->bytes() != bytes) {
        last_ = std::make_shared<const ProfileText>(std::move(bytes));
    }
    return isLarge_ ? std::exchange(last_, nullptr) : last_;
}

QByteArray ProfileCache::value(QByteArrayView section, QByteArrayView key, qsizetype size)
{
    const std::shared_ptr<const ProfileText> text = keptText();
    const QByteArray bytes = text ? QByteArray() : read();
    const QByteArrayView value =
        (text ? text->value(section, key) : findProfileValue(bytes, section, key))
            .value_or(QByteArrayView());
    return value.first(qMin(value.size(), size - 1)).toByteArray();
}

QByteArray ProfileCache::read()
{
    static_cast<void>(reload());
    return whole_;
}

bool ProfileCache::reload()
{
    std::optional<QByteArray> bytes = readProfile(path_);
    if (!bytes) {
        return false;
    }
    if (!isLarge_ && bytes->size() > kLargeBytes) {
        isLarge_ = true;
        stamp_ = fileStamp(path_);
    }
    whole_ = *std::move(bytes);
    return true;
}

// Only worth it for a file that is read a second time before it changes. One that has just changed
// may change again without a new stamp.
std::shared_ptr<const ProfileText> ProfileCache::keptText()
{
    if (!isLarge_) {
        return nullptr;
    }
    const std::optional<FileStamp> stamp = fileStamp(path_);
    isLarge_ = stamp && stamp->bytes > kLargeBytes;
    if (!isLarge_ || stamp_ != stamp) {
        stamp_ = stamp;
        kept_.reset();
        return nullptr;
    }
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    if (!kept_ && tellsChanges(*stamp, now) && reload() && whole_.size() == stamp->bytes) {
        auto text = std::make_shared<ProfileText>(whole_);
        text->index();
        kept_ = std::move(text);
    }
    return kept_;
}

} // namespace velmora
