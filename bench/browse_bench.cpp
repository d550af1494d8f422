// Stepping through a very full camera folder in the browser's window, one image per key press: the
// longest turn of the event loop, pictures decoded per step, and resident memory.
//   browse_bench NAMES MEGAPIXELS STEPS
#include "BenchHouse.h"
#include "FullCamera.h"
#include "base/KeptMemory.h"
#include "tools/BrowserEngine.h"
#include "ui/planche.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QListView>
#include <QTextStream>

#include <unistd.h>

namespace {

using namespace velmora;
using namespace velmora::bench;

QString url(int group, int row)
{
    return group == 0 && row == 0 ? QStringLiteral("http://127.0.0.1:9/one.jpg") : QString();
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

/// The longest turn of the event loop: by the clock, and the program's own share of it.
struct LongestTurn
{
    double gapMs = 0;
    double processorMs = 0;
};

void addTurnsUntil(const std::function<bool()> &done, LongestTurn &longest)
{
    QElapsedTimer sinceTurn;
    sinceTurn.start();
    double before = processorMs();
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        const double now = processorMs();
        longest.gapMs =
            std::max(longest.gapMs, static_cast<double>(sinceTurn.nsecsElapsed()) / 1e6);
        longest.processorMs = std::max(longest.processorMs, now - before);
        before = now;
        sinceTurn.restart();
    }
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
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
    fillCamera(engine.storage().native(
                   engine.storage().folderText(engine.table().CameraFolderName({0, 0}))),
               names, std::min(names, steps + 20), megapixels);

    SmtpClient mail;
    BrowserEngine images(engine, mail);
    planche window(images.browser(), engine, house.view(), images.loader());
    QListView &list = *window.findChild<QListView *>(QStringLiteral("LstDir"));
    QElapsedTimer opening;
    opening.start();
    window.present();
    images.browser().begin();
    const auto isShown = [&] {
        return images.browser().shown().files.count() == names && images.loader().isIdle() &&
               !window.findChild<QWidget *>(QStringLiteral("Vue9"))
                    ->accessibleDescription()
                    .isEmpty();
    };
    LongestTurn open;
    addTurnsUntil(isShown, open);
    const double openMs = static_cast<double>(opening.nsecsElapsed()) / 1e6;

    const int decodedBefore = images.pictures().decodes();
    LongestTurn turn;
    double early = 0;
    for (int step = 0; step < steps; ++step) {
        pressUp(list);
        bool turned = false;
        addTurnsUntil([&] { return std::exchange(turned, true) && images.loader().isIdle(); },
                      turn);
        early = step == steps / 20 ? residentMb() : early;
    }
    const double decodes = images.pictures().decodes() - decodedBefore;
    QTextStream(stdout) << "{\"bench\":\"browse\",\"names\":" << names
                        << ",\"megapixels\":" << megapixels << ",\"open_ms\":" << openMs
                        << ",\"open_gap_ms\":" << open.gapMs
                        << ",\"open_processor_ms\":" << open.processorMs << ",\"steps\":" << steps
                        << ",\"gap_ms\":" << turn.gapMs << ",\"processor_ms\":" << turn.processorMs
                        << ",\"decodes_per_step\":" << decodes / steps << ",\"early_mb\":" << early
                        << ",\"late_mb\":" << residentMb() << ",\"limit_mb\":150}\n";
    images.browser().close();
    return 0;
}
