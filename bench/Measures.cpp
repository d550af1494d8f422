#include "Measures.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <ctime>
#include <sys/resource.h>
#include <unistd.h>

namespace velmora::bench {
namespace {

constexpr double kNsPerMs = 1e6;
constexpr double kMsPerSecond = 1e3;
constexpr double kUsPerMs = 1e3;
constexpr double kBytesPerMb = 1024.0 * 1024.0;
constexpr int kDigits = 4;

double milliseconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) * kMsPerSecond +
           static_cast<double>(time.tv_usec) / kUsPerMs;
}

double residentMbOf(const QString &process)
{
    QFile file(QStringLiteral("/proc/%1/statm").arg(process));
    static_cast<void>(file.open(QIODevice::ReadOnly));
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / kBytesPerMb;
}

// Four significant digits, but all of a whole number.
QString numberText(double value)
{
    const bool isWhole = value == static_cast<double>(static_cast<qint64>(value));
    return isWhole ? QString::number(static_cast<qint64>(value))
                   : QString::number(value, 'g', value < 1000 ? kDigits : kDigits + 3);
}

} // namespace

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double largest(const QList<double> &values)
{
    return *std::max_element(values.begin(), values.end());
}

double msSince(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / kNsPerMs;
}

double msOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return msSince(timer);
}

double processorMs()
{
    timespec time = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * kMsPerSecond +
           static_cast<double>(time.tv_nsec) / kNsPerMs;
}

double childrenProcessorMs()
{
    rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

double residentMb()
{
    return residentMbOf(QStringLiteral("self"));
}

double residentMb(qint64 process)
{
    return residentMbOf(QString::number(process));
}

Report::Report(const QString &bench)
{
    add(QStringLiteral("bench"), bench);
}

Report &Report::add(const QString &name, double value)
{
    entries_.append(QStringLiteral("\"%1\":%2").arg(name, numberText(value)));
    return *this;
}

Report &Report::add(const QString &name, const QString &text)
{
    entries_.append(QStringLiteral("\"%1\":\"%2\"").arg(name, text));
    return *this;
}

Report &Report::limited(const QString &name, double value, double limit)
{
    add(name, value);
    add(name + QStringLiteral("_limit"), limit);
    entries_.append(
        QStringLiteral("\"%1_met\":%2")
            .arg(name, value <= limit ? QStringLiteral("true") : QStringLiteral("false")));
    return *this;
}

void Report::print() const
{
    QTextStream(stdout) << '{' << entries_.join(u',') << "}\n";
}

} // namespace velmora::bench
