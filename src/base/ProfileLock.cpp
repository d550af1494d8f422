#include "base/ProfileLock.h"

#include "base/OwnFile.h"
#include "base/WholeFileLock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kStep = 1ms; // a write takes about as long
constexpr int kMostSteps = 500;

UniqueFd openLockOf(const QString &path)
{
    const QFileInfo settings(path);
    const QString lock = settings.path() + QStringLiteral("/.") + settings.fileName();
    OwnFile opened = openOwnFile(QFile::encodeName(lock + QStringLiteral(".lock")));
    return opened.isTrusted ? std::move(opened.file) : UniqueFd(-1);
}

bool isBusy(int error)
{
    return error == EAGAIN || error == EACCES || error == EINTR;
}

} // namespace

ProfileLock::ProfileLock(const QString &path)
    : file_(openLockOf(path))
{
    for (int step = 0; file_ && step < kMostSteps; ++step) {
        const bool isHeld = lockWholeFile(file_.get());
        if (isHeld || !isBusy(errno)) {
            return;
        }
        std::this_thread::sleep_for(kStep);
    }
}

} // namespace velmora
