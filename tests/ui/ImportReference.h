// What the rules of the import make of files and choices, worked out from what lies in the folders.
#pragma once

#include "base/FileStamp.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace velmora::test {

/// Whether a file of the source is wanted. filter: one of "", "*", "*.*", or with "*" and "?".
[[nodiscard]] bool isWanted(const QString &filter, const QString &name);

/// The wanted files of a native folder in the order in which they are listed and copied.
[[nodiscard]] QStringList wantedFiles(const QString &folder, const QString &filter);

/// Subfolders of a native folder, in their order.
[[nodiscard]] QStringList subFoldersOf(const QString &folder);

/// A name that is a date already, with its dot at the 20th place.
[[nodiscard]] bool keepsItsName(const QString &name);

/// The image that stands for a camera's folder; empty for none.
[[nodiscard]] QString firstStored(const QString &folder);

/// "http%3A%2F%2F…" for an address.
[[nodiscard]] QString encodedAddress(const QString &address);

/// True for the beginning of a picture's bytes.
[[nodiscard]] bool isPicture(const QByteArray &bytes);

[[nodiscard]] QByteArray bytesOf(const QString &path);

/// All files below a folder, with their bytes.
class AllFiles
{
public:
    /// By native path; without those in the program's own "tmp", which are not yet whole. A file
    /// whose stamp is the same is not read again.
    [[nodiscard]] QMap<QString, QByteArray> read(const QString &folder);

    /// Reads it again, though its stamp may be the same.
    void forget(const QString &path) { seen_.remove(path); }

private:
    struct Seen
    {
        std::optional<FileStamp> stamp;
        QByteArray bytes;
    };

    QHash<QString, Seen> seen_;
};

/// A run that nothing disturbs.
struct RunOutcome
{
    bool isAborted = false;
    QString culprit;    // of an aborted run, how its reason begins: with the file, or "the folder…"
    int collisions = 0; // up to the last file copied
    QStringList copied; // of the source
    QStringList copiedTo;   // their names in the target
    bool mayRunOut = false; // of names, if more of them are taken
};

/// source, target: native folders.
[[nodiscard]] RunOutcome runOutcome(const QString &source, const QString &filter,
                                    const QString &target);

/// What the window has been told, and what is stored.
struct ImportChoices
{
    bool isOpen = false;
    QString filter;
    QString drive;
    QString folder;
    int group = 0;
    int row = 0;
    QMap<QString, QString> stored;
};

/// A list, a picture or a number that follows from a reading of a folder.
struct Reading
{
    bool isDue = false;
    bool isDisturbed = false; // files have changed since it was due
};

/// A run of the import, as far as it can be told from outside.
struct ImportRunSeen
{
    RunOutcome alone; // if nothing disturbs it
    QString target;   // native folder
    QString storage;  // in force
    QString captions; // NbF when it began
    bool isCounted = true;
    bool isAlone = true;
    bool mayAbort = false;
    bool isOvertaken = false; // by another storage folder
    bool isClosed = false;    // its window was
    QStringList copies;
};

} // namespace velmora::test
