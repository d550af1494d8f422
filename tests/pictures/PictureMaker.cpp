#include "PictureMaker.h"

#include <QBuffer>
#include <QColor>
#include <QImageWriter>
#include <QtEndian>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <stdexcept>
#include <vector>

namespace velmora::test {
namespace {

Qt::GlobalColor nearestCorner(QRgb pixel)
{
    const auto distance = [pixel](Qt::GlobalColor colour) {
        const QRgb other = QColor(colour).rgb();
        return std::abs(qRed(pixel) - qRed(other)) + std::abs(qGreen(pixel) - qGreen(other)) +
               std::abs(qBlue(pixel) - qBlue(other));
    };
    return *std::min_element(
        kCorners.begin(), kCorners.end(),
        [&](Qt::GlobalColor a, Qt::GlobalColor b) { return distance(a) < distance(b); });
}

quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
        }
    }
    return ~sum;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

// Start of the frame, baseline or progressive.
qsizetype jpegFrame(const QByteArray &jpeg)
{
    const qsizetype baseline = jpeg.indexOf("\xFF\xC0");
    return baseline >= 0 ? baseline : jpeg.indexOf("\xFF\xC2");
}

// Adobe's inks are stored inverted: 255 is none.
std::vector<JSAMPLE> inkLine(const QImage &image, int y)
{
    std::vector<JSAMPLE> line;
    for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        line.insert(line.end(),
                    {static_cast<JSAMPLE>(qRed(pixel)), static_cast<JSAMPLE>(qGreen(pixel)),
                     static_cast<JSAMPLE>(qBlue(pixel)), 255});
    }
    return line;
}

} // namespace

QImage quarters(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const std::size_t corner =
                (x >= size.width() / 2 ? 1U : 0U) + (y >= size.height() / 2 ? 2U : 0U);
            image.setPixelColor(x, y, kCorners.at(corner));
        }
    }
    return image;
}

Corners cornersOf(const QImage &image)
{
    const int left = image.width() / 4;
    const int right = image.width() * 3 / 4;
    const int top = image.height() / 4;
    const int bottom = image.height() * 3 / 4;
    return {nearestCorner(image.pixel(left, top)), nearestCorner(image.pixel(right, top)),
            nearestCorner(image.pixel(left, bottom)), nearestCorner(image.pixel(right, bottom))};
}

QByteArray encoded(const QImage &image, const char *format, Progressive progressive)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive == Progressive::Yes);
    if (!writer.write(image)) {
        throw std::runtime_error("no encoder for this format");
    }
    return buffer.data();
}

QByteArray cmykJpeg(QSize size)
{
    const QImage image = quarters(size);
    jpeg_compress_struct info = {};
    jpeg_error_mgr errors = {};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char *bytes = nullptr;
    unsigned long count = 0;
    jpeg_mem_dest(&info, &bytes, &count);
    info.image_width = static_cast<JDIMENSION>(size.width());
    info.image_height = static_cast<JDIMENSION>(size.height());
    info.input_components = 4;
    info.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&info);
    jpeg_start_compress(&info, TRUE);
    for (int y = 0; y < size.height(); ++y) {
        std::vector<JSAMPLE> line = inkLine(image, y);
        JSAMPROW row = line.data();
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    const QByteArray jpeg(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(count));
    std::free(bytes);
    return jpeg;
}

QByteArray animatedGif()
{
    const QByteArray colours = QByteArray::fromHex("000000"
                                                   "FF0000"
                                                   "00FF00"
                                                   "FFFFFF");
    const QByteArray loop =
        QByteArray::fromHex("21FF0B") + "NETSCAPE2.0" + QByteArray::fromHex("0301000000");
    const QByteArray control = QByteArray::fromHex("21F904040A000000");
    const QByteArray place = QByteArray::fromHex("2C00000000010001000002");
    const QByteArray red = QByteArray::fromHex("024C0100");
    const QByteArray green = QByteArray::fromHex("02540100");
    return QByteArray("GIF89a") + QByteArray::fromHex("01000100810000") + colours + loop + control +
           place + red + control + place + green + QByteArray::fromHex("3B");
}

QByteArray smallFrameGif()
{
    const QByteArray colours = QByteArray::fromHex("000000"
                                                   "FF0000"
                                                   "00FF00"
                                                   "0000FF");
    const QByteArray place = QByteArray::fromHex("2C0200010003000200"
                                                 "00");
    const QByteArray red = QByteArray::fromHex("02050CC3300C5300");
    return QByteArray("GIF89a") + QByteArray::fromHex("08000600810300") + colours + place + red +
           QByteArray::fromHex("3B");
}

