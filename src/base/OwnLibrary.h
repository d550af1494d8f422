// The program's own libraries, which it loads when it needs them.
#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace velmora {

/// There is no such library, or it lacks the function: what the system says about it.
class NoLibrary : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Where libraries are looked for, the first place first: beside the program, where that folder's
/// neighbours are built or installed, where a system keeps them, and where they were built. Native
/// paths; program: the folder of the executable.
[[nodiscard]] QStringList libraryFolders(const QString &program);

/// The function of that name in the library, which is loaded. Throws NoLibrary.
[[nodiscard]] void *libraryFunction(const QString &library, const char *function);

} // namespace velmora
