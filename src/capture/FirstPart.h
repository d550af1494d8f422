// Extracts the first whole part of an endless answer, as cameras send their pictures one after
// another ("multipart/x-mixed-replace").
#pragma once

#include "capture/ReplyBody.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// Fed with the bytes of the answer in pieces of any size. Accepts a boundary that is announced
/// with dashes or quotes and sent without, or the reverse, or not announced at all; parts with and
/// without a length.
class FirstPart
{
public:
    enum class State {
        Reading,
        Whole,
        Broken // fault() says why
    };

    /// contentType: of the whole answer.
    explicit FirstPart(QByteArrayView contentType);

    /// True for an answer whose parts replace each other.
    [[nodiscard]] static bool isAnnouncedBy(QByteArrayView contentType);

    /// Takes the next bytes; those of the part go to `body`. Throws std::bad_alloc.
    [[nodiscard]] State feed(QByteArrayView bytes, ReplyBody &body);

    /// Of the part, empty when it has none.
    [[nodiscard]] const QString &contentType() const { return contentType_; }

    [[nodiscard]] const QString &fault() const { return fault_; }

private:
    enum class Stage { Preamble, Headers, Body };

    void readLines(ReplyBody &body);
    void readLine(QByteArrayView line);
    void readLength(QByteArrayView text);
    void beginBody();
    void takeCounted(ReplyBody &body);
    void takeUntilBoundary(ReplyBody &body);
    void breakOff(const QString &fault);

    QByteArray boundary_;  // without its dashes; empty while unknown
    qsizetype dashes_ = 0; // least number before a boundary, as before the first one
    QByteArray rest_;      // received, but not consumed yet
    Stage stage_ = Stage::Preamble;
    State state_ = State::Reading;
    std::optional<qint64> length_; // remaining bytes of the part
    qint64 skipped_ = 0;           // bytes before the part
    QString contentType_;
    QString fault_;
};

} // namespace velmora
