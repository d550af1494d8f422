// Fuzzes the decoding of pictures: any file in a camera's folder gives a picture of the requested
// size that can be painted, or none.
#include "Require.h"
#include "pictures/PictureReader.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr QSize kShown(24, 18);

bool fitsInto(QSize size, QSize frame)
{
    return size.width() <= frame.width() && size.height() <= frame.height();
}

QImage decoded(const QByteArray &bytes, const PictureWish &wish)
{
    QImage image = decodePicture(bytes, wish);
    require(image.isNull() || image.format() == QImage::Format_RGB32 ||
                image.format() == QImage::Format_ARGB32_Premultiplied,
            "a picture comes in a form that is painted fast");
    return image;
}

void check(const QByteArray &bytes)
{
    const QSize stretched = decoded(bytes, {kShown, Fit::Stretch}).size();
    require(stretched == kShown || fitsInto(stretched, kShown), "the stretched fill the cell");
    const QSize kept = decoded(bytes, {kShown, Fit::KeepShape}).size();
    require(fitsInto(kept, kShown), "those that keep their shape lie within the cell");
    const QSize least = decoded(bytes, {kShown, Fit::AtLeast}).size();
    require(fitsInto(kept, least), "the painter never has to enlarge");
    // Of a broken JPEG, the two others may read less or more than the stretched one.
    require(kept.isEmpty() == least.isEmpty(), "both come from the same decoding");
}

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler(velmora::fuzz::quiet);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    velmora::fuzz::check(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
