// One pass over a hundred cameras of 200 KB, in three setups in turn: plain, with the health of the
// cameras watched, and with cameras that send no date and are kept when their pictures differ.
//   pass_kinds_bench SERVER DELAY_MS PASSES
#include "BenchHouse.h"
#include "base/KeptMemory.h"
#include "health/HealthEngine.h"
#include "mail/SmtpClient.h"

#include <QApplication>
#include <QTextStream>

#include <algorithm>
#include <array>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kBodyBytes = 200 * 1024;

enum Kind : std::size_t { Plain, Watched, Bare, Kinds };

void keepWhatDiffers(const QString &folder)
{
    const SettingsFile settings(folder);
    for (int group = 0; group < kGroups; ++group) {
        for (int row = 0; row < kRows; ++row) {
            settings.write(QStringLiteral("Camera%1%2").arg(group).arg(row), u"Keep",
                           QStringLiteral("differing"));
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    if (argc < 4) {
        QTextStream(stderr) << "pass_kinds_bench SERVER DELAY_MS PASSES\n";
        return 2;
    }
    const int delayMs = QString::fromLocal8Bit(argv[2]).toInt();
    const int passes = QString::fromLocal8Bit(argv[3]).toInt();
    const Cameras cameras(QString::fromLocal8Bit(argv[1]), delayMs, kBodyBytes);
    const auto dated = [&](int group, int row) { return cameras.url(group, row); };
    const auto bare = [&](int group, int row) {
        return cameras.url(group, row).replace(QStringLiteral("/cam"), QStringLiteral("/bare"));
    };
    const std::array folders{std::make_unique<Folder>(dated), std::make_unique<Folder>(dated),
                             std::make_unique<Folder>(bare)};
    keepWhatDiffers(folders[Bare]->path());
    std::array<std::unique_ptr<House>, Kinds> houses;
    for (std::size_t kind = 0; kind < Kinds; ++kind) {
        houses.at(kind) = std::make_unique<House>(folders.at(kind)->path());
        houses.at(kind)->engine().timer().stop(); // no pass of its own during another's
    }
    SmtpClient mail;
    HealthEngine health(houses[Watched]->engine(), mail);
    health.start();
    std::array<QList<double>, Kinds> pass;
    std::array<QList<double>, Kinds> processor;
    std::array<double, Kinds> gap{};
    for (int i = -1; i < passes; ++i) { // the first creates folders and keys, and does not count
        for (std::size_t kind = 0; kind < Kinds; ++kind) {
            static_cast<void>(houses.at(kind)->longestGapMs());
            const double before = processorMs();
            const double ms = houses.at(kind)->passMs();
            if (i >= 0) {
                processor.at(kind).append(processorMs() - before);
                pass.at(kind).append(ms);
                gap.at(kind) = std::max(gap.at(kind), houses.at(kind)->longestGapMs());
            }
        }
    }
    const double plain = median(pass[Plain]);
    QTextStream(stdout) << "{\"bench\":\"pass_kinds\",\"delay_ms\":" << delayMs
                        << ",\"plain_ms\":" << plain << ",\"watched_ms\":" << median(pass[Watched])
                        << ",\"watched_ratio\":" << median(pass[Watched]) / plain
                        << ",\"watched_limit\":1.02,\"undated_ms\":" << median(pass[Bare])
                        << ",\"undated_ratio\":" << median(pass[Bare]) / plain
                        << ",\"undated_limit\":1.05,\"plain_processor_ms\":"
                        << median(processor[Plain])
                        << ",\"watched_processor_ms\":" << median(processor[Watched])
                        << ",\"undated_processor_ms\":" << median(processor[Bare])
                        << ",\"longest_gap_ms\":" << *std::ranges::max_element(gap) << "}\n";
    houses = {};
    return 0;
}
