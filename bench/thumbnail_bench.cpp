// Ten thumbnails of 240 x 180 pixels from stored images of three sizes, compared with the JPEG
// library's own reduced decoding of the same files in the same run.
//   thumbnail_bench RUNS
#include "JpegPeer.h"
#include "base/KeptMemory.h"
#include "pictures/PictureReader.h"

#include <QCoreApplication>
#include <QTextStream>

#include <algorithm>
#include <array>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr QSize kShown(240, 180);
constexpr int kThumbnails = 10;
constexpr int kFiles = 4; // shown in turn
constexpr std::array kSizes = {QSize(640, 480), QSize(1600, 1200), QSize(4000, 3000)};

enum Kind : std::size_t { Ours, PeerRgb, PeerBgrx, Kinds };

// The sum of rows keeps the compiler from dropping the work.
QString measure(QSize size, int runs)
{
    const JpegFolder folder(size, kFiles);
    Contest contest(Kinds);
    int rows = readPicture(folder.paths().first(), {}).height(); // loads the decoder
    for (int i = 0; i < runs * kThumbnails; ++i) {
        const QString &path = folder.paths().at(i % kFiles);
        contest.run(Ours, [&] { rows += readPicture(path, {kShown, Fit::Stretch}).height(); });
        contest.run(PeerRgb, [&] { rows += decodeWithLibrary(path, kShown, PeerPixels::Rgb); });
        contest.run(PeerBgrx, [&] { rows += decodeWithLibrary(path, kShown, PeerPixels::Bgrx); });
    }
    const double ours = contest.medianMs(Ours) * kThumbnails;
    const double peer =
        std::min(contest.medianMs(PeerRgb), contest.medianMs(PeerBgrx)) * kThumbnails;
    const double peerProcessor =
        std::min(contest.medianProcessorMs(PeerRgb), contest.medianProcessorMs(PeerBgrx));
    return QStringLiteral("{\"pixels\":\"%1x%2\",\"ms\":%3,\"library_ms\":%4,\"ratio\":%5,"
                          "\"processor_ratio\":%6,\"rows\":%7}")
        .arg(size.width())
        .arg(size.height())
        .arg(ours, 0, 'f', 2)
        .arg(peer, 0, 'f', 2)
        .arg(ours / peer, 0, 'f', 3)
        .arg(contest.medianProcessorMs(Ours) / peerProcessor, 0, 'f', 3)
        .arg(rows);
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QCoreApplication application(argc, argv);
    const int runs = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 50;
    QStringList results;
    for (const QSize size : kSizes) {
        results.append(measure(size, runs));
    }
    QTextStream(stdout) << "{\"bench\":\"ten_thumbnails\",\"limit_ratio\":1.08,\"results\":["
                        << results.join(QLatin1Char(',')) << "]}\n";
    return 0;
}
