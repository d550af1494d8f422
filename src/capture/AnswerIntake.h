// The answer to a request for a picture as it arrives, and what makes it not worth reading on:
// whatever a server sends is bounded in memory and time.
#pragma once

#include "capture/DeclaredLength.h"
#include "capture/FirstPart.h"
#include "capture/ReplyBody.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace velmora {

/// Why reading was ended from this side; Enough: a stream's first picture is whole.
enum class Refusal { None, Status, TooLong, Headers, Coding, Lengths, Memory, Stream, Enough };

/// Takes the lines of the head and the bytes of the body in order, those of answers that redirect
/// included. Never throws.
class AnswerIntake
{
public:
    static constexpr qint64 kMaxBodyBytes = 64LL * 1024 * 1024;

    /// body: empty, to be filled.
    explicit AnswerIntake(ReplyBody body);

    /// Takes a line of the head with its line end. isGood: the status is one from 200 to 299. False
    /// when the transfer is to end.
    [[nodiscard]] bool takeHeaderLine(QByteArrayView line, bool isGood);

    /// Takes the next bytes of the body, like takeHeaderLine().
    [[nodiscard]] bool takeBody(QByteArrayView bytes, bool isGood);

    [[nodiscard]] Refusal refusal() const { return refusal_; }

    /// Of an answer that is a stream of pictures, what has been read of its first; otherwise
    /// nothing.
    [[nodiscard]] const std::optional<FirstPart> &stream() const { return stream_; }

    /// The whole body, once. Throws std::bad_alloc.
    [[nodiscard]] ReplyBody wholeBody();

private:
    [[nodiscard]] Refusal refusalOfStream(QByteArrayView bytes);
    [[nodiscard]] Refusal refusalOfLength(QByteArrayView header, bool isGood);
    [[nodiscard]] Refusal refusalOfHead() const;
    void takeLine(QByteArrayView line, bool isGood);
    void takeHeader(QByteArrayView header, bool isGood);
    void take(QByteArrayView bytes, bool isGood);
    void append(QByteArrayView bytes);
    void appendGathered();

    ReplyBody body_;
    QByteArray gathered_; // of a body that arrives in small pieces, not yet appended
    QByteArray header_;   // as far as it has arrived, possibly in several lines
    DeclaredLength length_;
    std::optional<FirstPart> stream_;
    qint64 headerBytes_ = 0;
    int headerLines_ = 0;
    Refusal refusal_ = Refusal::None;
};

/// Why the picture was refused, for the user; empty for those that the answer itself explains.
[[nodiscard]] QString refusalText(Refusal refusal);

} // namespace velmora
