#include "JpegPeer.h"

#include <QFile>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <jpeglib.h>
#include <random>

namespace velmora::bench {
namespace {

constexpr int kQuality = 85;

int channel(double wave, double grain)
{
    return std::clamp(static_cast<int>(128 + 90 * wave + grain), 0, 255);
}

// Drawn once: the benchmarks also run in builds in which each number would be expensive.
std::vector<double> noiseTable(std::mt19937 &engine)
{
    std::normal_distribution<double> noise(0, 8);
    std::vector<double> table(4096);
    std::generate(table.begin(), table.end(), [&] { return noise(engine); });
    return table;
}

std::vector<double> waveTable(int size, double period)
{
    std::vector<double> table;
    for (int i = 0; i < size; ++i) {
        table.push_back(std::sin(i / period));
    }
    return table;
}

QImage noisyPicture(QSize size, unsigned seed)
{
    std::mt19937 engine(seed);
    const std::vector<double> noise = noiseTable(engine);
    const std::vector<double> wave =
        waveTable(size.width() + size.height(), size.width() / (12.0 + seed));
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y));
        const double *const slanted = wave.data() + y;
        for (int x = 0; x < size.width(); ++x) {
            const double grain = noise[engine() % 4096];
            line[x] = qRgb(channel(wave.data()[x] * slanted[0], grain), channel(slanted[x], grain),
                           channel(slanted[0], grain));
        }
    }
    return image;
}

unsigned bestEighths(const jpeg_decompress_struct &info, QSize least)
{
    if (least.isEmpty()) {
        return 8;
    }
    unsigned eighths = 1;
    while (eighths < 8 &&
           (info.image_width * eighths < static_cast<unsigned>(least.width()) * 8 ||
            info.image_height * eighths < static_cast<unsigned>(least.height()) * 8)) {
        ++eighths;
    }
    return eighths;
}

int readRows(jpeg_decompress_struct &info)
{
    std::vector<JSAMPLE> row(std::size_t{info.output_width} *
                             static_cast<std::size_t>(info.output_components));
    JSAMPROW rows = row.data();
    while (info.output_scanline < info.output_height) {
        jpeg_read_scanlines(&info, &rows, 1);
    }
    return static_cast<int>(info.output_height);
}

} // namespace

JpegFolder::JpegFolder(QSize size, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString path = folder_.filePath(QStringLiteral("%1.jpg").arg(i));
        noisyPicture(size, static_cast<unsigned>(i)).save(path, "jpg", kQuality);
        paths_.append(path);
    }
}

int decodeWithLibrary(const QString &path, QSize least, PeerPixels pixels)
{
    QFile file(path);
    static_cast<void>(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    jpeg_decompress_struct info = {};
    jpeg_error_mgr errors = {};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char *>(bytes.constData()),
                 static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&info, TRUE);
    info.scale_num = bestEighths(info, least);
    info.scale_denom = 8;
    info.out_color_space = pixels == PeerPixels::Rgb ? JCS_RGB : JCS_EXT_BGRX;
    jpeg_start_decompress(&info);
    const int rows = readRows(info);
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    return rows;
}

} // namespace velmora::bench
