// How the work grows with the number of images in a camera's folder: a step along the list, a tick
// at which nothing is due, and a refresh, of an unchanged folder and of one with a new image.
// Processor time, one line of JSON for each number.
//   growth_bench ROUNDS [IMAGES...]
#include "BrowserHouse.h"
#include "base/KeptMemory.h"

#include <QApplication>
#include <QTextStream>

#include <algorithm>
#include <functional>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kPictures = 400;
constexpr double kMegapixels = 0.3;

double processorMsOf(const std::function<void()> &work)
{
    const double before = processorMs();
    work();
    return processorMs() - before;
}

QList<double> times(int count, const std::function<void()> &work)
{
    QList<double> found;
    for (int i = 0; i < count; ++i) {
        found.append(processorMsOf(work));
    }
    return found;
}

// Until the pictures are shown, and what the list does afterwards in the background.
struct Refreshes
{
    QList<double> shownMs;
    QList<double> restMs;

    void add(BrowserHouse &house)
    {
        shownMs.append(processorMsOf([&] { house.refresh(); }));
        restMs.append(house.settle());
    }
};

Refreshes refreshes(BrowserHouse &house, int count, bool withNewImage)
{
    Refreshes found;
    for (int i = 0; i < count; ++i) {
        if (withNewImage) {
            house.addImage();
        }
        found.add(house);
    }
    return found;
}

void measure(int images, int rounds)
{
    BrowserHouse house(images, std::min(images, kPictures), kMegapixels);
    const double openMs = processorMsOf([&] { house.open(); });
    const double openRestMs = house.settle();
    const double stepMs = median(times(rounds, [&] { house.step(); }));
    const double tickMs = median(times(rounds, [&] { house.capture().idleTick(); }));
    const Refreshes same = refreshes(house, rounds, false);
    const Refreshes grown = refreshes(house, rounds, true);
    Report(QStringLiteral("growth"))
        .add(QStringLiteral("images"), images)
        .add(QStringLiteral("open_ms"), openMs)
        .add(QStringLiteral("open_rest_ms"), openRestMs)
        .add(QStringLiteral("step_ms"), stepMs)
        .add(QStringLiteral("idle_tick_ms"), tickMs)
        .add(QStringLiteral("refresh_ms"), median(same.shownMs))
        .add(QStringLiteral("refresh_rest_ms"), median(same.restMs))
        .add(QStringLiteral("refresh_with_new_image_ms"), median(grown.shownMs))
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 2) {
        QTextStream(stderr) << "growth_bench ROUNDS [IMAGES...]\n";
        return 2;
    }
    QStringList sizes = words.sliced(2);
    if (sizes.isEmpty()) {
        sizes = {QStringLiteral("1000"), QStringLiteral("10000"), QStringLiteral("100000"),
                 QStringLiteral("1000000")};
    }
    for (const QString &images : std::as_const(sizes)) {
        measure(images.toInt(), words.at(1).toInt());
    }
    return 0;
}
