#include "base/ProfileLock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kStep = 1ms; // a write takes about as long
constexpr int kMostSteps = 500;

UniqueFd openFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    return UniqueFd(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

} // namespace

ProfileLock::ProfileLock(const QString &path)
    : folder_(openFolderOf(path))
{
    for (int step = 0; folder_ && step < kMostSteps; ++step) {
        if (::flock(folder_.get(), LOCK_EX | LOCK_NB) == 0 ||
            (errno != EWOULDBLOCK && errno != EINTR)) {
            return;
        }
        std::this_thread::sleep_for(kStep);
    }
}

} // namespace velmora
