// Names of captured images as numbers: nearly all names in a folder are a date, a time and the
// download's day and hour in digits, followed by a common ending.
#pragma once

#include <QByteArrayView>

#include <optional>

namespace velmora {

/// A name "8 digits _ 10 digits suffix", or of the older form "8 digits _ 6 digits . suffix". The
/// suffix holds no "_". Names with the same suffix sort like their digits' numbers.
struct StandardName
{
    quint64 digits = 0; // below 2^60
    QByteArrayView suffix;
};

/// Nothing for a name of any other form.
[[nodiscard]] std::optional<StandardName> standardName(QByteArrayView name);

inline constexpr qsizetype kLongestDigits = 19;

/// Writes the name's text without its suffix; returns its length, kLongestDigits at most.
qsizetype writeDigits(quint64 digits, char *text);

} // namespace velmora
