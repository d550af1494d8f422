#include "pictures/WebpPart.h"

#include <QtEndian>

#include <memory>
#include <webp/decode.h>

namespace velmora {
namespace {

struct DecoderEnd
{
    void operator()(WebPIDecoder *decoder) const { WebPIDelete(decoder); }
};

struct Ground
{
    QImage::Format format;
    Qt::GlobalColor colour;
};

// Both have the byte order requested from the decoder.
Ground groundOf(const WebPBitstreamFeatures &picture)
{
    return picture.has_alpha != 0 ? Ground{QImage::Format_ARGB32_Premultiplied, Qt::transparent}
                                  : Ground{QImage::Format_RGB32, Qt::black};
}

// The length that the file claims; 0 when it is cut off before that.
qint64 wholeLength(const QByteArray &bytes)
{
    constexpr qsizetype kLengthAt = 4;
    constexpr qsizetype kLengthBytes = 4;
    constexpr qsizetype kBegin = kLengthAt + kLengthBytes;
    return bytes.size() < kBegin
               ? 0
               : kBegin + qint64{qFromLittleEndian<quint32>(bytes.constData() + kLengthAt)};
}

void paintInto(QImage &image, WebPDecBuffer &output)
{
    output.colorspace = MODE_bgrA;
    output.is_external_memory = 1;
    output.u.RGBA.rgba = image.bits();
    output.u.RGBA.stride = static_cast<int>(image.bytesPerLine());
    output.u.RGBA.size = static_cast<std::size_t>(image.sizeInBytes());
}

} // namespace

bool isPartOfWebp(const QByteArray &bytes)
{
    return wholeLength(bytes) > bytes.size();
}

QByteArray filledWebp(const QByteArray &bytes)
{
    constexpr qint64 kMostFilling = 16; // a few bytes cannot claim all memory
    const qint64 whole = wholeLength(bytes);
    const bool isFilled = isPartOfWebp(bytes) && whole <= kMostFilling * bytes.size();
    return isFilled ? bytes + QByteArray(whole - bytes.size(), '\0') : bytes;
}

QImage linesOfWebp(const QByteArray &bytes, QSize size)
{
    const auto *const data = reinterpret_cast<const uint8_t *>(bytes.constData());
    const auto length = static_cast<std::size_t>(bytes.size());
    WebPDecoderConfig config;
    if (WebPInitDecoderConfig(&config) == 0 ||
        WebPGetFeatures(data, length, &config.input) != VP8_STATUS_OK ||
        config.input.has_animation != 0 || size != QSize(config.input.width, config.input.height)) {
        return {};
    }
    const Ground ground = groundOf(config.input);
    QImage image(size, ground.format);
    image.fill(ground.colour);
    paintInto(image, config.output);
    const std::unique_ptr<WebPIDecoder, DecoderEnd> decoder(WebPIDecode(nullptr, 0, &config));
    int lines = 0;
    if (decoder) {
        WebPIUpdate(decoder.get(), data, length); // says no more than that it is a part
        WebPIDecGetRGB(decoder.get(), &lines, nullptr, nullptr, nullptr);
    }
    return lines > 0 ? image : QImage();
}

} // namespace velmora
