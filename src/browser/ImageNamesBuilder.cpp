#include "browser/ImageNames.h"
#include "browser/StandardName.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t kNumbersAStep = 262'144;
constexpr std::size_t kPlacesAStep = 512;

} // namespace

void ImageNamesBuilder::add(QByteArrayView name)
{
    if (!isListedName(name)) {
        return;
    }
    const std::optional<StandardName> standard = standardName(name);
    const auto suffix = standard ? suffixNumber(standard->suffix) : std::nullopt;
    if (suffix) {
        names_.standards_.push_back(standard->digits << ImageNames::kSuffixBits | *suffix);
    } else {
        names_.odds_.add(name);
    }
}

// Nearly every name has the same suffix as the one before.
std::optional<quint64> ImageNamesBuilder::suffixNumber(QByteArrayView suffix)
{
    QByteArrayList &suffixes = names_.suffixes_;
    if (!suffixes.isEmpty() && suffixes[static_cast<qsizetype>(lastSuffix_)] == suffix) {
        return lastSuffix_;
    }
    const auto known = std::ranges::find(suffixes, suffix) - suffixes.begin();
    if (known == static_cast<qsizetype>(ImageNames::kMostSuffixes)) {
        return std::nullopt;
    }
    if (known == suffixes.size()) {
        suffixes.append(suffix.toByteArray());
    }
    lastSuffix_ = static_cast<quint64>(known);
    return lastSuffix_;
}

bool ImageNamesBuilder::sortSome()
{
    switch (phase_) {
    case Phase::Number:
        numberSome();
        break;
    case Phase::SortStandards:
        if (!sort_.sortSome()) {
            names_.standards_ = sort_.take();
            sort_ = {};
            phase_ = Phase::SortOdds;
        }
        break;
    case Phase::SortOdds:
        phase_ = names_.odds_.sortSome() ? Phase::SortOdds : Phase::PlaceOdds;
        break;
    case Phase::PlaceOdds:
        placeSome();
        break;
    case Phase::Done:
        break;
    }
    return phase_ != Phase::Done;
}

void ImageNamesBuilder::orderSuffixes()
{
    QByteArrayList &suffixes = names_.suffixes_;
    const QByteArrayList before = suffixes;
    std::ranges::sort(
        suffixes, [](const QByteArray &a, const QByteArray &b) { return compareNames(a, b) < 0; });
    for (const QByteArray &suffix : before) {
        newNumbers_.push_back(static_cast<quint64>(suffixes.indexOf(suffix)));
    }
}

// Renumbers the suffixes by their order.
void ImageNamesBuilder::numberSome()
{
    std::vector<quint64> &standards = names_.standards_;
    if (newNumbers_.empty()) {
        orderSuffixes();
    }
    const bool inOrder = std::ranges::is_sorted(newNumbers_);
    const std::size_t end =
        inOrder ? standards.size() : std::min(next_ + kNumbersAStep, standards.size());
    for (; !inOrder && next_ < end; ++next_) {
        const quint64 number = standards[next_] % ImageNames::kMostSuffixes;
        standards[next_] += newNumbers_[number] - number;
    }
    if (end == standards.size()) {
        next_ = 0;
        sort_ = RadixSort(std::move(standards));
        phase_ = Phase::SortStandards;
    }
}

void ImageNamesBuilder::placeSome()
{
    const std::vector<ListedName> &odds = names_.odds_.list();
    names_.oddPlaces_.reserve(odds.size());
    const std::size_t end = std::min(next_ + kPlacesAStep, odds.size());
    for (; next_ < end; ++next_) {
        const auto before = static_cast<std::size_t>(names_.standardsBefore(odds[next_].view()));
        names_.oddPlaces_.push_back(static_cast<quint32>(next_ + before));
    }
    if (end == odds.size()) {
        phase_ = Phase::Done;
    }
}

} // namespace velmora
