#include "browser/NewestScan.h"

#include "base/DateText.h"
#include "base/NameStamp.h"

#include <QString>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr qsizetype kEight = 8;
using Eight = std::array<char, kEight>;

// A number that sorts like the first eight bytes; a shorter name is padded with zeros.
quint64 firstEight(QByteArrayView name)
{
    if (name.size() >= kEight) {
        return qFromBigEndian<quint64>(name.data());
    }
    Eight bytes = {};
    std::ranges::copy(name, bytes.begin());
    return qFromBigEndian<quint64>(bytes.data());
}

QByteArray characters(quint64 eight)
{
    Eight bytes;
    qToBigEndian(eight, bytes.data());
    const auto end = std::ranges::find(bytes, '\0');
    return {bytes.data(), end - bytes.begin()};
}

} // namespace

std::optional<WallTime> looseDayOfName(QByteArrayView name)
{
    const QString text = QString::fromLatin1(name);
    return dateFromText(text.mid(6, 2) + u'/' + text.mid(4, 2) + u'/' + text.left(4));
}

NewestScan::NewestScan(WallTime firstDay, WallTime lastDay)
    : lastDay_(firstEight(dayKey(lastDay)))
    , greatest_(firstEight(dayKey(firstDay)))
{
}

void NewestScan::add(QByteArrayView name)
{
    if (!name.startsWith('2')) {
        return;
    }
    const quint64 eight = firstEight(name);
    if (eight < greatest_ || !counts(eight)) {
        return;
    }
    if (eight > greatest_) {
        greatest_ = eight;
        names_.resize(0); // keeps its memory
    }
    names_.append(name).append('\0');
}

bool NewestScan::counts(quint64 eight) const
{
    if (!lastDay_ || eight == greatest_) {
        return true;
    }
    const std::optional<WallTime> day =
        eight <= *lastDay_ ? looseDayOfName(characters(eight)) : std::nullopt;
    return day && dayKey(*day) == characters(eight);
}

QByteArray NewestScan::greatest() const
{
    return names_.isEmpty() ? QByteArray() : characters(greatest_);
}

} // namespace velmora
