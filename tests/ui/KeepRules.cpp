#include "KeepRules.h"

#include <QDate>
#include <QFile>
#include <QImageReader>
#include <QRegularExpression>
#include <QTime>
#include <QtEndian>

#include <algorithm>
#include <bit>

namespace velmora::test {
namespace {

// Digits of the moment: eight of a day, twelve of a minute, fourteen of a second.
QString digitsOf(const QString &typed)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\d)(?:[T ](\\d\\d:\\d\\d)(:\\d\\d)?)?$"));
    const auto match = form.match(typed.trimmed());
    const bool isDay = QDate::fromString(match.captured(1), Qt::ISODate).isValid();
    const QString clock = match.captured(2) + match.captured(3);
    const bool isTime = clock.isEmpty() || QTime::fromString(clock, Qt::ISODate).isValid();
    QString digits = match.captured(1) + clock;
    return match.hasMatch() && isDay && isTime ? digits.remove(u'-').remove(u':') : QString();
}

bool isWithin(int hour, const KeepBoxes &boxes)
{
    int at = boxes.firstHour;
    do {
        if (at == hour) {
            return true;
        }
        at = (at + 1) % 24;
    } while (at != boxes.endHour % 24);
    return false;
}

QStringList thinned(const QStringList &names, const KeepBoxes &boxes)
{
    const qsizetype wanted = qsizetype{boxes.number} * boxes.rate;
    QStringList kept;
    if (boxes.thinning == 1) {
        for (qsizetype at = 0; at < names.size(); at += boxes.number) {
            kept.append(names.at(at));
        }
    } else if (boxes.thinning == 2 && names.size() > wanted) {
        for (qsizetype at = 0; at < wanted; ++at) {
            kept.append(names.at(at * names.size() / wanted));
        }
    } else {
        kept = names;
    }
    return kept;
}

// Each box of a file says its length.
bool isWholeMp4(const QByteArray &bytes)
{
    QByteArray kinds;
    quint64 at = 0;
    const auto all = static_cast<quint64>(bytes.size());
    while (at + 8 <= all) {
        const quint64 length = qFromBigEndian<quint32>(bytes.constData() + at);
        kinds += bytes.mid(static_cast<qsizetype>(at) + 4, 4);
        at += std::max<quint64>(length, 8);
    }
    return at == all && kinds.startsWith("ftyp") && kinds.contains("moov") &&
           kinds.contains("mdat");
}

// An element's length begins with the number of its own bytes: zeros before the first one.
std::pair<qsizetype, quint64> lengthAt(const QByteArray &bytes, qsizetype at)
{
    const auto first = static_cast<quint8>(bytes.at(at));
    const int count = std::countl_zero(first) + 1;
    quint64 length = first & (0xffU >> count);
    for (qsizetype i = at + 1; i < std::min(at + count, bytes.size()); ++i) {
        length = length << 8 | static_cast<quint8>(bytes.at(i));
    }
    return {at + count, length};
}

// A header and one segment, both with four bytes of name.
bool isWholeWebM(const QByteArray &bytes)
{
    if (bytes.size() < 64 || !bytes.startsWith("\x1a\x45\xdf\xa3")) {
        return false;
    }
    const auto [header, headerLength] = lengthAt(bytes, 4);
    const qsizetype next = header + static_cast<qsizetype>(headerLength);
    if (next + 12 > bytes.size() || bytes.mid(next, 4) != "\x18\x53\x80\x67") {
        return false;
    }
    const auto [segment, segmentLength] = lengthAt(bytes, next + 4);
    return segment + static_cast<qsizetype>(segmentLength) == bytes.size();
}

} // namespace

bool areMoments(const KeepBoxes &boxes)
{
    return !digitsOf(boxes.from).isEmpty() && !digitsOf(boxes.to).isEmpty();
}

QStringList picked(const QStringList &names, const KeepBoxes &boxes)
{
    const QString from = digitsOf(boxes.from);
    const QString to = digitsOf(boxes.to);
    QStringList kept;
    for (const QString &name : names) {
        const QString digits = name.left(8) + name.mid(9, 6);
        const bool isInSpan =
            areMoments(boxes) && digits.left(from.size()) >= from && digits.left(to.size()) <= to;
        if (isInSpan && isWithin(name.mid(9, 2).toInt(), boxes)) {
            kept.append(name);
        }
    }
    return thinned(kept, boxes);
}

double lengthOf(qsizetype images, const KeepBoxes &boxes)
{
    const bool isStretched =
        boxes.thinning == 2 && images > 0 && images < qsizetype{boxes.number} * boxes.rate;
    return isStretched ? boxes.number : static_cast<double>(images) / boxes.rate;
}

std::optional<int> picturesOfGif(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    QImageReader reader(path);
    return bytes.startsWith("GIF8") && bytes.endsWith(';') ? std::optional(reader.imageCount())
                                                           : std::nullopt;
}

bool isWholeFilm(const QString &path)
{
    const QString form = path.section(u'.', -1).toLower();
    if (form == u"gif") {
        return picturesOfGif(path).value_or(0) > 0;
    }
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (form == u"webp") {
        return bytes.startsWith("RIFF") && bytes.size() > 8 &&
               qFromLittleEndian<quint32>(bytes.constData() + 4) + 8 ==
                   static_cast<quint32>(bytes.size());
    }
    return (form == u"mp4" && isWholeMp4(bytes)) || (form == u"webm" && isWholeWebM(bytes));
}

std::optional<CopyText> copyText(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d+) images? copied(?:, (\\d+) were there)?"
                       "(?:, (\\d+) deleted meanwhile)?(.*)\\.$"));
    const auto match = form.match(text);
    return match.hasMatch()
               ? std::optional(CopyText{match.captured(1).toInt(), match.captured(2).toInt(),
                                        match.captured(3).toInt(), match.captured(4)})
               : std::nullopt;
}

std::optional<FilmText> filmText(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^The film is ready: (\\d+) images?(?:, (\\d+) left out "
                       "\\((\\d+) not pictures, (\\d+) deleted\\))?\\.$"));
    const auto match = form.match(text);
    const FilmText told{match.captured(1).toInt(), match.captured(3).toInt(),
                        match.captured(4).toInt()};
    const bool isSum = match.captured(2).toInt() == told.broken + told.gone;
    return match.hasMatch() && isSum ? std::optional(told) : std::nullopt;
}

} // namespace velmora::test
