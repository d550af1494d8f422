// An import run over a folder of pictures compared with `cp` of the same folder, alternating in one
// run: the time of each, and the longest gap of the event loop while the program copies.
//   import_bench FOLDER [FILES [BYTES [ROUNDS]]]
// FOLDER: an existing one on the disk to be measured; whatever is made in it is removed.
#include "Measures.h"
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
using namespace velmora::bench;

constexpr double kLimit = 1.0; // of cp's time
constexpr double kGapLimitMs = 16;

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
        figures.gapMs = std::max(figures.gapMs, msSince(turn));
        turn.restart();
    }
    figures.ms = msSince(whole);
    return figures;
}

double copyMs(const QString &source, const QString &target)
{
    return msOf([&] {
        QProcess copy;
        copy.start(QStringLiteral("cp"), {QStringLiteral("-r"), QStringLiteral("--reflink=auto"),
                                          source + QStringLiteral("/."), target});
        copy.waitForFinished(-1);
    });
}

// Lets the disk come to rest before each measurement, as far as possible.
void makeEmpty(const QString &folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    ::sync();
}

struct Rounds
{
    QList<double> ownMs;
    QList<double> peerMs;
    QList<double> gapMs;
    int copied = 0; // in the round with the fewest

    void addOwn(const QString &source, const QString &target)
    {
        makeEmpty(target);
        const Figures figures = import(source, target);
        ownMs.append(figures.ms);
        gapMs.append(figures.gapMs);
        copied = ownMs.size() == 1 ? figures.copied : std::min(copied, figures.copied);
    }

    void addPeer(const QString &source, const QString &target)
    {
        makeEmpty(target);
        peerMs.append(copyMs(source, target));
    }
};

// Which of the two begins changes from round to round.
Rounds measure(const QString &source, const QString &target, int rounds)
{
    Rounds found;
    for (int round = 0; round < rounds; ++round) {
        const bool isPeerFirst = round % 2 == 0;
        if (isPeerFirst) {
            found.addPeer(source, target);
        }
        found.addOwn(source, target);
        if (!isPeerFirst) {
            found.addPeer(source, target);
        }
    }
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 2) {
        QTextStream(stderr) << "import_bench FOLDER [FILES [BYTES [ROUNDS]]]\n";
        return 2;
    }
    const QTemporaryDir place(words.at(1) + QStringLiteral("/velmora-import-XXXXXX"));
    const int files = words.value(2, QStringLiteral("3000")).toInt();
    const qint64 bytes = words.value(3, QStringLiteral("200000")).toLongLong();
    const QString source = place.filePath(QStringLiteral("from"));
    fill(source, files, bytes);
    const Rounds found = measure(source, place.filePath(QStringLiteral("to")),
                                 words.value(4, QStringLiteral("7")).toInt());
    Report(QStringLiteral("import"))
        .add(QStringLiteral("files"), files)
        .add(QStringLiteral("bytes"), static_cast<double>(bytes))
        .add(QStringLiteral("rounds"), static_cast<double>(found.ownMs.size()))
        .add(QStringLiteral("copied"), found.copied)
        .add(QStringLiteral("import_ms"), median(found.ownMs))
        .add(QStringLiteral("cp_ms"), median(found.peerMs))
        .limited(QStringLiteral("to_cp"), median(found.ownMs) / median(found.peerMs), kLimit)
        .limited(QStringLiteral("longest_gap_ms"), largest(found.gapMs), kGapLimitMs)
        .print();
    return found.copied == files ? 0 : 1;
}
