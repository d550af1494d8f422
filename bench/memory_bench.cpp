// Resident memory after many captures, compared with that after the first thousand.
//   memory_bench SERVER FIRST_PASSES ALL_PASSES      (a pass is a hundred captures)
#include "BenchHouse.h"
#include "base/KeptMemory.h"

#include <QApplication>
#include <QTextStream>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kBodyBytes = 20 * 1024;
constexpr double kLimitMb = 2;

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    if (argc != 4) {
        QTextStream(stderr) << "memory_bench SERVER FIRST_PASSES ALL_PASSES\n";
        return 2;
    }
    const int firstPasses = QString::fromLocal8Bit(argv[2]).toInt();
    const int allPasses = QString::fromLocal8Bit(argv[3]).toInt();
    const Cameras cameras(QString::fromLocal8Bit(argv[1]), 0, kBodyBytes);
    const Folder folder([&](int group, int row) { return cameras.url(group, row); });
    House house(folder.path());
    double early = 0;
    for (int pass = 1; pass <= allPasses; ++pass) {
        static_cast<void>(house.passMs());
        early = pass == firstPasses ? residentMb() : early;
    }
    const double late = residentMb();
    Report(QStringLiteral("memory"))
        .add(QStringLiteral("captures"), allPasses * kGroups * kRows)
        .add(QStringLiteral("early_mb"), early)
        .add(QStringLiteral("late_mb"), late)
        .limited(QStringLiteral("growth_mb"), late - early, kLimitMb)
        .print();
    return 0;
}
