// The program's own libraries, which it loads when it needs them.
#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace velmora {

/// None can be loaded that has the function: what the system says about it.
class NoLibrary : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Where libraries are looked for, the first place first: beside the program, where its folder's
/// neighbours hold libraries, where it was built, and where it is installed. Native paths. program:
/// the folder of the executable; empty when it is not known.
[[nodiscard]] QStringList libraryFolders(const QString &program);

/// Loads the first library of that name that has the function, and returns the function. Left are
/// those that belong to none of the system, this user and the owner of the program. Throws
/// NoLibrary.
[[nodiscard]] void *libraryFunction(const QString &library, const char *function);

} // namespace velmora
