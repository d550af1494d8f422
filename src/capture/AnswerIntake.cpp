#include "capture/AnswerIntake.h"

#include <algorithm>
#include <new>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kMaxHeaderBytes = 128LL * 1024; // of an answer and the redirects before it
constexpr int kMaxHeaderLines = 2000;            // each is kept by libcurl
constexpr qsizetype kSmallPieceBytes = 4096;
constexpr qsizetype kGatheredBytes = 16384;

bool beginsWith(QByteArrayView text, QByteArrayView start)
{
    return text.first(std::min(text.size(), start.size())).compare(start, Qt::CaseInsensitive) == 0;
}

// The value in a header of that name; empty for any other header.
QByteArrayView valueIn(QByteArrayView header, QByteArrayView name)
{
    const qsizetype colon = header.indexOf(':');
    const bool isThis =
        colon >= 0 && header.first(colon).trimmed().compare(name, Qt::CaseInsensitive) == 0;
    return isThis ? header.sliced(colon + 1).trimmed() : QByteArrayView();
}

// libcurl would decode codings other than "chunked", to a thousand times the size if a server so
// wishes; one that it misses because it is written oddly would be stored undecoded.
Refusal refusalOfCoding(QByteArrayView header)
{
    constexpr QByteArrayView kName("Transfer-Encoding");
    const QByteArrayView coding = valueIn(header, kName);
    const bool isPlain = header.indexOf(':') == kName.size() && !header.contains('\n');
    const bool isInChunks = coding.compare("chunked", Qt::CaseInsensitive) == 0;
    return coding.isEmpty() || (isInChunks && isPlain) ? Refusal::None : Refusal::Coding;
}

// For libcurl, so it is too with more behind the carriage return.
bool isEndOfHead(QByteArrayView line)
{
    return line.startsWith('\r') || line.startsWith('\n');
}

} // namespace

AnswerIntake::AnswerIntake(ReplyBody body)
    : body_(std::move(body))
{
}

bool AnswerIntake::takeHeaderLine(QByteArrayView line, bool isGood)
{
    try {
        takeLine(line, isGood);
    } catch (const std::bad_alloc &) {
        refusal_ = Refusal::Memory;
    }
    return refusal_ == Refusal::None;
}

bool AnswerIntake::takeBody(QByteArrayView bytes, bool isGood)
{
    try {
        take(bytes, isGood);
    } catch (const std::bad_alloc &) {
        refusal_ = Refusal::Memory;
    }
    return refusal_ == Refusal::None;
}

ReplyBody AnswerIntake::wholeBody()
{
    appendGathered();
    return std::move(body_);
}

// A header may continue on the next line, so each is complete only when another one begins.
void AnswerIntake::takeLine(QByteArrayView line, bool isGood)
{
    headerBytes_ += line.size();
    headerLines_ += 1;
    if (headerBytes_ > kMaxHeaderBytes || headerLines_ > kMaxHeaderLines) {
        refusal_ = Refusal::Headers;
        return;
    }
    const bool goesOn = line.startsWith(' ') || line.startsWith('\t');
    if (!goesOn) {
        takeHeader(std::exchange(header_, {}).trimmed(), isGood);
    }
    header_ += line;
    if (refusal_ == Refusal::None && isEndOfHead(line)) {
        refusal_ = refusalOfHead();
    }
}

void AnswerIntake::takeHeader(QByteArrayView header, bool isGood)
{
    if (beginsWith(header, "HTTP/")) { // a redirect leads to a new answer
        stream_.reset();
        length_.forget();
    }
    refusal_ = refusalOfCoding(header);
    if (refusal_ == Refusal::None) {
        refusal_ = refusalOfLength(header, isGood);
    }
    const QByteArrayView type = valueIn(header, "Content-Type");
    if (FirstPart::isAnnouncedBy(type)) {
        stream_.emplace(type);
    }
}

// Of two lengths, libcurl would take either for the whole. A refusal's own is of no interest.
Refusal AnswerIntake::refusalOfLength(QByteArrayView header, bool isGood)
{
    const QByteArrayView value = valueIn(header, "Content-Length");
    // Room for an ordinary body at once; growing it step by step copies it several times.
    body_.reserve(value.toLongLong());
    return length_.take(value) || !isGood ? Refusal::None : Refusal::Lengths;
}

// A stream may declare any length: its first picture has one of its own.
Refusal AnswerIntake::refusalOfHead() const
{
    return !stream_ && length_.isAbove(kMaxBodyBytes) ? Refusal::TooLong : Refusal::None;
}

// The page that comes with an error status may be endless: it is not read.
void AnswerIntake::take(QByteArrayView bytes, bool isGood)
{
    if (!isGood) {
        refusal_ = Refusal::Status;
    } else if (body_.size() + gathered_.size() + bytes.size() > kMaxBodyBytes) {
        refusal_ = Refusal::TooLong;
    } else if (stream_) {
        refusal_ = refusalOfStream(bytes);
    } else {
        append(bytes);
    }
}

// One picture of a stream is enough; the rest is not waited for.
Refusal AnswerIntake::refusalOfStream(QByteArrayView bytes)
{
    // NOLINTNEXTLINE(bugprone-unchecked-optional-access): asked only of an answer that has one
    switch (stream_->feed(bytes, body_)) {
    case FirstPart::State::Whole:
        return Refusal::Enough;
    case FirstPart::State::Broken:
        return Refusal::Stream;
    case FirstPart::State::Reading:
        break;
    }
    return Refusal::None;
}

// A server may send every byte on its own; each would cost a system call.
void AnswerIntake::append(QByteArrayView bytes)
{
    if (gathered_.isEmpty() && bytes.size() >= kSmallPieceBytes) {
        body_.append(bytes);
        return;
    }
    gathered_.append(bytes);
    if (gathered_.size() >= kGatheredBytes) {
        appendGathered();
    }
}

void AnswerIntake::appendGathered()
{
    body_.append(std::exchange(gathered_, {}));
}

QString refusalText(Refusal refusal)
{
    switch (refusal) {
    case Refusal::TooLong:
        return QStringLiteral("the server sends more than a picture can have");
    case Refusal::Headers:
        return QStringLiteral("the server sends headers without end");
    case Refusal::Coding:
        return QStringLiteral("the server encodes the picture in a way that was not asked for");
    case Refusal::Lengths:
        return QStringLiteral("the server gives two different lengths");
    case Refusal::Memory:
        return QStringLiteral("there is not enough memory for the picture");
    case Refusal::Stream:
    case Refusal::Enough:
    case Refusal::Status:
    case Refusal::None:
        break;
    }
    return {};
}

} // namespace velmora
