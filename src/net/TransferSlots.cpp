#include "net/TransferSlots.h"

#include <algorithm>
#include <dirent.h>
#include <sys/resource.h>
#include <utility>

namespace velmora {
namespace {

// Two descriptors for waking libcurl; two sockets while two of a server's addresses are tried, or
// two descriptors by which the lookup of its name reports; and a working file.
constexpr long kDescriptorsEach = 6;
// For the settings, the log, folders being read, the desktop's opener.
constexpr long kReserve = 12;
constexpr int kUsuallyOpen = 40;

int openDescriptors()
{
    DIR *const folder = ::opendir("/proc/self/fd");
    if (folder == nullptr) {
        return kUsuallyOpen;
    }
    int count = -3; // ".", ".." and the folder itself
    while (::readdir(folder) != nullptr) {
        ++count;
    }
    ::closedir(folder);
    return count;
}

long mostDescriptors()
{
    rlimit limit = {};
    const bool known = ::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    constexpr rlim_t kPlenty = 1 << 20;
    return static_cast<long>(known ? std::min(limit.rlim_cur, kPlenty) : kPlenty);
}

} // namespace

TransferSlots::TransferSlots(std::function<int()> held)
    : held_(std::move(held))
{
}

bool TransferSlots::hasRoom(int running)
{
    if (running == 0) {
        others_ = openDescriptors() - held_();
        return true;
    }
    return others_ + held_() + (running + 1) * kDescriptorsEach + kReserve <= mostDescriptors();
}

} // namespace velmora
