// The time from the program's start to its first painted window and to its complete sheet, with a
// very full camera selected, and the memory that it then takes; compared with an empty window of
// the same toolkit, and with a bare window that lists the same folder and decodes the same
// pictures.
//   startup_bench VELMORA EMPTY_WINDOW BARE_BROWSER NAMES RUNS
// The toolkit's own log, which all three are made to write, tells what was painted.
#include "FullCamera.h"
#include "Measures.h"
#include "settings/Keys.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <utility>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kCells = 10;
constexpr double kMegapixels = 2;
constexpr double kFirstLimit = 1.7;  // of the empty window's time
constexpr double kSheetLimit = 0.85; // of the bare window's time
constexpr double kLaterLimitMs = 100;
constexpr double kMemoryLimit = 2.0; // of the empty window's
constexpr int kSettleMs = 1500;      // after the start, when everything has been painted
const QByteArray kFlush = "Flushing top level";

struct Start
{
    double firstMs = 0; // to the first painted window
    double sheetMs = 0; // to the last of the ten cells
    double residentMb = 0;
};

bool paintsCell(const QByteArray &line)
{
    return line.contains("Drawing") && line.contains("name=\"Vue");
}

// Takes the times of the program's lines as they arrive.
void watch(QProcess &program, Start &start)
{
    QElapsedTimer time;
    time.start();
    bool cellPainted = false;
    while (time.elapsed() < kSettleMs) {
        program.waitForReadyRead(static_cast<int>(kSettleMs - time.elapsed()));
        const double now = msSince(time);
        while (program.canReadLine()) {
            const QByteArray line = program.readLine();
            cellPainted = cellPainted || paintsCell(line);
            if (line.contains(kFlush)) {
                start.firstMs = start.firstMs > 0 ? start.firstMs : now;
                start.sheetMs = std::exchange(cellPainted, false) ? now : start.sheetMs;
            }
        }
    }
}

Start run(const QString &path, const QStringList &arguments)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                       QStringLiteral("qt.widgets.painting=true"));
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    program.setProcessEnvironment(environment);
    program.setReadChannel(QProcess::StandardError);
    Start start;
    program.start(path, arguments);
    watch(program, start);
    start.residentMb = residentMb(program.processId());
    program.terminate();
    program.waitForFinished();
    return start;
}

QString makeHouse(const QString &folder, int names)
{
    const QString camera = folder + QStringLiteral("/drives/c/in/http%3A%2F%2Fcam%2Fa%2Ejpg");
    fillCamera(camera, names, std::min(names, 2 * kCells), kMegapixels);
    const SettingsFile settings(folder);
    settings.write(u"Liste0", keys::kGroupSwitch, 0);
    settings.write(u"Liste0", u"lst0", QStringLiteral("http://cam/a.jpg"));
    return camera;
}

struct Starts
{
    QList<double> firstMs;
    QList<double> sheetMs;
    QList<double> laterMs; // from the first window to the sheet
    QList<double> residentMb;

    void add(const Start &start)
    {
        firstMs.append(start.firstMs);
        sheetMs.append(start.sheetMs);
        laterMs.append(start.sheetMs - start.firstMs);
        residentMb.append(start.residentMb);
    }
};

void print(const Starts &program, const Starts &empty, const Starts &bare, int names)
{
    Report(QStringLiteral("startup"))
        .add(QStringLiteral("names"), names)
        .add(QStringLiteral("first_ms"), median(program.firstMs))
        .add(QStringLiteral("empty_ms"), median(empty.firstMs))
        .limited(QStringLiteral("first_to_empty"), median(program.firstMs) / median(empty.firstMs),
                 kFirstLimit)
        .add(QStringLiteral("sheet_ms"), median(program.sheetMs))
        .add(QStringLiteral("bare_sheet_ms"), median(bare.sheetMs))
        .limited(QStringLiteral("sheet_to_bare"), median(program.sheetMs) / median(bare.sheetMs),
                 kSheetLimit)
        .limited(QStringLiteral("sheet_later_ms"), median(program.laterMs), kLaterLimitMs)
        .add(QStringLiteral("bare_sheet_later_ms"), median(bare.laterMs))
        .add(QStringLiteral("resident_mb"), median(program.residentMb))
        .add(QStringLiteral("empty_mb"), median(empty.residentMb))
        .limited(QStringLiteral("memory_ratio"),
                 median(program.residentMb) / median(empty.residentMb), kMemoryLimit)
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 6) {
        QTextStream(stderr) << "startup_bench VELMORA EMPTY_WINDOW BARE_BROWSER NAMES RUNS\n";
        return 2;
    }
    const QTemporaryDir folder;
    const QString camera = makeHouse(folder.path(), words.at(4).toInt());
    Starts program;
    Starts empty;
    Starts bare;
    for (int i = 0; i < words.at(5).toInt(); ++i) {
        program.add(run(words.at(1), {QStringLiteral("--program-folder"), folder.path()}));
        empty.add(run(words.at(2), {}));
        bare.add(run(words.at(3), {camera}));
    }
    print(program, empty, bare, words.at(4).toInt());
    return 0;
}
