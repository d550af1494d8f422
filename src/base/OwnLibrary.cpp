#include "base/OwnLibrary.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>
#include <unistd.h>

namespace velmora {
namespace {

const QString kProgram = QStringLiteral("/proc/self/exe");

// A copy of the program may stand in a folder whose neighbours anyone can make: what the system,
// this user or the owner of the program has not put there is not run.
bool isTrusted(const QFileInfo &file)
{
    return file.exists() && (file.ownerId() == 0 || file.ownerId() == ::geteuid() ||
                             file.ownerId() == QFileInfo(kProgram).ownerId());
}

QByteArray pathOf(const QString &library)
{
    const QString program = QFileInfo(kProgram).canonicalPath();
    for (const QString &folder : libraryFolders(program)) {
        const QString path = folder + u'/' + library;
        if (isTrusted(QFileInfo(path))) {
            return QFile::encodeName(path);
        }
    }
    throw NoLibrary(QStringLiteral("%1 is neither in %2 nor where it is installed")
                        .arg(library, program)
                        .toLocal8Bit()
                        .toStdString());
}

} // namespace

QStringList libraryFolders(const QString &program)
{
    QStringList folders{
        program,
        program + QStringLiteral("/../lib"),
        program + QStringLiteral("/../" VELMORA_LIBRARY_FOLDER),
        QStringLiteral(VELMORA_INSTALLED_LIBRARIES),
        QStringLiteral("/usr/lib/velmora/parts"),
        QStringLiteral("/usr/local/lib/velmora/parts"),
    };
    if constexpr (*VELMORA_BUILT_LIBRARIES != '\0') {
        folders.append(QStringLiteral(VELMORA_BUILT_LIBRARIES));
    }
    return folders;
}

void *libraryFunction(const QString &library, const char *function)
{
    void *const loaded = ::dlopen(pathOf(library).constData(), RTLD_NOW);
    void *const found = loaded != nullptr ? ::dlsym(loaded, function) : nullptr;
    if (found == nullptr) {
        throw NoLibrary(::dlerror());
    }
    return found;
}

} // namespace velmora
