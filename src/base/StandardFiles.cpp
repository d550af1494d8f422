#include "base/StandardFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace velmora {

// An opened file gets the lowest number that is free, which is this one if those below are taken.
void holdStandardFiles()
{
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int wrongWay = fd == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (::fcntl(fd, F_GETFD) < 0 && errno == EBADF && ::open("/dev/null", wrongWay) < 0) {
            return; // without that file there is nothing to hold the places with
        }
    }
}

} // namespace velmora
