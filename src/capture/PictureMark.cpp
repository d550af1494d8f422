#include "capture/PictureMark.h"

#include "base/WorkSlice.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImage>
#include <QImageReader>

#include <cstdlib>

namespace velmora {
namespace {

constexpr qint64 kPieceBytes = qint64{512} * 1024;
constexpr QSize kLookSize(16, 9);
constexpr QSize kDecodeSize(160, 90); // small enough for the decoder's own reduction
constexpr qint64 kMostPixels = qint64{64} * 1024 * 1024;
constexpr qint64 kMostLookBytes = qint64{16} * 1024 * 1024;
constexpr double kGreyLevels = 255;
constexpr double kPercent = 100;

QByteArray lookOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!size.isValid() || qint64{size.width()} * size.height() > kMostPixels) {
        return {};
    }
    reader.setScaledSize(kDecodeSize);
    const QImage picture = reader.read();
    if (picture.isNull()) {
        return {};
    }
    const QImage small = picture.convertToFormat(QImage::Format_Grayscale8)
                             .scaled(kLookSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_Grayscale8);
    QByteArray grey;
    for (int line = 0; line < small.height(); ++line) {
        grey.append(QByteArrayView(small.constScanLine(line), small.width()));
    }
    return grey.toBase64();
}

} // namespace

QCoro::Task<PictureMark> markOf(const ReplyBody *body, MarkKind kind, Clock *clock)
{
    PictureMark mark;
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    for (qint64 at = 0; at < body->size(); at += kPieceBytes) {
        const std::optional<QByteArray> piece = body->piece(at, kPieceBytes);
        if (!piece) {
            co_return mark;
        }
        hash.addData(*piece);
        if (at + kPieceBytes < body->size()) {
            co_await clock->yield();
        }
    }
    mark.digest = hash.result().toHex();
    if (kind == MarkKind::DigestAndLook && body->size() <= kMostLookBytes) {
        if (const std::optional<QByteArray> whole = body->whole()) {
            mark.look = lookOf(*whole);
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
