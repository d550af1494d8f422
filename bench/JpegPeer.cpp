#include "JpegPeer.h"

#include <QFile>
#include <QImage>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <jpeglib.h>
#include <random>

namespace velmora::bench {
namespace {

constexpr int kQuality = 85;

int pixelValue(double wave, double noise)
{
    return std::clamp(static_cast<int>(128 + 90 * wave + 8 * noise), 0, 255);
}

QImage noisyPicture(QSize size, unsigned seed)
{
    std::mt19937 engine(seed);
    std::normal_distribution<double> noise;
    QImage image(size, QImage::Format_RGB32);
    const double period = size.width() / (12.0 + seed);
    for (int y = 0; y < size.height(); ++y) {
        auto *const row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double grain = noise(engine);
            row[x] = qRgb(pixelValue(std::sin(x / period) * std::cos(y / period), grain),
                          pixelValue(std::sin((x + y) / period), grain),
                          pixelValue(std::cos(y / period), grain));
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

double Contest::median(std::vector<double> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

double Contest::clockMs()
{
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double Contest::processorMs()
{
    timespec time = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace velmora::bench
