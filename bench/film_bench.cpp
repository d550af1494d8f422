// A film of 2 megapixel images painted at 1280 x 960, compared with the JPEG library's plain
// decoding of the same files in the same run.
//   film_bench RUNS
#include "JpegPeer.h"
#include "base/KeptMemory.h"
#include "pictures/PictureReader.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr QSize kStored(1600, 1200);
constexpr QSize kShown(1280, 960);
constexpr int kFrames = 4;      // shown in turn
constexpr double kLimit = 1.15; // of the library's time

enum Kind : std::size_t { Smooth, Plain, PeerRgb, PeerBgrx, Kinds };

int play(const QString &path, QImage &screen, bool isSmooth)
{
    const QImage frame = readPicture(path, {kShown, Fit::AtLeast});
    QPainter painter(&screen);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, isSmooth);
    painter.drawImage(screen.rect(), frame);
    return frame.height();
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QGuiApplication application(argc, argv);
    const int runs = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 50;
    const JpegFolder folder(kStored, kFrames);
    QImage screen(kShown, QImage::Format_RGB32);
    Contest contest(Kinds);
    int rows = play(folder.paths().first(), screen, true); // loads the decoder
    for (int i = 0; i < runs * kFrames; ++i) {
        const QString &path = folder.paths().at(i % kFrames);
        contest.run(Smooth, [&] { rows += play(path, screen, true); });
        contest.run(Plain, [&] { rows += play(path, screen, false); });
        contest.run(PeerRgb, [&] { rows += decodeWithLibrary(path, {}, PeerPixels::Rgb); });
        contest.run(PeerBgrx, [&] { rows += decodeWithLibrary(path, {}, PeerPixels::Bgrx); });
    }
    const double peer = std::min(contest.medianMs(PeerRgb), contest.medianMs(PeerBgrx));
    const double peerProcessor =
        std::min(contest.medianProcessorMs(PeerRgb), contest.medianProcessorMs(PeerBgrx));
    Report(QStringLiteral("film_frame"))
        .add(QStringLiteral("library_ms"), peer)
        .add(QStringLiteral("plain_ms"), contest.medianMs(Plain))
        .limited(QStringLiteral("plain_ratio"), contest.medianMs(Plain) / peer, kLimit)
        .add(QStringLiteral("plain_processor_ratio"),
             contest.medianProcessorMs(Plain) / peerProcessor)
        .add(QStringLiteral("smooth_ms"), contest.medianMs(Smooth))
        .add(QStringLiteral("smooth_ratio"), contest.medianMs(Smooth) / peer)
        .add(QStringLiteral("smooth_processor_ratio"),
             contest.medianProcessorMs(Smooth) / peerProcessor)
        .add(QStringLiteral("rows"), rows)
        .print();
    return 0;
}
