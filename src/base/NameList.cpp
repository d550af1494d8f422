#include "base/NameList.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{64} * 1024; // holds many names of at most 255 bytes
constexpr std::size_t kFirstRun = 64;
constexpr std::size_t kRunsAStep = 16;
constexpr int kMergesAStep = 4096;
constexpr std::size_t kNamesPackedAStep = 8192;

bool comesBefore(const ListedName &a, const ListedName &b)
{
    return compareNames(a.view(), b.view()) < 0;
}

} // namespace

void NameList::add(QByteArrayView name)
{
    names_.push_back({store(name), static_cast<quint32>(name.size())});
}

const char *NameList::store(QByteArrayView name)
{
    const auto length = static_cast<std::size_t>(name.size());
    if (blocks_.empty() || used_ + length > kBlockBytes) {
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(kBlockBytes));
        used_ = 0;
    }
    char *const text = blocks_.back().get() + used_;
    std::memcpy(text, name.data(), length);
    used_ += length;
    return text;
}

bool NameList::sortSome()
{
    if (sorted_ < names_.size()) {
        sortRuns();
    } else if (run_ < names_.size()) {
        for (int i = 0; i < kMergesAStep && run_ < names_.size(); ++i) {
            mergeOne();
        }
    } else {
        packSome();
    }
    return packed_ < names_.size();
}

void NameList::packSome()
{
    if (packed_ == 0) {
        unsorted_ = std::exchange(blocks_, {});
    }
    const std::size_t end = std::min(packed_ + kNamesPackedAStep, names_.size());
    for (; packed_ < end; ++packed_) {
        names_[packed_].text = store(names_[packed_].view());
    }
    if (packed_ == names_.size()) {
        unsorted_.clear();
        merged_ = {};
    }
}

void NameList::sortRuns()
{
    for (std::size_t i = 0; i < kRunsAStep && sorted_ < names_.size(); ++i) {
        const std::size_t end = std::min(sorted_ + kFirstRun, names_.size());
        std::sort(names_.data() + sorted_, names_.data() + end, comesBefore);
        sorted_ = end;
    }
    if (sorted_ == names_.size()) {
        run_ = kFirstRun;
        merged_.reserve(names_.size());
        startPair(0);
    }
}

void NameList::startPair(std::size_t from)
{
    left_ = from;
    leftEnd_ = std::min(left_ + run_, names_.size());
    right_ = leftEnd_;
    rightEnd_ = std::min(right_ + run_, names_.size());
}

bool NameList::leftIsNext() const
{
    return right_ == rightEnd_ || (left_ != leftEnd_ && comesBefore(names_[left_], names_[right_]));
}

void NameList::mergeOne()
{
    merged_.push_back(leftIsNext() ? names_[left_++] : names_[right_++]);
    if (merged_.size() == names_.size()) {
        names_.swap(merged_);
        merged_.clear();
        run_ *= 2;
        startPair(0);
    } else if (merged_.size() == rightEnd_) {
        startPair(rightEnd_);
    }
}

std::size_t NameList::bytes() const
{
    return blocks_.size() * kBlockBytes + names_.capacity() * sizeof(ListedName);
}

} // namespace velmora
