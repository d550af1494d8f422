// A pass over a hundred cameras of 200 KB, every image new, all settings and files written, with
// the window open: in turn with curl fetching the same in parallel and with a loop that only
// fetches and writes; the first pass of a start beside those that follow it; and thirty dead
// cameras among them.
//   pass_bench SERVER DELAY_MS PASSES [holes]
// The images are written where TMPDIR is: to memory or to a disk.
#include "BenchHouse.h"
#include "PeerPass.h"
#include "base/KeptMemory.h"

#include <QApplication>
#include <QTextStream>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kDeadRows = 3; // of each group: thirty in all
constexpr int kMostStarts = 7;
constexpr int kSteadyPasses = 3; // of each
constexpr int kLongDelayMs = 200;
constexpr double kCurlLimit = 0.90; // of curl's time
constexpr double kCurlLimitLong = 0.95;
constexpr double kProcessorLimit = 1.0; // of the time of curl's process
constexpr double kFirstLimit = 1.1;     // of a steady pass
constexpr double kDeadLimitMs = 5200;   // with a time-out of 5 s
constexpr double kGapLimitMs = 16;

struct Order
{
    QString server;
    int delayMs = 0;
    int passes = 0;
    bool holes = false;
};

struct Times
{
    QList<double> ms;
    QList<double> processorMs;

    void add(const PeerPass &pass)
    {
        ms.append(pass.ms);
        processorMs.append(pass.processorMs);
    }
};

struct Figures
{
    Times own;
    Times curl;
    Times plain;
    QList<double> gapMs;
    QList<double> firstMs; // of several starts
    QList<double> steadyMs;
};

PeerPass ownPass(House &house)
{
    const double before = processorMs();
    const double ms = house.passMs();
    return {ms, processorMs() - before};
}

/// Folders of the peers, kept to the end: deleting files slows the creation of others for a while.
class PeerFolders
{
public:
    QString next()
    {
        folders_.push_back(std::make_unique<QTemporaryDir>());
        return folders_.back()->path();
    }

private:
    std::vector<std::unique_ptr<QTemporaryDir>> folders_;
};

void measurePasses(const Cameras &cameras, const Folder &folder, const Order &order,
                   Figures &figures)
{
    House house(folder.path());
    static_cast<void>(house.passMs()); // makes the folders and the settings' keys
    PeerFolders folders;
    for (int i = 0; i < order.passes; ++i) {
        static_cast<void>(house.longestGapMs());
        figures.own.add(ownPass(house));
        figures.gapMs.append(house.longestGapMs());
        if (!order.holes) {
            figures.curl.add(curlPass(cameras, folders.next()));
            figures.plain.add(plainPass(cameras, folders.next()));
        }
    }
}

// Each start finds the folders of an earlier one, but none of the keys that a pass adds.
void measureStarts(const Folder &folder, int starts, Figures &figures)
{
    for (int start = 0; start < starts; ++start) {
        folder.resetSettings();
        House house(folder.path());
        house.paintFirst(); // as the program has by the time of its first pass
        figures.firstMs.append(house.passMs());
        for (int pass = 0; pass < kSteadyPasses; ++pass) {
            figures.steadyMs.append(house.passMs());
        }
    }
}

void addPeers(Report &report, const Figures &figures, int delayMs)
{
    const double ms = median(figures.own.ms);
    const double curl = median(figures.curl.ms);
    const double curlProcessor = median(figures.curl.processorMs);
    report.add(QStringLiteral("curl_ms"), curl)
        .limited(QStringLiteral("to_curl"), ms / curl,
                 delayMs < kLongDelayMs ? kCurlLimit : kCurlLimitLong)
        .add(QStringLiteral("curl_processor_ms"), curlProcessor)
        .limited(QStringLiteral("processor_to_curl"),
                 median(figures.own.processorMs) / curlProcessor, kProcessorLimit)
        .add(QStringLiteral("plain_loop_ms"), median(figures.plain.ms))
        .add(QStringLiteral("plain_loop_to_curl"), median(figures.plain.ms) / curl)
        .add(QStringLiteral("plain_loop_processor_ms"), median(figures.plain.processorMs));
    const double first = median(figures.firstMs);
    const double steady = median(figures.steadyMs);
    report.add(QStringLiteral("starts"), static_cast<double>(figures.firstMs.size()))
        .add(QStringLiteral("first_ms"), first)
        .add(QStringLiteral("steady_ms"), steady)
        .limited(QStringLiteral("first_to_steady"), first / steady, kFirstLimit);
}

void print(const Order &order, const Figures &figures)
{
    const double ms = median(figures.own.ms);
    Report report(QStringLiteral("pass"));
    report.add(QStringLiteral("cameras"), kGroups * kRows)
        .add(QStringLiteral("bytes"), kPictureBytes)
        .add(QStringLiteral("delay_ms"), order.delayMs)
        .add(QStringLiteral("dead"), order.holes ? kDeadRows * kGroups : 0);
    if (order.holes) {
        report.limited(QStringLiteral("pass_ms"), ms, kDeadLimitMs);
    } else {
        report.add(QStringLiteral("pass_ms"), ms)
            .add(QStringLiteral("processor_ms"), median(figures.own.processorMs))
            .add(QStringLiteral("to_delay"), ms / order.delayMs);
        addPeers(report, figures, order.delayMs);
    }
    report.limited(QStringLiteral("longest_gap_ms"), largest(figures.gapMs), kGapLimitMs).print();
}

std::optional<Order> orderFrom(const QStringList &words)
{
    if (words.size() < 4) {
        QTextStream(stderr) << "pass_bench SERVER DELAY_MS PASSES [holes]\n";
        return std::nullopt;
    }
    return Order{words.at(1), words.at(2).toInt(), words.at(3).toInt(), words.size() > 4};
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    const std::optional<Order> order = orderFrom(QCoreApplication::arguments());
    if (!order) {
        return 2;
    }
    const Cameras cameras(order->server, order->delayMs, kPictureBytes);
    const Folder folder([&](int group, int row) {
        return cameras.url(group, row, order->holes && row < kDeadRows);
    });
    Figures figures;
    measurePasses(cameras, folder, *order, figures);
    if (!order->holes) {
        measureStarts(folder, std::min(order->passes, kMostStarts), figures);
    }
    print(*order, figures);
    return 0;
}
