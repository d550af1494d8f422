// Listing very full camera folders, and finding the newest images of a group, compared with the
// bare system call and `ls` in the same run.
//   listing_bench FOLDER [IMAGES [ROUNDS]]
// FOLDER: where the cameras' folders are made. IMAGES: in the largest; a second has a fifth of
// that, and each of the ten of a group a twenty-fifth, of which the newest day has a
// five-hundredth.
#include "CameraFolders.h"
#include "Measures.h"
#include "browser/FolderReader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kUsualImages = 500'000;
constexpr int kUsualRounds = 15;
constexpr std::size_t kBuffers[] = {32U << 10U, 64U << 10U, 128U << 10U, 256U << 10U, 1U << 20U};
constexpr double kListLimit = 1.10;   // of the bare system call's time
constexpr double kNewestLimit = 1.2;  // of ten such loops
constexpr double kRefreshLimitMs = 1; // of a group
constexpr double kAgainLimitMs = 1;
constexpr double kGapLimitMs = 16;

// Runs a reading on the event loop.
template <typename T>
T awaited(QCoro::Task<T> task)
{
    return QCoro::waitFor(std::move(task));
}

double listMs(FolderReader &reader, const QString &folder)
{
    std::shared_ptr<const ImageNames> names;
    return msOf([&] { names = awaited(reader.names(folder, {})); });
}

double newestMs(FolderReader &reader, const std::vector<QString> &folders)
{
    return msOf([&] {
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
    double longest = 0;
    QObject::connect(&timer, &QTimer::timeout,
                     [&] { longest = std::max(longest, msSince(gap)), gap.restart(); });
    gap.start();
    timer.start(std::chrono::milliseconds{1});
    FolderReader reader(clock);
    static_cast<void>(awaited(reader.names(folder, {})));
    return std::max(longest, msSince(gap));
}

// Times of the same work in several rounds.
class Series
{
public:
    void add(const std::string &name, double value) { values_[name].append(value); }

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

    [[nodiscard]] double most(const std::string &name) const { return largest(values_.at(name)); }

private:
    std::map<std::string, QList<double>> values_;
};

void measurePlain(Series &series, const CameraFolders &folders)
{
    for (const std::size_t buffer : kBuffers) {
        const std::string size = std::to_string(buffer);
        series.add("large" + size, msOf([&] { readPlainly(folders.large(), buffer); }));
        series.add("medium" + size, msOf([&] { readPlainly(folders.medium(), buffer); }));
        series.add("group" + size, msOf([&] {
                       for (const QString &folder : folders.group()) {
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
    series.add("list medium", listMs(reader, folders.medium()));
    series.add("again", listMs(reader, folders.large()));
    series.add("newest", newestMs(reader, folders.group()));
    series.add("newest again", newestMs(reader, folders.group()));
    series.add("readdir large", msOf([&] { readByLibrary(folders.large()); }));
    series.add("ls large", msOf([&] { runLs(folders.large()); }));
    series.add("ls medium", msOf([&] { runLs(folders.medium()); }));
    series.add("gap", longestGapMs(clock, folders.large()));
}

void addList(Report &report, const Series &series, const std::string &size, int images)
{
    const QString name = QString::fromStdString(size);
    const double ms = series["list " + size];
    report.add(name + QStringLiteral("_images"), images)
        .add(name + QStringLiteral("_ms"), ms)
        .limited(name + QStringLiteral("_to_getdents"), ms / series.plain(size), kListLimit)
        .add(name + QStringLiteral("_to_ls"), ms / series["ls " + size]);
}

void print(const Series &series, const CameraFolders::Sizes &sizes)
{
    Report report(QStringLiteral("listing"));
    addList(report, series, "large", sizes.large);
    addList(report, series, "medium", sizes.medium);
    report
        .add(QStringLiteral("readdir_to_getdents"), series["readdir large"] / series.plain("large"))
        .limited(QStringLiteral("list_again_ms"), series["again"], kAgainLimitMs)
        .add(QStringLiteral("group_images"), sizes.group)
        .add(QStringLiteral("newest_of_ten_ms"), series["newest"])
        .limited(QStringLiteral("newest_of_ten_to_getdents"),
                 series["newest"] / series.plain("group"), kNewestLimit)
        .add(QStringLiteral("newest_day_images"), sizes.newestDay)
        .limited(QStringLiteral("group_refresh_ms"), series["newest again"], kRefreshLimitMs)
        .limited(QStringLiteral("longest_gap_ms"), series.most("gap"), kGapLimitMs)
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const int images = words.value(2, QString::number(kUsualImages)).toInt();
    const int rounds = words.value(3, QString::number(kUsualRounds)).toInt();
    const CameraFolders::Sizes sizes{images, images / 5, images / 25, images / 500};
    SystemClock clock;
    const CameraFolders folders(words.value(1, QStringLiteral("/tmp")), sizes);
    Series warmUp;
    measureRound(warmUp, folders, clock);
    Series series;
    for (int i = 0; i < rounds; ++i) {
        measureRound(series, folders, clock);
    }
    print(series, sizes);
    return 0;
}
