// A file descriptor that closes itself.
#pragma once

#include <unistd.h>
#include <utility>

namespace velmora {

class UniqueFd
{
public:
    explicit UniqueFd(int fd)
        : fd_(fd)
    {
    }

    UniqueFd(UniqueFd &&other) noexcept
        : fd_(std::exchange(other.fd_, -1))
    {
    }

    UniqueFd(const UniqueFd &) = delete;
    UniqueFd &operator=(const UniqueFd &) = delete;

    UniqueFd &operator=(UniqueFd &&other) noexcept
    {
        UniqueFd old(std::exchange(fd_, std::exchange(other.fd_, -1)));
        return *this;
    }

    ~UniqueFd()
    {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    /// True when a file is open.
    explicit operator bool() const { return fd_ >= 0; }

    [[nodiscard]] int get() const { return fd_; }

private:
    int fd_;
};

} // namespace velmora
