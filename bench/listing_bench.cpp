// Listing very full camera folders, compared with the bare system call and `ls` in the same run.
//   listing_bench FOLDER [IMAGES [ROUNDS]]
// IMAGES: in the large folder; ten others have a fifth of that. FOLDER: where they are made.
#include "CameraFolders.h"
#include "browser/FolderReader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kFolders = 10;
constexpr std::size_t kBuffers[] = {32U << 10U, 64U << 10U, 128U << 10U, 256U << 10U, 1U << 20U};
constexpr double kNsPerMs = 1e6;

double ms(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / kNsPerMs;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

// Runs a reading on the event loop.
template <typename T>
T awaited(QCoro::Task<T> task)
{
    return QCoro::waitFor(std::move(task));
}

double listMs(FolderReader &reader, const QString &folder)
{
    std::shared_ptr<const ImageNames> names;
    return ms([&] { names = awaited(reader.names(folder, {})); });
}

double newestMs(FolderReader &reader, const std::vector<QString> &folders)
{
    return ms([&] {
        for (const QString &folder : folders) {
            static_cast<void>(awaited(reader.newest(folder, {})));
        }
    });
}

// Longest time between two turns of the event loop while a folder is listed.
double longestGapMs(Clock &clock, const QString &folder)
{
    QTimer timer;
    QElapsedTimer gap;
    qint64 longest = 0;
    QObject::connect(&timer, &QTimer::timeout,
                     [&] { longest = std::max(longest, gap.nsecsElapsed()), gap.restart(); });
    gap.start();
    timer.start(std::chrono::milliseconds{1});
    FolderReader reader(clock);
    static_cast<void>(awaited(reader.names(folder, {})));
    longest = std::max(longest, gap.nsecsElapsed());
    return static_cast<double>(longest) / kNsPerMs;
}

// Times of the same work in several rounds.
class Series
{
public:
    void add(const std::string &name, double value) { values_[name].push_back(value); }

    [[nodiscard]] double operator[](const std::string &name) const
    {
        return median(values_.at(name));
    }

    // With the buffer size that suits the file system best.
    [[nodiscard]] double plain(const std::string &name) const
    {
        double best = (*this)[name + std::to_string(kBuffers[0])];
        for (const std::size_t buffer : kBuffers) {
            best = std::min(best, (*this)[name + std::to_string(buffer)]);
        }
        return best;
    }

    [[nodiscard]] double largest(const std::string &name) const
    {
        return *std::ranges::max_element(values_.at(name));
    }

private:
    std::map<std::string, std::vector<double>> values_;
};

void measurePlain(Series &series, const CameraFolders &folders)
{
    for (const std::size_t buffer : kBuffers) {
        const std::string size = std::to_string(buffer);
        series.add("large" + size, ms([&] { readPlainly(folders.large(), buffer); }));
        series.add("one" + size, ms([&] { readPlainly(folders.small().front(), buffer); }));
        series.add("ten" + size, ms([&] {
                       for (const QString &folder : folders.small()) {
                           readPlainly(folder, buffer);
                       }
                   }));
    }
}

void measureRound(Series &series, const CameraFolders &folders, Clock &clock)
{
    FolderReader reader(clock);
    measurePlain(series, folders);
    series.add("list large", listMs(reader, folders.large()));
    series.add("list one", listMs(reader, folders.small().front()));
    series.add("again", listMs(reader, folders.large()));
    series.add("newest", newestMs(reader, folders.small()));
    series.add("newest again", newestMs(reader, folders.small()));
    series.add("readdir large", ms([&] { readByLibrary(folders.large()); }));
    series.add("ls large", ms([&] { runLs(folders.large()); }));
    series.add("ls one", ms([&] { runLs(folders.small().front()); }));
    series.add("gap", longestGapMs(clock, folders.large()));
}

QJsonObject report(const Series &series, int images)
{
    const double large = series["list large"];
    const double one = series["list one"];
    const double newest = series["newest"];
    return {
        {QStringLiteral("bench"), QStringLiteral("listing")},
        {QStringLiteral("images"), images},
        {QStringLiteral("list_ms"), large},
        {QStringLiteral("list_to_getdents"), large / series.plain("large")},
        {QStringLiteral("list_to_ls"), large / series["ls large"]},
        {QStringLiteral("readdir_to_getdents"), series["readdir large"] / series.plain("large")},
        {QStringLiteral("fifth_ms"), one},
        {QStringLiteral("fifth_to_getdents"), one / series.plain("one")},
        {QStringLiteral("fifth_to_ls"), one / series["ls one"]},
        {QStringLiteral("newest_of_ten_ms"), newest},
        {QStringLiteral("newest_of_ten_to_getdents"), newest / series.plain("ten")},
        {QStringLiteral("newest_of_ten_again_ms"), series["newest again"]},
        {QStringLiteral("list_again_ms"), series["again"]},
        {QStringLiteral("longest_gap_ms"), series["gap"]},
        {QStringLiteral("longest_gap_of_all_ms"), series.largest("gap")}};
}

int argument(int argc, char **argv, int index, int otherwise)
{
    return argc > index ? QString::fromLocal8Bit(argv[index]).toInt() : otherwise;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int images = argument(argc, argv, 2, 5'000);
    const int rounds = argument(argc, argv, 3, 1);
    const QString parent = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("/tmp");
    SystemClock clock;
    const CameraFolders folders(parent, images, images / 5, kFolders);
    Series warmUp;
    measureRound(warmUp, folders, clock);
    Series series;
    for (int i = 0; i < rounds; ++i) {
        measureRound(series, folders, clock);
    }
    QTextStream(stdout) << QJsonDocument(report(series, images)).toJson(QJsonDocument::Compact)
                        << '\n';
    return 0;
}
