#include "browser/RadixSort.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t kStep = 65'536;

} // namespace

RadixSort::RadixSort(std::vector<quint64> values)
    : values_(std::move(values))
    , lowest_(values_.empty() ? 0 : values_.front())
    , highest_(lowest_)
{
}

bool RadixSort::sortSome()
{
    const std::size_t end = std::min(next_ + kStep, values_.size());
    switch (phase_) {
    case Phase::Look:
        look(end);
        break;
    case Phase::Count:
        count(end);
        break;
    case Phase::Move:
        move(end);
        break;
    case Phase::Done:
        break;
    }
    return phase_ != Phase::Done;
}

void RadixSort::look(std::size_t end)
{
    quint64 before = next_ == 0 ? lowest_ : values_[next_ - 1];
    for (; next_ < end; ++next_) {
        const quint64 value = values_[next_];
        ascends_ = ascends_ && value >= before;
        descends_ = descends_ && value <= before;
        lowest_ = std::min(lowest_, value);
        highest_ = std::max(highest_, value);
        before = value;
    }
    if (next_ == values_.size()) {
        afterLook();
    }
}

void RadixSort::afterLook()
{
    next_ = 0;
    phase_ = Phase::Count;
    if (ascends_ || descends_) {
        if (!ascends_) {
            std::ranges::reverse(values_);
        }
        phase_ = Phase::Done;
        return;
    }
    const auto bits = static_cast<std::size_t>(std::bit_width(highest_ - lowest_));
    digits_ = (bits + kDigitBits - 1) / kDigitBits;
    places_.resize(digits_);
    sorted_.resize(values_.size());
}

void RadixSort::count(std::size_t end)
{
    for (; next_ < end; ++next_) {
        for (std::size_t number = 0; number < digits_; ++number) {
            ++places_[number][digit(values_[next_], number)];
        }
    }
    if (next_ == values_.size()) {
        phase_ = Phase::Move;
        digit_ = 0;
        nextDigit();
    }
}

void RadixSort::move(std::size_t end)
{
    Places &places = places_[digit_];
    for (; next_ < end; ++next_) {
        const quint64 value = values_[next_];
        sorted_[places[digit(value, digit_)]++] = value;
    }
    if (next_ == values_.size()) {
        values_.swap(sorted_);
        ++digit_;
        nextDigit();
    }
}

// Goes on to the next digit that differs between numbers, and turns its counts into places.
void RadixSort::nextDigit()
{
    while (digit_ < digits_ && !varies(places_[digit_])) {
        ++digit_;
    }
    next_ = 0;
    if (digit_ == digits_) {
        phase_ = Phase::Done;
        return;
    }
    quint32 place = 0;
    for (quint32 &entry : places_[digit_]) {
        place += std::exchange(entry, place);
    }
}

bool RadixSort::varies(const Places &counts) const
{
    return counts[digit(values_.front(), digit_)] != values_.size();
}

} // namespace velmora
