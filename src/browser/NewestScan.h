// Finds the newest day of a folder's images in one pass over its names.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <optional>
#include <utility>

namespace velmora {

/// The day that the first eight characters "yyyyMMdd" of a name tell; nothing when there is no such
/// day.
[[nodiscard]] std::optional<WallTime> dayOfName(QByteArrayView name);

/// "yyyyMMdd".
[[nodiscard]] QByteArray dayText(WallTime day);

/// Keeps the names that have the greatest first eight characters, in byte order.
class NewestScan
{
public:
    /// Of all names "2*.*", whether or not they tell a day.
    NewestScan() = default;

    /// Of those alone that begin with a day of this span, written with all its digits.
    NewestScan(WallTime firstDay, WallTime lastDay);

    void add(QByteArrayView name);

    /// The eight characters, fewer when the greatest name is shorter; empty: there is no name.
    [[nodiscard]] QByteArray greatest() const;

    /// The names, in the order in which they came, each with a NUL behind it.
    [[nodiscard]] QByteArray take() { return std::move(names_); }

private:
    [[nodiscard]] bool counts(quint64 eight) const;

    std::optional<quint64> lastDay_;
    quint64 greatest_ = 0; // eight characters as a number, the first one highest
    QByteArray names_;
};

} // namespace velmora
