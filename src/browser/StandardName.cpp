#include "browser/StandardName.h"

#include "base/Digits.h"
#include "base/NameStamp.h"

#include <QtEndian>

#include <cstring>

namespace velmora {
namespace {

constexpr qsizetype kOlderLength = kMomentLength;
constexpr quint64 kTimes = 1'000'000;  // of a day
constexpr quint64 kDownloads = 10'001; // of a time: none, or four digits
constexpr quint64 kHundred = 100;
constexpr quint64 kTen = 10;

constexpr quint64 kZeros = 0x3030'3030'3030'3030;
constexpr quint64 kUpperHalves = 0xF0F0'F0F0'F0F0'F0F0;
constexpr quint64 kSixes = 0x0606'0606'0606'0606;

// Eight characters as one number, the first lowest.
quint64 eightBytes(const char *text)
{
    return qFromLittleEndian<quint64>(text);
}

bool areEightDigits(quint64 eight)
{
    return ((eight & kUpperHalves) ^ kZeros) == 0 &&
           (((eight + kSixes) & kUpperHalves) ^ kZeros) == 0;
}

// Eight digits at once: pairs, then fours, then all, each by one multiplication.
quint64 number(quint64 eight)
{
    eight -= kZeros;
    eight = (eight * 10) + (eight >> 8);
    constexpr quint64 kMask = 0x0000'00FF'0000'00FF;
    constexpr quint64 kOuter = 100 + (1'000'000ULL << 32);
    constexpr quint64 kInner = 1 + (10'000ULL << 32);
    return ((((eight & kMask) * kOuter) + (((eight >> 16) & kMask) * kInner)) >> 32) & 0xFFFF'FFFF;
}

quint64 digit(char c)
{
    return static_cast<quint64>(c - '0');
}

bool hasUnderscore(QByteArrayView text)
{
    return std::memchr(text.data(), '_', static_cast<std::size_t>(text.size())) != nullptr;
}

// name: of at least kLongestDigits characters, with a valid day and "_".
std::optional<quint64> currentForm(QByteArrayView name, quint64 day)
{
    const quint64 middle = eightBytes(name.data() + kDayLength + 1);
    const char tens = name[kLongestDigits - 2];
    const char ones = name[kLongestDigits - 1];
    if (!areEightDigits(middle) || !isDigit(tens) || !isDigit(ones)) {
        return std::nullopt;
    }
    const quint64 timeAndDay = number(middle);
    const quint64 download = (timeAndDay % kHundred) * kHundred + digit(tens) * kTen + digit(ones);
    return (day * kTimes + timeAndDay / kHundred) * kDownloads + download + 1;
}

// name: of more than kOlderLength characters, with a valid day and "_".
std::optional<quint64> olderForm(QByteArrayView name, quint64 day)
{
    constexpr quint64 kTwoZeros = 0x3030;
    constexpr quint64 kTwoBytes = 0xFFFF;
    // Two characters before the time are included and count as zeros.
    const quint64 time = (eightBytes(name.data() + kDayLength - 1) & ~kTwoBytes) | kTwoZeros;
    if (name[kOlderLength] != '.' || !areEightDigits(time)) {
        return std::nullopt;
    }
    return (day * kTimes + number(time)) * kDownloads;
}

void writeNumber(quint64 value, char *text, qsizetype digits)
{
    for (qsizetype i = digits - 1; i >= 0; --i) {
        text[i] = static_cast<char>('0' + value % kTen);
        value /= kTen;
    }
}

} // namespace

std::optional<StandardName> standardName(QByteArrayView name)
{
    if (name.size() <= kOlderLength || name[kDayLength] != '_') {
        return std::nullopt;
    }
    const quint64 day = eightBytes(name.data());
    if (!areEightDigits(day)) {
        return std::nullopt;
    }
    const bool current = name.size() >= kLongestDigits && name[kOlderLength] != '.';
    const std::optional<quint64> digits =
        current ? currentForm(name, number(day)) : olderForm(name, number(day));
    const QByteArrayView suffix = name.sliced(current ? kLongestDigits : kOlderLength);
    return digits && !hasUnderscore(suffix) ? std::optional(StandardName{*digits, suffix})
                                            : std::nullopt;
}

qsizetype writeDigits(quint64 digits, char *text)
{
    const quint64 download = digits % kDownloads;
    const quint64 time = digits / kDownloads;
    writeNumber(time / kTimes, text, kDayLength);
    text[kDayLength] = '_';
    writeNumber(time % kTimes, text + kDayLength + 1, kOlderLength - kDayLength - 1);
    if (download == 0) {
        return kOlderLength;
    }
    writeNumber(download - 1, text + kOlderLength, kLongestDigits - kOlderLength);
    return kLongestDigits;
}

} // namespace velmora
