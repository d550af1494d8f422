// Camera images made for a measurement, and the decoder's own library as the peer to compare with.
#pragma once

#include "Measures.h"

#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <vector>

namespace velmora::bench {

/// A folder of different noisy JPEGs of one size: soft shapes with sensor noise, quality 85,
/// colours at half the resolution.
class JpegFolder
{
public:
    JpegFolder(QSize size, int count);

    /// Native paths.
    [[nodiscard]] const QStringList &paths() const { return paths_; }

private:
    QTemporaryDir folder_;
    QStringList paths_;
};

enum class PeerPixels { Rgb, Bgrx };

/// Reads a file and decodes it row by row with the library's defaults, reduced by the library to
/// the smallest M/8 that covers `least`; an empty size: not reduced. Returns the number of rows.
int decodeWithLibrary(const QString &path, QSize least, PeerPixels pixels);

/// Milliseconds for each of several kinds of work, their runs interleaved: by the clock, and of all
/// processors together, which a busy machine affects less.
class Contest
{
public:
    explicit Contest(std::size_t kinds)
        : clock_(kinds)
        , processor_(kinds)
    {
    }

    template <typename Work>
    void run(std::size_t kind, Work work)
    {
        const double processor = processorMs();
        clock_.at(kind).append(msOf(work));
        processor_.at(kind).append(processorMs() - processor);
    }

    [[nodiscard]] double medianMs(std::size_t kind) const { return median(clock_.at(kind)); }

    [[nodiscard]] double medianProcessorMs(std::size_t kind) const
    {
        return median(processor_.at(kind));
    }

private:
    std::vector<QList<double>> clock_;
    std::vector<QList<double>> processor_;
};

} // namespace velmora::bench
