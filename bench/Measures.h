// What all measurements have in common: clocks, memory, medians, and the line that reports them.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace velmora::bench {

/// The middle value, the greater of the two middle ones.
[[nodiscard]] double median(QList<double> values);

/// The largest value.
[[nodiscard]] double largest(const QList<double> &values);

/// Milliseconds since the timer was started.
[[nodiscard]] double msSince(const QElapsedTimer &timer);

/// How long the work takes by the clock; milliseconds.
[[nodiscard]] double msOf(const std::function<void()> &work);

/// Processor time of this process so far; milliseconds.
[[nodiscard]] double processorMs();

/// Processor time of all its children that have ended; milliseconds.
[[nodiscard]] double childrenProcessorMs();

/// Resident memory; megabytes.
[[nodiscard]] double residentMb();
[[nodiscard]] double residentMb(qint64 process);

/// A line of JSON.
class Report
{
public:
    explicit Report(const QString &bench);

    Report &add(const QString &name, double value);
    Report &add(const QString &name, const QString &text);

    /// A figure with the limit that it is to stay within, and whether it does.
    Report &limited(const QString &name, double value, double limit);

    /// Writes the line to standard output.
    void print() const;

private:
    QStringList entries_;
};

} // namespace velmora::bench
