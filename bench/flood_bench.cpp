// One pass over cameras that send very long pictures, all of them new, with the window open: how
// long the event loop stood still, and how much more memory the program took than before.
//   flood_bench SERVER CAMERAS BODY_BYTES [URL]
// URL: of a different server for all cameras; "/group/row" is appended to it.
#include "BenchHouse.h"
#include "base/KeptMemory.h"

#include <QApplication>
#include <QTextStream>

#include <sys/resource.h>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr double kMemoryLimitMb = 64;
constexpr double kTurnLimitMs = 16;

// The most memory that the process has had resident so far.
double peakMb()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    if (argc < 4) {
        QTextStream(stderr) << "flood_bench SERVER CAMERAS BODY_BYTES [URL]\n";
        return 2;
    }
    const int count = QString::fromLocal8Bit(argv[2]).toInt();
    const int bytes = QString::fromLocal8Bit(argv[3]).toInt();
    const Cameras cameras(QString::fromLocal8Bit(argv[1]), 0, bytes);
    const QString other = QString::fromLocal8Bit(argc > 4 ? argv[4] : "");
    const auto address = [&](int group, int row) {
        return other.isEmpty() ? cameras.url(group, row)
                               : QStringLiteral("%1/%2/%3").arg(other).arg(group).arg(row);
    };
    const Folder folder([&](int group, int row) {
        return group * kRows + row < count ? address(group, row) : QString();
    });
    House house(folder.path());
    house.engine().options().setTimeout(QStringLiteral("120"));
    house.paintFirst();
    static_cast<void>(house.longestGapMs());
    static_cast<void>(house.longestTurnMs());
    const double idle = residentMb();
    const double ms = house.passMs();
    Report(QStringLiteral("flood"))
        .add(QStringLiteral("cameras"), count)
        .add(QStringLiteral("bytes"), bytes)
        .add(QStringLiteral("pass_ms"), ms)
        .add(QStringLiteral("idle_mb"), idle)
        .limited(QStringLiteral("most_above_idle_mb"), peakMb() - idle, kMemoryLimitMb)
        .add(QStringLiteral("longest_gap_ms"), house.longestGapMs())
        .limited(QStringLiteral("longest_turn_processor_ms"), house.longestTurnMs(), kTurnLimitMs)
        .print();
    return 0;
}
