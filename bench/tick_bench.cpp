// Processor time of a tick at which nothing is due, with a hundred cameras configured that all have
// images.
//   tick_bench TICKS
#include "BenchHouse.h"

#include <QApplication>
#include <QDir>
#include <QFile>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr double kLimitMs = 4;

QString url(int group, int row)
{
    return QStringLiteral("http://127.0.0.1:9/%1/%2.png").arg(group).arg(row);
}

void makeImages(CaptureEngine &engine)
{
    for (int i = 0; i < kGroups * kRows; ++i) {
        const QString folder = engine.storage().cameraFolder({i / kRows, i % kRows});
        QDir().mkpath(folder);
        QFile image(folder + QStringLiteral("/20260101_0000000100.png"));
        static_cast<void>(image.open(QIODevice::WriteOnly));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const int ticks = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 100;
    const Folder folder(url);
    House house(folder.path());
    makeImages(house.engine());
    static_cast<void>(house.passMs()); // the first pass loads every camera
    QList<double> times;
    for (int i = 0; i < ticks; ++i) {
        const double before = processorMs();
        house.idleTick();
        times.append(processorMs() - before);
    }
    Report(QStringLiteral("idle_tick"))
        .add(QStringLiteral("cameras"), kGroups * kRows)
        .limited(QStringLiteral("processor_ms"), median(times), kLimitMs)
        .print();
    return 0;
}
