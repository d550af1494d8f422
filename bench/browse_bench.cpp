// Stepping through a very full camera folder in the browser's window, one image for each key: the
// longest gap of the event loop, pictures decoded for each step, and resident memory.
//   browse_bench NAMES MEGAPIXELS STEPS
#include "BenchHouse.h"
#include "app/BrowserEngine.h"
#include "app/Memory.h"
#include "ui/planche.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QListView>
#include <QRandomGenerator>
#include <QTextStream>

#include <cmath>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kPictures = 20;             // that differ; the others are links to them
constexpr qint64 kFirstMinute = 18993600; // of the names: 2006

QString url(int group, int row)
{
    return group == 0 && row == 0 ? QStringLiteral("http://127.0.0.1:9/one.jpg") : QString();
}

// Shades with some noise, as a camera gives them.
QImage picture(double megapixels, int number)
{
    const int width = static_cast<int>(std::sqrt(megapixels * 1e6 * 4 / 3));
    QImage image(width, width * 3 / 4, QImage::Format_RGB32);
    QRandomGenerator random(static_cast<quint32>(number));
    for (int y = 0; y < image.height(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int noise = random.bounded(24);
            line[x] = qRgb((x * 200 / width + noise) & 255, (y * 200 / width + noise) & 255,
                           (number * 10 + noise) & 255);
        }
    }
    return image;
}

QByteArray imageName(qint64 minute)
{
    const QDateTime time = QDateTime::fromSecsSinceEpoch(minute * 60, Qt::UTC);
    return time.toString(QStringLiteral("yyyyMMdd_HHmmssddHH")).toLatin1() + ".jpg";
}

// Empty files, and pictures at the end of the list.
void fill(const QString &folder, int names, int pictures, double megapixels)
{
    QDir().mkpath(folder);
    const QByteArray root = QFile::encodeName(folder) + '/';
    QByteArrayList sources;
    for (int i = 0; i < kPictures; ++i) {
        const QString path = folder + QStringLiteral("/picture%1").arg(i);
        picture(megapixels, i).save(path, "JPEG", 85);
        sources.append(QFile::encodeName(path));
    }
    for (int i = 0; i < names; ++i) {
        const QByteArray path = root + imageName(kFirstMinute + i);
        if (i >= names - pictures) {
            static_cast<void>(::link(sources[i % kPictures].constData(), path.constData()));
        } else {
            ::close(::open(path.constData(), O_CREAT | O_WRONLY, 0644));
        }
    }
    for (const QByteArray &source : sources) {
        ::unlink(source.constData());
    }
}

double residentMb()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    static_cast<void>(file.open(QIODevice::ReadOnly));
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

void pressUp(QWidget &list)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Up, Qt::NoModifier);
        QCoreApplication::sendEvent(&list, &event);
    }
}

// Longest time between two turns of the event loop while `done` is false.
double longestGapMs(const std::function<bool()> &done)
{
    double longest = 0;
    QElapsedTimer sinceTurn;
    sinceTurn.start();
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, static_cast<double>(sinceTurn.nsecsElapsed()) / 1e6);
        sinceTurn.restart();
    }
    return longest;
}

} // namespace

int main(int argc, char **argv)
{
    keepMemoryBetweenPasses();
    const QApplication application(argc, argv);
    if (argc != 4) {
        QTextStream(stderr) << "browse_bench NAMES MEGAPIXELS STEPS\n";
        return 2;
    }
    const int names = QString::fromLocal8Bit(argv[1]).toInt();
    const double megapixels = QString::fromLocal8Bit(argv[2]).toDouble();
    const int steps = QString::fromLocal8Bit(argv[3]).toInt();
    const Folder folder(url);
    House house(folder.path());
    CaptureEngine &engine = house.engine();
    fill(engine.storage().native(
             engine.storage().folderText(engine.services().table.CameraFolderName({0, 0}))),
         names, std::min(names, steps + 20), megapixels);

    SmtpClient mail;
    BrowserEngine images(engine, mail);
    planche window(images.browser(), engine.services(), images.loader());
    QListView &list = *window.findChild<QListView *>(QStringLiteral("LstDir"));
    QElapsedTimer opening;
    opening.start();
    window.present();
    images.browser().begin();
    const auto isShown = [&] {
        return images.browser().lists().files().count() == names && images.loader().isIdle() &&
               !window.findChild<QWidget *>(QStringLiteral("Vue9"))
                    ->accessibleDescription()
                    .isEmpty();
    };
    const double openGap = longestGapMs(isShown);
    const double openMs = static_cast<double>(opening.nsecsElapsed()) / 1e6;

    const int decodedBefore = images.pictures().decodes();
    double gap = 0;
    double early = 0;
    for (int step = 0; step < steps; ++step) {
        pressUp(list);
        bool turned = false;
        gap = std::max(gap, longestGapMs([&] {
                           return std::exchange(turned, true) && images.loader().isIdle();
                       }));
        early = step == steps / 20 ? residentMb() : early;
    }
    const double decodes = images.pictures().decodes() - decodedBefore;
    QTextStream(stdout) << "{\"bench\":\"browse\",\"names\":" << names
                        << ",\"megapixels\":" << megapixels << ",\"open_ms\":" << openMs
                        << ",\"open_gap_ms\":" << openGap << ",\"steps\":" << steps
                        << ",\"gap_ms\":" << gap << ",\"decodes_per_step\":" << decodes / steps
                        << ",\"early_mb\":" << early << ",\"late_mb\":" << residentMb()
                        << ",\"limit_mb\":150}\n";
    images.browser().close();
    return 0;
}
