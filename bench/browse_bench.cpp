// Stepping through a very full camera folder in the browser's window, one image per key press: the
// longest turn of the event loop, pictures decoded per step, and resident memory.
//   browse_bench NAMES MEGAPIXELS STEPS
#include "BrowserHouse.h"
#include "base/KeptMemory.h"

#include <QApplication>
#include <QTextStream>

#include <algorithm>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kMoreThanSteps = 20; // pictures for the first sheet
constexpr double kOneDecode = 1;
constexpr double kMemoryLimitMb = 150;
constexpr double kGapLimitMs = 16;
constexpr double kLargeGapLimitMs = 40;
constexpr double kLargeMegapixels = 10;

struct Steps
{
    LongestTurn longest;
    double decodesPerStep = 0;
    double earlyMb = 0; // after a twentieth of them
};

Steps walk(BrowserHouse &house, int steps)
{
    Steps found;
    const int before = house.images().pictures().decodes();
    for (int step = 0; step < steps; ++step) {
        const LongestTurn turn = house.step();
        found.longest.gapMs = std::max(found.longest.gapMs, turn.gapMs);
        found.longest.processorMs = std::max(found.longest.processorMs, turn.processorMs);
        found.earlyMb = step == steps / 20 ? residentMb() : found.earlyMb;
    }
    found.decodesPerStep =
        static_cast<double>(house.images().pictures().decodes() - before) / steps;
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 4) {
        QTextStream(stderr) << "browse_bench NAMES MEGAPIXELS STEPS\n";
        return 2;
    }
    const int names = words.at(1).toInt();
    const double megapixels = words.at(2).toDouble();
    const int steps = words.at(3).toInt();
    BrowserHouse house(names, std::min(names, steps + kMoreThanSteps), megapixels);
    LongestTurn open;
    const double openMs = msOf([&] { open = house.open(); });
    const Steps found = walk(house, steps);
    Report(QStringLiteral("browse"))
        .add(QStringLiteral("names"), names)
        .add(QStringLiteral("megapixels"), megapixels)
        .add(QStringLiteral("open_ms"), openMs)
        .add(QStringLiteral("open_gap_ms"), open.gapMs)
        .add(QStringLiteral("open_processor_ms"), open.processorMs)
        .add(QStringLiteral("steps"), steps)
        .limited(QStringLiteral("gap_ms"), found.longest.gapMs,
                 megapixels < kLargeMegapixels ? kGapLimitMs : kLargeGapLimitMs)
        .add(QStringLiteral("processor_ms"), found.longest.processorMs)
        .limited(QStringLiteral("decodes_per_step"), found.decodesPerStep, kOneDecode)
        .add(QStringLiteral("early_mb"), found.earlyMb)
        .limited(QStringLiteral("late_mb"), residentMb(), kMemoryLimitMb)
        .print();
    return 0;
}
