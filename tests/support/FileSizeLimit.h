// A full disk: for the length of a scope no file of this process grows beyond a size.
#pragma once

#include <QtGlobal>

#include <csignal>
#include <stdexcept>
#include <sys/resource.h>

namespace velmora::test {

/// A write across the limit is cut short; the next one fails with EFBIG.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : signalBefore_(std::signal(SIGXFSZ, SIG_IGN))
    {
        if (::getrlimit(RLIMIT_FSIZE, &before_) != 0) {
            throw std::runtime_error("the file size limit cannot be read");
        }
        const rlimit limit{bytes, before_.rlim_max};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            throw std::runtime_error("the file size limit cannot be set");
        }
    }

    Q_DISABLE_COPY_MOVE(FileSizeLimit)

    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signalBefore_);
    }

private:
    void (*signalBefore_)(int);
    rlimit before_ = {};
};

} // namespace velmora::test
