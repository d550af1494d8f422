// One pass over a hundred cameras of 200 KB, every image new, all settings and files written, with
// the window open: compared with curl fetching the same in parallel, with the cameras' delay, and
// with thirty dead cameras among them.
//   pass_bench SERVER DELAY_MS PASSES [holes]
#include "BenchHouse.h"
#include "base/KeptMemory.h"

#include <QApplication>
#include <QTextStream>

#include <memory>
#include <vector>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kBodyBytes = 200 * 1024;
constexpr int kDeadRows = 3; // of each group: thirty in all
constexpr int kCurlLimitMs = 60000;

// The folder is kept to the end: deleting files slows the creation of others for a while.
double curlMs(const Cameras &cameras, const QTemporaryDir &folder)
{
    QStringList arguments{QStringLiteral("-s"), QStringLiteral("--parallel"),
                          QStringLiteral("--parallel-max"), QStringLiteral("100"),
                          QStringLiteral("--parallel-immediate")};
    for (int i = 0; i < kGroups * kRows; ++i) {
        arguments << QStringLiteral("-o") << folder.filePath(QString::number(i))
                  << cameras.url(i / kRows, i % kRows);
    }
    QElapsedTimer timer;
    timer.start();
    QProcess curl;
    curl.start(QStringLiteral("curl"), arguments);
    curl.waitForFinished(kCurlLimitMs);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    if (argc < 4) {
        QTextStream(stderr) << "pass_bench SERVER DELAY_MS PASSES [holes]\n";
        return 2;
    }
    const int delayMs = QString::fromLocal8Bit(argv[2]).toInt();
    const int passes = QString::fromLocal8Bit(argv[3]).toInt();
    const bool holes = argc > 4;
    const Cameras cameras(QString::fromLocal8Bit(argv[1]), delayMs, kBodyBytes);
    const Folder folder(
        [&](int group, int row) { return cameras.url(group, row, holes && row < kDeadRows); });
    House house(folder.path());

    const double first = house.passMs(); // also creates the folders and the settings' keys
    static_cast<void>(house.longestGapMs());
    std::vector<std::unique_ptr<QTemporaryDir>> curlFolders;
    QList<double> pass;
    QList<double> processor;
    QList<double> curl;
    QList<double> gap;
    for (int i = 0; i < passes; ++i) {
        const double before = processorMs();
        pass.append(house.passMs());
        processor.append(processorMs() - before);
        gap.append(house.longestGapMs());
        curlFolders.push_back(std::make_unique<QTemporaryDir>());
        curl.append(holes ? 0 : curlMs(cameras, *curlFolders.back()));
        static_cast<void>(house.longestGapMs());
    }
    const double ms = median(pass);
    QTextStream out(stdout);
    out << "{\"bench\":\"pass\",\"cameras\":100,\"bytes\":" << kBodyBytes
        << ",\"delay_ms\":" << delayMs << ",\"dead\":" << (holes ? kDeadRows * kGroups : 0)
        << ",\"first_ms\":" << first << ",\"pass_ms\":" << ms
        << ",\"processor_ms\":" << median(processor) << ",\"to_delay\":" << ms / delayMs;
    if (!holes) {
        out << ",\"curl_ms\":" << median(curl) << ",\"to_curl\":" << ms / median(curl);
    }
    out << ",\"longest_gap_ms\":" << *std::max_element(gap.begin(), gap.end()) << "}\n";
    return 0;
}
