// Ten thumbnails of 240 x 180 pixels from stored images of three sizes, compared with the JPEG
// library's own reduced decoding of the same files in the same run. One line of JSON for each size.
// Then the scaling alone, from the sizes that the decoder reduces these to, compared with the
// toolkit's, which is given one thread.
//   thumbnail_bench RUNS
#include "JpegPeer.h"
#include "base/KeptMemory.h"
#include "pictures/PictureReader.h"
#include "pictures/PictureScaler.h"

#include <QCoreApplication>
#include <QImage>
#include <QThreadPool>

#include <algorithm>
#include <array>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr QSize kShown(240, 180);
constexpr int kThumbnails = 10;
constexpr double kLimit = 1.08; // of the library's processor time
constexpr int kFiles = 4;       // shown in turn
constexpr std::array kSizes = {QSize(640, 480), QSize(1600, 1200), QSize(4000, 3000)};

constexpr std::array kReduced = {QSize(320, 240), QSize(400, 300), QSize(500, 375)};

enum Kind : std::size_t { Ours, PeerRgb, PeerBgrx, Kinds };

// The sum of rows keeps the compiler from dropping the work.
void measure(QSize size, int runs)
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
    const double peer = std::min(contest.medianMs(PeerRgb), contest.medianMs(PeerBgrx));
    const double peerProcessor =
        std::min(contest.medianProcessorMs(PeerRgb), contest.medianProcessorMs(PeerBgrx));
    Report(QStringLiteral("ten_thumbnails"))
        .add(QStringLiteral("pixels"), QStringLiteral("%1x%2").arg(size.width()).arg(size.height()))
        .add(QStringLiteral("ms"), contest.medianMs(Ours) * kThumbnails)
        .add(QStringLiteral("library_ms"), peer * kThumbnails)
        .add(QStringLiteral("ratio"), contest.medianMs(Ours) / peer)
        .limited(QStringLiteral("processor_ratio"), contest.medianProcessorMs(Ours) / peerProcessor,
                 kLimit)
        .add(QStringLiteral("rows"), rows)
        .print();
}

enum Scaler : std::size_t { Averaged, Toolkit, Scalers };

void measureScaling(QSize size, int runs)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    Contest contest(Scalers);
    int rows = 0;
    for (int i = 0; i < runs * kThumbnails; ++i) {
        contest.run(Averaged, [&] { rows += averaged(picture, kShown).height(); });
        contest.run(Toolkit, [&] {
            rows +=
                picture.scaled(kShown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).height();
        });
    }
    Report(QStringLiteral("scaling"))
        .add(QStringLiteral("pixels"), QStringLiteral("%1x%2").arg(size.width()).arg(size.height()))
        .add(QStringLiteral("ms"), contest.medianMs(Averaged))
        .add(QStringLiteral("toolkit_ms"), contest.medianMs(Toolkit))
        .add(QStringLiteral("to_toolkit"), contest.medianMs(Averaged) / contest.medianMs(Toolkit))
        .add(QStringLiteral("rows"), rows)
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QCoreApplication application(argc, argv);
    const int runs = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 50;
    for (const QSize size : kSizes) {
        measure(size, runs);
    }
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    for (const QSize size : kReduced) {
        measureScaling(size, runs);
    }
    return 0;
}
