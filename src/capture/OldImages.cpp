#include "capture/OldImages.h"

#include "capture/ImageAge.h"

#include <algorithm>
#include <tuple>

namespace velmora {
namespace {

using namespace std::chrono_literals;

// A camera's clock may be slightly ahead of this machine's.
constexpr auto kTolerance = 5min;

// Holds the records of some ten files: deleting them takes a millisecond or two.
constexpr std::size_t kSmallBuffer = 2048;

} // namespace

OldImages::OldImages(const FolderFiles &folder, WallTime local, WallTime utc)
    : folder_(folder)
    , now_(std::max(local, utc))
    , limit_(oneMonthBefore(std::min(local, utc)))
    , look_(folder.scan())
{
}

bool OldImages::lookSome()
{
    return look_.readSome([this](QByteArrayView name) { look(name); });
}

void OldImages::look(QByteArrayView name)
{
    const std::optional<WallTime> date = dateInName(name);
    if (date && std::tie(*date, name) > std::make_tuple(newest_.value_or(WallTime::min()),
                                                        QByteArrayView(newestName_))) {
        newest_ = date;
        newestName_ = name.toByteArray();
    }
}

bool OldImages::isClockPlausible() const
{
    return !newest_ || *newest_ <= now_ + kTolerance;
}

bool OldImages::deleteSome()
{
    if (newest_ && !folder_.has(newestName_.constData())) {
        return false; // the newest that is left may be among the old ones
    }
    if (!sweep_) {
        sweep_.emplace(folder_.scan(kSmallBuffer));
    }
    return sweep_->readSome([this](QByteArrayView name) { deleteIfOld(name); });
}

void OldImages::deleteIfOld(QByteArrayView name)
{
    const std::optional<WallTime> date = dateInName(name);
    if (!newest_ || !date || *date >= limit_ || name == newestName_) {
        return;
    }
    const std::error_code error = folder_.remove(name.data());
    if (error) {
        error_ = error;
    }
    ++(error ? failed_ : deleted_);
}

} // namespace velmora
