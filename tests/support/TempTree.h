// A temporary program folder, removed with the object.
#pragma once

#include "support/Printers.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmora::test {

/// Paths are relative to the folder, separated by "/". Helpers that fail throw std::runtime_error,
/// which fails the test.
class TempTree
{
public:
    TempTree();

    /// Native path of a file or folder in the tree, or of the tree itself.
    [[nodiscard]] QString path(QStringView relative = {}) const;

    /// Writes a file; makes its folders.
    void write(QStringView relative, QByteArrayView bytes) const;

    [[nodiscard]] QByteArray read(QStringView relative) const;

    /// True for a file, a folder, or a link, even a broken one.
    [[nodiscard]] bool exists(QStringView relative) const;

    /// Names of the files (not the folders) in a folder, including hidden ones, sorted.
    [[nodiscard]] QStringList files(QStringView relative = {}) const;

    /// Names of the subfolders of a folder, sorted.
    [[nodiscard]] QStringList folders(QStringView relative = {}) const;

    /// Makes a folder with all its levels.
    void makeFolder(QStringView relative) const;

private:
    [[nodiscard]] QStringList names(QStringView relative, bool wantFolders) const;

    QTemporaryDir folder_;
};

} // namespace velmora::test
