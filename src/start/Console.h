// What the program says on its standard output and error.
#pragma once

#include <QString>

namespace velmora {

/// The exit status of a run that could not do what it was asked for.
inline constexpr int kFailedStatus = 1;

/// Gives the toolkit the program's name and version, which windows and the desktop show.
void nameProgram();

/// Writes the text, after "velmora: ", on standard error. Returns the status.
int fail(const QString &text, int status);

/// Writes the text on standard output. Returns the status, or 1 if the text has not arrived: what a
/// full disk or a closed pipe has swallowed must not pass for done.
int print(const QString &text, int status);

} // namespace velmora
