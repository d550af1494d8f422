#include "base/OwnLibrary.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

const char *const kProgram = "/proc/self/exe";

QString folderOfProgram() noexcept
{
    const QString program = QFile::symLinkTarget(QString::fromLatin1(kProgram));
    return program.isEmpty() ? QString() : QFileInfo(program).path();
}

// Read at the start: of a program that has been replaced or removed since, the system tells
// another place.
const QString kProgramFolder = folderOfProgram();

bool isTrusted(uid_t owner)
{
    struct stat program = {};
    return owner == 0 || owner == ::geteuid() ||
           (::stat(kProgram, &program) == 0 && owner == program.st_uid);
}

// Of what a path leads to and, when it is a link, of the link: a stranger's could lead elsewhere a
// moment later.
bool isTrusted(const QByteArray &path, mode_t type)
{
    struct stat entry = {};
    struct stat target = {};
    return ::lstat(path.constData(), &entry) == 0 && ::stat(path.constData(), &target) == 0 &&
           (target.st_mode & S_IFMT) == type && isTrusted(entry.st_uid) && isTrusted(target.st_uid);
}

// Throws NoLibrary.
void *functionIn(const QByteArray &path, const char *function)
{
    void *const library = ::dlopen(path.constData(), RTLD_NOW);
    void *const found = library != nullptr ? ::dlsym(library, function) : nullptr;
    if (found == nullptr) {
        const char *const fault = ::dlerror();
        throw NoLibrary(fault != nullptr ? fault : path.constData());
    }
    return found;
}

} // namespace

QStringList libraryFolders(const QString &program)
{
    QStringList folders;
    if (!program.isEmpty()) {
        folders.append(program);
    }
    // a copy may stand in a folder whose neighbours anyone can make
    if (program.endsWith(QStringLiteral("/bin"))) {
        folders.append(program + QStringLiteral("/../lib"));
        folders.append(program + QStringLiteral("/../" VELMORA_LIBRARY_FOLDER));
    }
    if constexpr (*VELMORA_BUILT_LIBRARIES != '\0') {
        folders.append(QStringLiteral(VELMORA_BUILT_LIBRARIES));
    }
    folders.append(QStringLiteral(VELMORA_INSTALLED_LIBRARIES));
    folders.append(QStringLiteral("/usr/lib/velmora/parts"));
    return folders;
}

void *libraryFunction(const QString &library, const char *function)
{
    std::optional<NoLibrary> first;
    for (const QString &place : libraryFolders(kProgramFolder)) {
        const QByteArray folder = QFile::encodeName(place);
        const QByteArray path = folder + '/' + QFile::encodeName(library);
        if (isTrusted(folder, S_IFDIR) && isTrusted(path, S_IFREG)) {
            try {
                return functionIn(path, function);
            } catch (const NoLibrary &fault) {
                first = first.value_or(fault);
            }
        }
    }
    throw first.value_or(
        NoLibrary(library.toStdString() +
                  " is neither beside the program nor where it was built or installed"));
}

} // namespace velmora
