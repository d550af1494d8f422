#include "base/AnsiText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace velmora {
namespace {

// Unicode for the bytes 0x80 to 0x9F; every other byte equals its code point.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr char16_t kFirstHighControl = 0x80;
constexpr char16_t kFirstLatin = 0xA0;
constexpr char16_t kLastLatin = 0xFF;

std::optional<char> ansiByte(char16_t unit)
{
    if (unit < kFirstHighControl || (unit >= kFirstLatin && unit <= kLastLatin)) {
        return static_cast<char>(unit);
    }
    const auto *const found = std::ranges::find(kHighControls, unit);
    if (found == kHighControls.end()) {
        return std::nullopt;
    }
    return static_cast<char>(kFirstHighControl + std::distance(kHighControls.begin(), found));
}

} // namespace

QByteArray toAnsi(QStringView text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    std::ranges::transform(text, bytes.begin(),
                           [](QChar c) { return ansiByte(c.unicode()).value_or('?'); });
    return bytes;
}

QString fromAnsi(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::ranges::transform(bytes, text.begin(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        const bool high = code >= kFirstHighControl && code < kFirstLatin;
        return QChar(high ? kHighControls[code - kFirstHighControl] : char16_t{code});
    });
    return text;
}

bool fitsAnsi(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return ansiByte(c.unicode()).has_value(); });
}

} // namespace velmora