namespace {

template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

struct BmpHead
{
    quint32 bytes = 40;
    QSize size;
    quint16 bits = 24;
    quint32 coding = 0;
    quint32 colours = 0;
};

QByteArray bmpWith(const BmpHead &head, const QByteArray &palette, const QByteArray &pixels)
{
    const QByteArray info = littleEndian(head.bytes) + littleEndian(head.size.width()) +
                            littleEndian(head.size.height()) + littleEndian(quint16{1}) +
                            littleEndian(head.bits) + littleEndian(head.coding) +
                            littleEndian(static_cast<quint32>(pixels.size())) + QByteArray(8, 0) +
                            littleEndian(head.colours) + QByteArray(4, 0) +
                            QByteArray(head.bytes - 40, 0);
    const auto start = static_cast<quint32>(14 + info.size() + palette.size());
    return "BM" + littleEndian(static_cast<quint32>(start + pixels.size())) + QByteArray(4, 0) +
           littleEndian(start) + info + palette + pixels;
}

// For widths that need no padding.
QByteArray bmpLine(const QImage &image, int y)
{
    QByteArray line;
    for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        line += static_cast<char>(qBlue(pixel));
        line += static_cast<char>(qGreen(pixel));
        line += static_cast<char>(qRed(pixel));
    }
    return line;
}

QByteArray runsOf(const QImage &image, int y)
{
    constexpr int kLongestRun = 255;
    QByteArray runs;
    for (int x = 0; x < image.width();) {
        const int colour = image.pixelIndex(x, y);
        const int begin = x;
        while (x < image.width() && x - begin < kLongestRun && image.pixelIndex(x, y) == colour) {
            ++x;
        }
        runs += static_cast<char>(x - begin);
        runs += static_cast<char>(colour);
    }
    return runs + QByteArray(2, 0);
}

} // namespace

QByteArray bmpFromTheTop(const QImage &image)
{
    QByteArray pixels;
    for (int y = 0; y < image.height(); ++y) {
        pixels += bmpLine(image, y);
    }
    return bmpWith({.size = {image.width(), -image.height()}}, {}, pixels);
}

QByteArray bmpWithHead(const QImage &image, quint32 headBytes)
{
    QByteArray pixels;
    for (int y = image.height() - 1; y >= 0; --y) {
        pixels += bmpLine(image, y);
    }
    return bmpWith({.bytes = headBytes, .size = image.size()}, {}, pixels);
}

QByteArray runLengthBmp(const QImage &image)
{
    const QImage indexed = image.convertToFormat(QImage::Format_Indexed8);
    QByteArray palette;
    for (const QRgb colour : indexed.colorTable()) {
        palette += littleEndian(quint32{colour & 0xFFFFFF});
    }
    QByteArray pixels;
    for (int y = indexed.height() - 1; y >= 0; --y) {
        pixels += runsOf(indexed, y);
    }
    pixels += QByteArray("\0\1", 2);
    return bmpWith({.size = image.size(),
                    .bits = 8,
                    .coding = 1,
                    .colours = static_cast<quint32>(indexed.colorCount())},
                   palette, pixels);
}

QByteArray withOrientation(const QByteArray &jpeg, int orientation)
{
    const QByteArray directory = QByteArray::fromHex("4D4D002A00000008"
                                                     "0001"
                                                     "0112000300000001") +
                                 QByteArray(1, '\0') + static_cast<char>(orientation) +
                                 QByteArray(6, '\0');
    const QByteArray body = QByteArray("Exif\0\0", 6) + directory;
    const auto length = static_cast<char>(body.size() + 2);
    return jpeg.first(2) + QByteArray("\xFF\xE1\0", 3) + length + body + jpeg.sliced(2);
}

QByteArray claiming(QByteArray picture, QSize size)
{
    if (picture.startsWith("\x89PNG")) {
        const QByteArray body = bigEndian(static_cast<quint32>(size.width())) +
                                bigEndian(static_cast<quint32>(size.height())) +
                                picture.sliced(24, 5);
        return picture.first(8) + pngChunk("IHDR", body) + picture.sliced(33);
    }
    char *const frame = picture.data() + jpegFrame(picture) + 5; // marker, length, bits
    qToBigEndian(static_cast<quint16>(size.height()), frame);
    qToBigEndian(static_cast<quint16>(size.width()), frame + 2);
    return picture;
}

QByteArray pngInPasses(const QImage &image)
{
    struct Pass
    {
        int x, y, across, down;
    };

    constexpr Pass kPasses[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    QByteArray lines;
    for (const Pass &pass : kPasses) {
        for (int y = pass.y; y < image.height(); y += pass.down) {
            lines.append('\0'); // no filter
            for (int x = pass.x; x < image.width(); x += pass.across) {
                const QRgb point = image.pixel(x, y);
                lines.append(static_cast<char>(qRed(point)));
                lines.append(static_cast<char>(qGreen(point)));
                lines.append(static_cast<char>(qBlue(point)));
            }
        }
    }
    const QByteArray head = bigEndian(static_cast<quint32>(image.width())) +
                            bigEndian(static_cast<quint32>(image.height())) +
                            QByteArray::fromHex("0802000001");
    constexpr qsizetype kLengthBytes = 4; // in front of what the toolkit packs
    return QByteArray::fromHex("89504E470D0A1A0A") + pngChunk("IHDR", head) +
           pngChunk("IDAT", qCompress(lines).sliced(kLengthBytes)) + pngChunk("IEND", {});
}

QByteArray pngChunk(QByteArrayView name, const QByteArray &body)
{
    const QByteArray named = name.toByteArray() + body;
    return bigEndian(static_cast<quint32>(body.size())) + named + bigEndian(checksum(named));
}

} // namespace velmora::test
