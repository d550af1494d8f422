// The health of a hundred cameras at the start, ten of them with very many images: what is known
// from the last run is shown at once; the rest is counted while the event loop goes on.
//   health_bench NAMES
#include "BenchHouse.h"
#include "FullCamera.h"
#include "cameras/FolderName.h"
#include "health/HealthEngine.h"
#include "health/HealthTable.h"
#include "mail/SmtpClient.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kFull = 10;
constexpr double kFirstLimitMs = 100;
constexpr double kGapLimitMs = 16;

QString url(int group, int row)
{
    return QStringLiteral("http://127.0.0.1:9/%1/%2.jpg").arg(group).arg(row);
}

// One full folder, to which ten cameras' folders are links.
void fill(const Folder &folder, int names)
{
    const QString full = folder.path() + QStringLiteral("/full");
    fillCamera(full, names, 0, 0.01);
    for (int row = 0; row < kFull; ++row) {
        const QString name = encodeFolderName(url(0, row));
        QFile::link(full, folder.path() + QStringLiteral("/drives/c/in/") +
                              name.sliced(1, name.size() - 2));
    }
}

struct Start
{
    double firstMs = 0; // until the table shows its numbers
    double allMs = 0;   // until everything is counted
    double gapMs = 0;
};

Start start(const Folder &folder, int names)
{
    House house(folder.path());
    house.engine().timer().stop();
    SmtpClient mail;
    HealthEngine health(house.engine(), mail);
    QCoreApplication::processEvents();
    static_cast<void>(house.longestGapMs());
    QElapsedTimer timer;
    timer.start();
    health.start();
    const HealthTable table(health.book());
    for (int row = 0; row < table.rowCount(); ++row) {
        for (int column = 0; column < HealthTable::kColumns; ++column) {
            static_cast<void>(table.index(row, column).data());
        }
    }
    Start found{msSince(timer), 0, 0};
    const CameraAddress last{0, kFull - 1};
    while (health.book().camera(last).images < names) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    found.allMs = msSince(timer);
    found.gapMs = house.longestGapMs();
    health.book().save();
    house.close();
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const int names = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 500'000;
    const Folder folder(url);
    fill(folder, names);
    const Start counted = start(folder, names);
    const Start known = start(folder, names);
    Report(QStringLiteral("health_start"))
        .add(QStringLiteral("names"), names)
        .add(QStringLiteral("cameras"), kGroups * kRows)
        .limited(QStringLiteral("first_numbers_ms"), known.firstMs, kFirstLimitMs)
        .add(QStringLiteral("first_unknown_ms"), counted.firstMs)
        .add(QStringLiteral("all_counted_ms"), counted.allMs)
        .limited(QStringLiteral("longest_gap_ms"), std::max(known.gapMs, counted.gapMs),
                 kGapLimitMs)
        .print();
    return 0;
}
