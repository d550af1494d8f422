// Finds the newest day of a folder's images in one pass over their names.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <optional>
#include <utility>

namespace velmora {

/// The day in the first eight characters "yyyyMMdd" of a name, where a number may also lack a digit
/// ("200610 5"); nothing when there is no such day.
[[nodiscard]] std::optional<WallTime> looseDayOfName(QByteArrayView name);

/// Keeps the names with the greatest first eight characters, in byte order.
class NewestScan
{
public:
    /// Among all names "2*.*", whether or not they hold a day.
    NewestScan() = default;

    /// Only among those that begin with a day of this span, written with all its digits.
    NewestScan(WallTime firstDay, WallTime lastDay);

    void add(QByteArrayView name);

    /// The eight characters, fewer when the greatest name is shorter; empty when there is no name.
    [[nodiscard]] QByteArray greatest() const;

    /// The names, in order of arrival, each followed by a NUL.
    [[nodiscard]] QByteArray take() { return std::move(names_); }

private:
    [[nodiscard]] bool counts(quint64 eight) const;

    std::optional<quint64> lastDay_;
    quint64 greatest_ = 0; // eight characters as a number, the first one highest
    QByteArray names_;
};

} // namespace velmora
