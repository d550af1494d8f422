#include "CameraFolders.h"

#include "base/UniqueFd.h"
#include "capture/ImageName.h"

#include <QDir>
#include <QFile>

#include <chrono>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora::bench {
namespace {

constexpr mode_t kImage = S_IFREG | 0644;

constexpr int kGroupFolders = 10;
constexpr std::chrono::local_days kNewestDay{std::chrono::year{2025} / std::chrono::December / 1};

// The last newestDay images are of one day.
QString makeFolder(const QString &path, int images, int newestDay)
{
    QDir().mkpath(path);
    const UniqueFd folder(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY));
    WallTime time = kNewestDay - std::chrono::minutes{images - newestDay};
    for (int i = 0; i < images; ++i) {
        const QByteArray name = QFile::encodeName(imageName(time, time, QStringLiteral(".jpg")));
        if (::mknodat(folder.get(), name.constData(), kImage, 0) != 0) {
            throw std::runtime_error("an image cannot be made");
        }
        time += std::chrono::minutes{1};
    }
    return path;
}

} // namespace

CameraFolders::CameraFolders(const QString &parent, const Sizes &sizes)
    : parent_(parent + QStringLiteral("/listing_bench_XXXXXX"))
    , large_(makeFolder(parent_.filePath(QStringLiteral("large")), sizes.large, sizes.newestDay))
    , medium_(makeFolder(parent_.filePath(QStringLiteral("medium")), sizes.medium, sizes.newestDay))
{
    for (int i = 0; i < kGroupFolders; ++i) {
        group_.push_back(
            makeFolder(parent_.filePath(QString::number(i)), sizes.group, sizes.newestDay));
    }
}

long readPlainly(const QString &path, std::size_t bufferBytes)
{
    const UniqueFd folder(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY));
    std::vector<char> buffer(bufferBytes);
    long names = 0;
    long filled = 0;
    while ((filled = ::syscall(SYS_getdents64, folder.get(), buffer.data(), bufferBytes)) > 0) {
        for (long at = 0; at < filled; ++names) {
            at += reinterpret_cast<const dirent64 *>(buffer.data() + at)->d_reclen;
        }
    }
    return names;
}

long readByLibrary(const QString &path)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(
        ::opendir(QFile::encodeName(path).constData()), ::closedir);
    long names = 0;
    while (folder && ::readdir(folder.get()) != nullptr) {
        ++names;
    }
    return names;
}

void runLs(const QString &path)
{
    QByteArray folder = QFile::encodeName(path);
    QByteArray program("ls");
    char *arguments[] = {program.data(), folder.data(), nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    if (::posix_spawnp(&child, "ls", &actions, nullptr, arguments, environ) == 0) {
        ::waitpid(child, nullptr, 0);
    }
    ::posix_spawn_file_actions_destroy(&actions);
}

} // namespace velmora::bench
