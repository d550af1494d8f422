#include "capture/FirstPart.h"

#include "capture/PictureRemark.h"

namespace velmora {
namespace {

constexpr qint64 kMostBefore = qint64{64} * 1024; // the part's preamble and headers together
constexpr qint64 kMostPart = qint64{64} * 1024 * 1024;
constexpr qsizetype kMostBoundary = 256;
constexpr qsizetype kUsualDashes = 2;

QByteArrayView withoutDashes(QByteArrayView text)
{
    while (text.startsWith('-')) {
        text = text.sliced(1);
    }
    return text;
}

QByteArrayView withoutQuotes(QByteArrayView text)
{
    return text.size() > 1 && text.startsWith('"') && text.endsWith('"')
               ? text.sliced(1, text.size() - 2)
               : text;
}

QByteArray announcedBoundary(QByteArrayView contentType)
{
    const QByteArray lower = contentType.toByteArray().toLower();
    const qsizetype found = lower.indexOf("boundary=");
    if (found < 0) {
        return {};
    }
    QByteArrayView value = contentType.sliced(found + 9).trimmed();
    const qsizetype end = value.startsWith('"') ? -1 : value.indexOf(';');
    value = end < 0 ? value : value.first(end);
    if (value.startsWith('"')) {
        const qsizetype quote = value.indexOf('"', 1);
        value = quote < 0 ? value.sliced(1) : value.first(quote + 1);
    }
    return withoutDashes(withoutQuotes(value.trimmed())).toByteArray();
}

QByteArrayView headerValue(QByteArrayView line, QByteArrayView name)
{
    const bool isThis = line.size() > name.size() && line[name.size()] == ':' &&
                        line.first(name.size()).compare(name, Qt::CaseInsensitive) == 0;
    return isThis ? line.sliced(name.size() + 1).trimmed() : QByteArrayView();
}

// Start of the line end before the delimiter whose boundary was found at `found`; -1 when it only
// looked like one. leastDashes: before the boundary.
qsizetype endOfPart(QByteArrayView bytes, qsizetype found, qsizetype leastDashes)
{
    qsizetype at = found;
    while (at > 0 && bytes[at - 1] == '-') {
        --at;
    }
    if (found - at < leastDashes || at == 0 || bytes[at - 1] != '\n') {
        return -1;
    }
    --at;
    return at > 0 && bytes[at - 1] == '\r' ? at - 1 : at;
}

} // namespace

FirstPart::FirstPart(QByteArrayView contentType)
    : boundary_(announcedBoundary(contentType))
{
    if (boundary_.size() > kMostBoundary) {
        breakOff(QStringLiteral("the stream announces no usable boundary"));
    }
}

bool FirstPart::isAnnouncedBy(QByteArrayView contentType)
{
    constexpr QByteArrayView kStream("multipart/x-mixed-replace");
    const QByteArrayView type = contentType.trimmed();
    return type.size() >= kStream.size() &&
           type.first(kStream.size()).compare(kStream, Qt::CaseInsensitive) == 0;
}

void FirstPart::breakOff(const QString &fault)
{
    state_ = State::Broken;
    fault_ = fault;
    rest_.clear();
}

FirstPart::State FirstPart::feed(QByteArrayView bytes, ReplyBody &body)
{
    if (state_ != State::Reading) {
        return state_;
    }
    rest_.append(bytes);
    if (stage_ != Stage::Body) {
        readLines(body);
    } else if (length_) {
        takeCounted(body);
    } else {
        takeUntilBoundary(body);
    }
    return state_;
}

void FirstPart::readLines(ReplyBody &body)
{
    qsizetype at = 0;
    while (state_ == State::Reading && stage_ != Stage::Body) {
        const qsizetype end = rest_.indexOf('\n', at);
        if (end < 0) {
            break;
        }
        const QByteArray line = rest_.sliced(at, end - at);
        at = end + 1;
        readLine(QByteArrayView(line).trimmed());
    }
    skipped_ += at;
    rest_.remove(0, qMin(at, rest_.size()));
    if (state_ == State::Broken) {
        return;
    }
    if (stage_ != Stage::Body) {
        if (skipped_ + rest_.size() > kMostBefore) {
            breakOff(QStringLiteral("the stream does not come to a picture"));
        }
        return;
    }
    beginBody();
    if (state_ == State::Reading) {
        static_cast<void>(feed({}, body)); // the caller returns the state
    }
}

void FirstPart::readLine(QByteArrayView line)
{
    if (stage_ == Stage::Preamble) {
        const QByteArrayView core = withoutDashes(line);
        const bool isDelimiter = boundary_.isEmpty() ? line.startsWith("--") : core == boundary_;
        if (isDelimiter) {
            dashes_ = qMin(line.size() - core.size(), kUsualDashes);
            boundary_ = boundary_.isEmpty() ? core.toByteArray() : boundary_;
            stage_ = Stage::Headers;
        }
        return;
    }
    if (line.isEmpty()) {
        stage_ = Stage::Body;
        return;
    }
    if (const QByteArrayView type = headerValue(line, "Content-Type"); !type.isEmpty()) {
        contentType_ = QString::fromLatin1(type);
    }
    if (const QByteArrayView length = headerValue(line, "Content-Length"); !length.isEmpty()) {
        readLength(length);
    }
}

// What is no number leaves the end of the picture to the boundary.
void FirstPart::readLength(QByteArrayView text)
{
    bool isNumber = false;
    const qint64 bytes = text.toLongLong(&isNumber);
    if (!isNumber || bytes < 0) {
        return;
    }
    if (length_.value_or(bytes) != bytes) {
        breakOff(QStringLiteral("the stream gives two different lengths of its picture"));
    }
    length_ = bytes;
}

void FirstPart::beginBody()
{
    if (length_.value_or(0) > kMostPart) {
        breakOff(endlessPictureRemark());
    } else if (!length_ && boundary_.isEmpty()) {
        breakOff(QStringLiteral("the stream tells neither length nor boundary of its pictures"));
    }
}

void FirstPart::takeCounted(ReplyBody &body)
{
    const qint64 left = length_.value_or(0);
    const qint64 taken = qMin<qint64>(left, rest_.size());
    body.append(QByteArrayView(rest_).first(taken));
    length_ = left - taken;
    rest_.clear();
    if (*length_ == 0) {
        state_ = State::Whole;
    }
}

// What may be the start of a delimiter is held back until more arrives.
void FirstPart::takeUntilBoundary(ReplyBody &body)
{
    for (qsizetype found = rest_.indexOf(boundary_); found >= 0;
         found = rest_.indexOf(boundary_, found + 1)) {
        const qsizetype end = endOfPart(rest_, found, dashes_);
        if (end >= 0) {
            body.append(QByteArrayView(rest_).first(end));
            rest_.clear();
            state_ = State::Whole;
            return;
        }
    }
    const qsizetype kept = boundary_.size() + kMostBoundary; // including line end and dashes
    const qsizetype taken = rest_.size() - kept;
    if (taken > 0) {
        body.append(QByteArrayView(rest_).first(taken));
        rest_.remove(0, taken);
    }
    if (body.size() > kMostPart) {
        breakOff(endlessPictureRemark());
    }
}

} // namespace velmora
