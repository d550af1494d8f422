// One pass over a hundred cameras of 200 KB, in three setups in turn: plain, with the health of the
// cameras watched, and with cameras that send no date and are kept when their pictures differ.
//   pass_kinds_bench SERVER DELAY_MS PASSES
#include "BenchHouse.h"
#include "base/KeptMemory.h"
#include "cameras/CameraChoices.h"
#include "health/HealthEngine.h"
#include "mail/SmtpClient.h"
#include "settings/Keys.h"

#include <QApplication>
#include <QTextStream>

#include <array>
#include <memory>
#include <vector>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr double kWatchedLimit = 1.02; // of a plain pass
constexpr double kBareLimit = 1.05;
constexpr double kGapLimitMs = 16;

enum Kind : std::size_t { Plain, Watched, Bare, Kinds };

struct Figures
{
    std::array<QList<double>, Kinds> pass;
    std::array<QList<double>, Kinds> processor;
    QList<double> gapMs;
};

void keepWhatDiffers(const Folder &folder)
{
    const SettingsFile settings(folder.path());
    for (int i = 0; i < kGroups * kRows; ++i) {
        settings.write(cameraSection({i / kRows, i % kRows}), keys::kKeep.key,
                       keepText({Keep::Differing}));
    }
}

/// A window and an engine for each kind.
class Houses
{
public:
    explicit Houses(const Cameras &cameras)
        : dated_([&cameras](int group, int row) { return cameras.url(group, row); })
        , watched_([&cameras](int group, int row) { return cameras.url(group, row); })
        , bare_([&cameras](int group, int row) {
            return cameras.url(group, row).replace(QStringLiteral("/cam"), QStringLiteral("/bare"));
        })
    {
        keepWhatDiffers(bare_);
        for (const Folder *const folder : {&dated_, &watched_, &bare_}) {
            houses_.push_back(std::make_unique<House>(folder->path()));
            houses_.back()->engine().timer().stop(); // no pass of its own during another's
        }
        health_ = std::make_unique<HealthEngine>(houses_[Watched]->engine(), mail_);
        health_->start();
    }

    void passOfEach(Figures *figures)
    {
        for (std::size_t kind = 0; kind < Kinds; ++kind) {
            static_cast<void>(houses_[kind]->longestGapMs());
            const double before = processorMs();
            const double ms = houses_[kind]->passMs();
            if (figures != nullptr) {
                figures->processor.at(kind).append(processorMs() - before);
                figures->pass.at(kind).append(ms);
                figures->gapMs.append(houses_[kind]->longestGapMs());
            }
        }
    }

    ~Houses() { houses_[Watched]->close(); }

    Q_DISABLE_COPY_MOVE(Houses)

private:
    Folder dated_;
    Folder watched_;
    Folder bare_;
    std::vector<std::unique_ptr<House>> houses_;
    SmtpClient mail_;
    std::unique_ptr<HealthEngine> health_;
};

void print(const Figures &figures, int delayMs)
{
    const double plain = median(figures.pass[Plain]);
    Report(QStringLiteral("pass_kinds"))
        .add(QStringLiteral("delay_ms"), delayMs)
        .add(QStringLiteral("plain_ms"), plain)
        .add(QStringLiteral("watched_ms"), median(figures.pass[Watched]))
        .limited(QStringLiteral("watched_ratio"), median(figures.pass[Watched]) / plain,
                 kWatchedLimit)
        .add(QStringLiteral("undated_ms"), median(figures.pass[Bare]))
        .limited(QStringLiteral("undated_ratio"), median(figures.pass[Bare]) / plain, kBareLimit)
        .add(QStringLiteral("plain_processor_ms"), median(figures.processor[Plain]))
        .add(QStringLiteral("watched_processor_ms"), median(figures.processor[Watched]))
        .add(QStringLiteral("undated_processor_ms"), median(figures.processor[Bare]))
        .limited(QStringLiteral("longest_gap_ms"), largest(figures.gapMs), kGapLimitMs)
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 4) {
        QTextStream(stderr) << "pass_kinds_bench SERVER DELAY_MS PASSES\n";
        return 2;
    }
    const Cameras cameras(words.at(1), words.at(2).toInt(), kPictureBytes);
    Houses houses(cameras);
    Figures figures;
    houses.passOfEach(nullptr); // makes the folders and the settings' keys
    for (int pass = 0; pass < words.at(3).toInt(); ++pass) {
        houses.passOfEach(&figures);
    }
    print(figures, words.at(2).toInt());
    return 0;
}
