#include "capture/PictureMark.h"

#include "capture/BodyDigest.h"
#include "capture/PictureLook.h"

#include <cstdlib>

namespace velmora {
namespace {

constexpr qint64 kPieceBytes = qint64{512} * 1024;
constexpr qint64 kMostLookBytes = qint64{16} * 1024 * 1024;
constexpr double kGreyLevels = 255;
constexpr double kPercent = 100;

// Nothing when the body cannot be read.
QCoro::Task<QByteArray> digestOf(const ReplyBody *body, Clock *clock)
{
    BodyDigest digest;
    for (qint64 at = 0; at < body->size(); at += kPieceBytes) {
        const std::optional<QByteArray> piece = body->piece(at, kPieceBytes);
        if (!piece) {
            co_return QByteArray();
        }
        digest.add(*piece);
        if (at + kPieceBytes < body->size()) {
            co_await clock->yield();
        }
    }
    co_return digest.text();
}

} // namespace

QCoro::Task<PictureMark> markOf(const ReplyBody *body, MarkKind kind, Clock *clock)
{
    PictureMark mark;
    mark.digest = body->digest();
    if (mark.digest.isEmpty()) {
        mark.digest = co_await digestOf(body, clock);
    }
    if (kind == MarkKind::DigestAndLook && body->size() <= kMostLookBytes) {
        if (const std::optional<QByteArray> whole = body->whole()) {
            mark.look = co_await lookOf(*whole, clock);
        }
    }
    co_return mark;
}

std::optional<double> differencePercent(const PictureMark &a, const PictureMark &b)
{
    const QByteArray first = QByteArray::fromBase64(a.look);
    const QByteArray second = QByteArray::fromBase64(b.look);
    if (first.isEmpty() || first.size() != second.size()) {
        return std::nullopt;
    }
    qint64 sum = 0;
    for (qsizetype i = 0; i < first.size(); ++i) {
        sum +=
            std::abs(static_cast<unsigned char>(first[i]) - static_cast<unsigned char>(second[i]));
    }
    return kPercent * static_cast<double>(sum) / (kGreyLevels * static_cast<double>(first.size()));
}

} // namespace velmora
