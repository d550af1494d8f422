#include "base/LeadingNumber.h"

#include <QByteArray>

#include <charconv>
#include <limits>
#include <system_error>

namespace velmora {
namespace {

bool isSkipped(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n';
}

// Everything that can be part of a number; the parser below finds where it ends.
bool mayStandInNumber(QChar c)
{
    return (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.' || c == u'e' ||
           c == u'E';
}

QByteArray numberCharacters(QStringView text)
{
    QByteArray characters;
    for (const QChar c : text) {
        if (isSkipped(c)) {
            continue;
        }
        if (!mayStandInNumber(c)) {
            break;
        }
        characters.append(static_cast<char>(c.unicode()));
    }
    return characters;
}

} // namespace

double leadingNumber(QStringView text)
{
    const QByteArray characters = numberCharacters(text);
    const char *first = characters.constBegin();
    const char *const last = characters.constEnd();
    const bool negative = first != last && *first == '-';
    if (first != last && (*first == '-' || *first == '+')) {
        ++first;
    }
    if (first != last && *first == '-') {
        return 0; // from_chars would take a second sign
    }
    double magnitude = 0;
    const std::from_chars_result parsed = std::from_chars(first, last, magnitude);
    if (parsed.ec == std::errc::result_out_of_range) {
        const bool tooSmall = QByteArrayView(first, parsed.ptr).contains('-'); // in its exponent
        magnitude = tooSmall ? 0 : std::numeric_limits<double>::infinity();
    }
    return negative && magnitude != 0 ? -magnitude : magnitude;
}

} // namespace velmora
