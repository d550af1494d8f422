#include "browser/ImageNames.h"

#include "base/Digits.h"
#include "base/NameStamp.h"
#include "browser/StandardName.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace velmora {
namespace {

constexpr std::size_t kLongestName = 255; // a file system's limit

// A standard name's text, built on the stack for comparisons.
class StandardText
{
public:
    StandardText(quint64 digits, QByteArrayView suffix)
        : length_(writeDigits(digits, text_.data()))
    {
        std::memcpy(text_.data() + length_, suffix.data(), static_cast<std::size_t>(suffix.size()));
        length_ += suffix.size();
    }

    [[nodiscard]] QByteArrayView view() const { return {text_.data(), length_}; }

private:
    std::array<char, kLongestName> text_ = {};
    qsizetype length_;
};

// Eight digits, followed by nothing or by "_" and more.
bool asksForDay(QByteArrayView key)
{
    return key.size() >= kDayLength && areDigits(key.first(kDayLength)) &&
           (key.size() == kDayLength || key[kDayLength] == '_');
}

// Of names that differ in case alone, capitals come first.
QByteArray inCapitals(QByteArrayView text)
{
    QByteArray capitals = text.toByteArray();
    for (char &c : capitals) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return capitals;
}

bool holds(QByteArrayView name, QByteArrayView key)
{
    return ::memmem(name.data(), static_cast<std::size_t>(name.size()), key.data(),
                    static_cast<std::size_t>(key.size())) != nullptr;
}

std::optional<qsizetype> earlier(std::optional<qsizetype> a, std::optional<qsizetype> b)
{
    return a && b ? std::min(a, b) : a ? a : b;
}

} // namespace

qsizetype ImageNames::count() const
{
    return static_cast<qsizetype>(standards_.size()) + static_cast<qsizetype>(odds_.list().size());
}

QByteArray ImageNames::name(qsizetype index) const
{
    const auto place = std::ranges::lower_bound(oddPlaces_, static_cast<quint32>(index));
    const auto oddsBefore = place - oddPlaces_.begin();
    if (place != oddPlaces_.end() && *place == index) {
        return odds_.list()[static_cast<std::size_t>(oddsBefore)].view().toByteArray();
    }
    return standard(index - oddsBefore);
}

std::optional<qsizetype> ImageNames::find(QByteArrayView name) const
{
    const qsizetype place = countBefore(name);
    return place < count() && this->name(place) == name ? std::optional(place) : std::nullopt;
}

std::optional<qsizetype> ImageNames::firstContaining(QByteArrayView key) const
{
    if (key.isEmpty()) {
        return std::nullopt;
    }
    // A standard name's only "_" follows its day.
    const auto index = asksForDay(key) ? standardBeginningWith(key) : standardContaining(key);
    return earlier(index ? std::optional(placeOfStandard(*index)) : std::nullopt,
                   oddContaining(key));
}

std::optional<qsizetype> ImageNames::firstBeginningWith(QByteArrayView text) const
{
    const qsizetype place = countBefore(inCapitals(text));
    return place < count() && nameBeginsWith(name(place), text) ? std::optional(place)
                                                                : std::nullopt;
}

std::size_t ImageNames::bytes() const
{
    return standards_.capacity() * sizeof(quint64) + odds_.bytes() +
           oddPlaces_.capacity() * sizeof(quint32);
}

QByteArray ImageNames::standard(qsizetype index) const
{
    const quint64 value = standards_[static_cast<std::size_t>(index)];
    const QByteArray &suffix = suffixes_[static_cast<qsizetype>(value % kMostSuffixes)];
    return StandardText(value >> kSuffixBits, suffix).view().toByteArray();
}

qsizetype ImageNames::standardsBefore(QByteArrayView text) const
{
    const auto isBefore = [this, text](quint64 value) {
        const QByteArray &suffix = suffixes_[static_cast<qsizetype>(value % kMostSuffixes)];
        return compareNames(StandardText(value >> kSuffixBits, suffix).view(), text) < 0;
    };
    return std::ranges::partition_point(standards_, isBefore) - standards_.begin();
}

qsizetype ImageNames::countBefore(QByteArrayView text) const
{
    const std::vector<ListedName> &odds = odds_.list();
    const auto isBefore = [text](const ListedName &odd) {
        return compareNames(odd.view(), text) < 0;
    };
    return standardsBefore(text) + (std::ranges::partition_point(odds, isBefore) - odds.begin());
}

qsizetype ImageNames::placeOfStandard(qsizetype index) const
{
    const quint32 *const first = oddPlaces_.data();
    const auto isBefore = [first, index](const quint32 &place) {
        return static_cast<qsizetype>(place) - (&place - first) <= index;
    };
    return index + (std::ranges::partition_point(oddPlaces_, isBefore) - oddPlaces_.begin());
}

std::optional<qsizetype> ImageNames::standardBeginningWith(QByteArrayView key) const
{
    const auto end = static_cast<qsizetype>(standards_.size());
    for (qsizetype index = standardsBefore(inCapitals(key)); index < end; ++index) {
        const QByteArray name = standard(index);
        if (name.startsWith(key)) {
            return index;
        }
        if (!nameBeginsWith(name, key)) {
            break;
        }
    }
    return std::nullopt;
}

std::optional<qsizetype> ImageNames::standardContaining(QByteArrayView key) const
{
    const auto contains = [this, key](quint64 value) {
        const QByteArray &suffix = suffixes_[static_cast<qsizetype>(value % kMostSuffixes)];
        return holds(StandardText(value >> kSuffixBits, suffix).view(), key);
    };
    const auto found = std::ranges::find_if(standards_, contains);
    return found == standards_.end() ? std::nullopt : std::optional(found - standards_.begin());
}

std::optional<qsizetype> ImageNames::oddContaining(QByteArrayView key) const
{
    const std::vector<ListedName> &odds = odds_.list();
    const auto found =
        std::ranges::find_if(odds, [key](const ListedName &odd) { return holds(odd.view(), key); });
    if (found == odds.end()) {
        return std::nullopt;
    }
    return oddPlaces_[static_cast<std::size_t>(found - odds.begin())];
}

} // namespace velmora
