// A reader of folders, with its results awaited.
#pragma once

#include "browser/FolderReader.h"
#include "support/RunTask.h"

#include <QDeadlineTimer>

#include <stdexcept>

namespace velmora::test {

using Names = std::shared_ptr<const ImageNames>;

class Reading
{
public:
    explicit Reading(Clock &clock)
        : reader_(clock)
    {
    }

    Names names(const QString &folder, std::stop_token stop = {})
    {
        Names result;
        runToEnd(fetchNames(folder, std::move(stop), &result), kLimit);
        return result;
    }

    std::optional<NewestImage> newest(const QString &folder, std::stop_token stop = {})
    {
        std::optional<NewestImage> result;
        runToEnd(fetchNewest(folder, std::move(stop), &result), kLimit);
        return result;
    }

    /// Name of the newest image.
    QByteArray newestName(const QString &folder) { return newest(folder).value().name; }

    /// Reads a folder that has just changed until its list is kept.
    Names keptNames(const QString &folder)
    {
        const QDeadlineTimer deadline(kLimit);
        Names before = names(folder);
        for (Names now = names(folder); now != before; now = names(folder)) {
            if (deadline.hasExpired()) {
                throw std::runtime_error("the folder's list is not kept");
            }
            before = now;
        }
        return before;
    }

private:
    static constexpr std::chrono::seconds kLimit{30};

    QCoro::Task<> fetchNames(QString folder, std::stop_token stop, Names *result)
    {
        *result = co_await reader_.names(folder, stop);
    }

    QCoro::Task<> fetchNewest(QString folder, std::stop_token stop,
                              std::optional<NewestImage> *result)
    {
        *result = co_await reader_.newest(folder, stop);
    }

    FolderReader reader_;
};

} // namespace velmora::test
