// An import run over a folder of pictures compared with `cp` of the same folder, alternating in one
// run: the time of each, and the longest gap of the event loop while the program copies.
//   import_bench FOLDER FILES BYTES ROUNDS
// FOLDER: an existing one on the disk to be measured; whatever is made in it is removed.
#include "tools/ImportRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <unistd.h>

namespace {

using namespace velmora;

QByteArray randomBytes(qint64 count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    QRandomGenerator random(1);
    for (char &byte : bytes) {
        byte = static_cast<char>(random.bounded(256));
    }
    return bytes;
}

void fill(const QString &folder, int files, qint64 bytes)
{
    QDir().mkpath(folder);
    const QByteArray content = randomBytes(bytes);
    for (int i = 0; i < files; ++i) {
        QFile file(folder + QStringLiteral("/IMG_%1.jpg").arg(i, 5, 10, QLatin1Char('0')));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != bytes) {
            qFatal("the disk cannot hold the pictures");
        }
    }
}

double median(QList<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

struct Figures
{
    double ms = 0;
    double gapMs = 0;
    int copied = 0;
};

QCoro::Task<> drive(ImportRun *run, ImportOrder order, Figures *figures, bool *done)
{
    const ImportResult result = co_await run->run(order, {}, {});
    figures->copied = result.copied;
    *done = true;
}

Figures import(const QString &source, const QString &target)
{
    SystemClock clock;
    Gate gate;
    ImportRun run(clock, gate);
    Figures figures;
    bool done = false;
    QElapsedTimer whole;
    QElapsedTimer turn;
    whole.start();
    turn.start();
    const auto task = drive(&run,
                            {source, target, source, target, target + QStringLiteral("/../tmp"),
                             QStringLiteral("*.jpg")},
                            &figures, &done);
    while (!done) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        figures.gapMs = std::max(figures.gapMs, static_cast<double>(turn.nsecsElapsed()) / 1e6);
        turn.restart();
    }
    figures.ms = static_cast<double>(whole.nsecsElapsed()) / 1e6;
    return figures;
}

double copyMs(const QString &source, const QString &target)
{
    QElapsedTimer timer;
    timer.start();
    QProcess copy;
    copy.start(QStringLiteral("cp"), {QStringLiteral("-r"), QStringLiteral("--reflink=auto"),
                                      source + QStringLiteral("/."), target});
    copy.waitForFinished(-1);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// Lets the disk come to rest before each measurement, as far as possible.
void makeEmpty(const QString &folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    ::sync();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 5) {
        QTextStream(stderr) << "import_bench FOLDER FILES BYTES ROUNDS\n";
        return 2;
    }
    const QTemporaryDir place(QString::fromLocal8Bit(argv[1]) +
                              QStringLiteral("/velmora-import-XXXXXX"));
    const int files = QString::fromLocal8Bit(argv[2]).toInt();
    const qint64 bytes = QString::fromLocal8Bit(argv[3]).toLongLong();
    const QString source = place.filePath(QStringLiteral("from"));
    const QString target = place.filePath(QStringLiteral("to"));
    fill(source, files, bytes);
    QList<double> own;
    QList<double> peer;
    double gapMs = 0;
    int copied = files;
    for (int round = 0; round < QString::fromLocal8Bit(argv[4]).toInt(); ++round) {
        makeEmpty(target);
        peer.append(copyMs(source, target));
        makeEmpty(target);
        const Figures figures = import(source, target);
        own.append(figures.ms);
        gapMs = std::max(gapMs, figures.gapMs);
        copied = std::min(copied, figures.copied);
    }
    QTextStream(stdout) << "{\"bench\":\"import\",\"files\":" << files << ",\"bytes\":" << bytes
                        << ",\"copied\":" << copied << ",\"import_ms\":" << median(own)
                        << ",\"cp_ms\":" << median(peer)
                        << ",\"ratio\":" << median(own) / median(peer)
                        << ",\"limit_ratio\":1.0,\"gap_ms\":" << gapMs << ",\"limit_gap_ms\":16}\n";
    return copied == files ? 0 : 1;
}
