// A file descriptor with one owner.
#include "base/UniqueFd.h"

#include <gtest/gtest.h>

#include <fcntl.h>

namespace velmora {
namespace {

int openSomething()
{
    return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool isOpen(int fd)
{
    return ::fcntl(fd, F_GETFD) >= 0;
}

TEST(UniqueFd, ClosesWithItsScope)
{
    int fd = -1;
    {
        const UniqueFd owner(openSomething());
        fd = owner.get();
        EXPECT_TRUE(isOpen(fd));
    }
    EXPECT_FALSE(isOpen(fd));
}

TEST(UniqueFd, HandsTheFileOnWhenMoved)
{
    UniqueFd first(openSomething());
    const int fd = first.get();
    {
        const UniqueFd second(std::move(first));
        EXPECT_EQ(second.get(), fd);
        EXPECT_TRUE(isOpen(fd));
    }
    EXPECT_FALSE(isOpen(fd));
}

TEST(UniqueFd, TellsWhetherAFileIsOpen)
{
    EXPECT_TRUE(UniqueFd(openSomething()));
    EXPECT_FALSE(UniqueFd(::open("/no/such/file", O_RDONLY | O_CLOEXEC)));
    EXPECT_FALSE(UniqueFd(-1));
}

} // namespace
} // namespace velmora
