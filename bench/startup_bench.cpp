// The time from the program's start to its first painted window and to its complete sheet, with a
// very full camera selected, and the memory that it then takes; compared with an empty window of
// the same toolkit.
//   startup_bench VELMORA EMPTY_WINDOW NAMES RUNS
// The toolkit's own log, which both programs are made to write, tells what was painted.
#include "FullCamera.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <unistd.h>

namespace {

using namespace velmora::bench;

constexpr int kCells = 10;
constexpr double kMegapixels = 2;
constexpr int kSettleMs = 1500; // after the start, when everything has been painted
const QByteArray kFlush = "Flushing top level";

struct Start
{
    double firstMs = 0; // to the first painted window
    double sheetMs = 0; // to the last of the ten cells
    double residentMb = 0;
};

double residentMb(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/statm").arg(process));
    static_cast<void>(file.open(QIODevice::ReadOnly));
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

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
        const double now = static_cast<double>(time.nsecsElapsed()) / 1e6;
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

void makeHouse(const QString &folder, int names)
{
    fillCamera(folder + QStringLiteral("/drives/c/in/http%3A%2F%2Fcam%2Fa%2Ejpg"), names,
               std::min(names, 2 * kCells), kMegapixels);
    QFile settings(folder + QStringLiteral("/Velmora.ini"));
    static_cast<void>(settings.open(QIODevice::WriteOnly));
    settings.write("[Control]\r\nStRep=C:\\in\\\r\n[Liste0]\r\nLstAct=0\r\n"
                   "lst0=http://cam/a.jpg\r\n");
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        QTextStream(stderr) << "startup_bench VELMORA EMPTY_WINDOW NAMES RUNS\n";
        return 2;
    }
    const QTemporaryDir folder;
    makeHouse(folder.path(), arguments.at(3).toInt());
    QList<double> first, sheet, memory, emptyFirst, emptyMemory;
    for (int i = 0; i < arguments.at(4).toInt(); ++i) {
        const Start program =
            run(arguments.at(1), {QStringLiteral("--program-folder"), folder.path()});
        const Start empty = run(arguments.at(2), {});
        first.append(program.firstMs);
        sheet.append(program.sheetMs - program.firstMs);
        memory.append(program.residentMb);
        emptyFirst.append(empty.firstMs);
        emptyMemory.append(empty.residentMb);
    }
    QTextStream(stdout) << "{\"bench\":\"startup\",\"first_ms\":" << median(first)
                        << ",\"empty_ms\":" << median(emptyFirst)
                        << ",\"ratio\":" << median(first) / median(emptyFirst)
                        << ",\"sheet_later_ms\":" << median(sheet)
                        << ",\"limit_ms\":100,\"resident_mb\":" << median(memory)
                        << ",\"empty_mb\":" << median(emptyMemory)
                        << ",\"memory_ratio\":" << median(memory) / median(emptyMemory) << "}\n";
    return 0;
}
