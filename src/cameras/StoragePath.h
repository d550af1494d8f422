// The text of the storage folder: how it is cleaned and taken apart. Pure text, no file system.
#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// A folder path as it is stored and used: without blanks and without the characters that cannot
/// stand in it, ending with "\". A doubled "\" is removed whole, both characters; the colon is
/// kept.
[[nodiscard]] QString FormRep(QString path);

/// The path that the make-folder button makes: blanks removed, ending with "\", a doubled "\"
/// reduced to one.
[[nodiscard]] QString pathToMake(QString path);

/// The path up to and including each "\" from the fourth character on, outermost first. The drive
/// part "C:\" is thereby left out.
[[nodiscard]] QStringList pathLevels(const QString &path);

/// What a user types in the storage box: "/" is this system's separator and stands for "\".
[[nodiscard]] QString withBackslashes(QString typed);

/// Where the caret goes when FormRep has changed the text in which it stood at position `caret`:
/// behind the same characters as before.
[[nodiscard]] int caretAfterCleaning(const QString &typed, int caret);

} // namespace velmora
