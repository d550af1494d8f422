// Cleans the text of the storage folder and takes it apart. Pure text, no file system.
#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// Cleans a folder path ("forme du répertoire") into the form stored and used: without blanks and
/// the characters that cannot occur in it, ending with "\". A doubled "\" is removed whole, both
/// characters; the colon is kept.
[[nodiscard]] QString FormRep(QString path);

/// The path that the make-folder button makes: without blanks, ending with "\", a doubled "\"
/// reduced to one.
[[nodiscard]] QString pathToMake(QString path);

/// The path up to and including each "\" from the fourth character on, outermost first. This leaves
/// out the drive part "C:\".
[[nodiscard]] QStringList pathLevels(const QString &path);

/// Reads what a user types into the storage box: "/" is this system's separator and is taken as
/// "\".
[[nodiscard]] QString withBackslashes(QString typed);

/// Where the caret goes when FormRep has changed the text in which it was at position `caret`:
/// after the same characters as before.
[[nodiscard]] int caretAfterCleaning(const QString &typed, int caret);

} // namespace velmora
