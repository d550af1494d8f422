// The folder in which the program keeps its settings and its log.
#pragma once

#include <QString>

namespace velmora {

/// What to say when it cannot be made.
inline const QString kNoProgramFolder = QStringLiteral("the program folder cannot be made");

/// What determines the program folder.
struct ProgramPlace
{
    QString requested;  // by option or environment, empty for none
    QString executable; // folder of the running program
    QString dataHome;   // of the user
};

/// The requested folder; else that of the executable; else, for a copy installed for all users (its
/// folder is a system's bin, has the installed desktop entry beside it or is not writable),
/// "velmora" in the user's data folder, made so that only the user can look into it. Native path
/// without links; empty when the folder cannot be made.
[[nodiscard]] QString programFolder(const ProgramPlace &place);

/// The place of this process.
[[nodiscard]] ProgramPlace currentPlace(const QString &requestedByOption);

/// The folder where the system lets this user keep sockets and locks until the session ends: that
/// of the environment, else the usual one, else one made in the folder for temporary files; never
/// one that others could write to. Native path, empty when there is none.
[[nodiscard]] QString runtimeFolder();

} // namespace velmora
