// A temporary program folder, gone with the object.
#pragma once

#include "support/Printers.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmora::test {

/// Paths are relative to the folder, with "/" between names. Helpers that cannot do their work
/// throw std::runtime_error, which fails the test.
class TempTree
{
public:
    TempTree();

    /// Native path of a file or folder in the tree, or of the tree itself.
    [[nodiscard]] QString path(QStringView relative = {}) const;

    /// Writes a file; makes its folders.
    void write(QStringView relative, QByteArrayView bytes) const;

    [[nodiscard]] QByteArray read(QStringView relative) const;

    /// True for a file, a folder, or a link, broken ones too.
    [[nodiscard]] bool exists(QStringView relative) const;

    /// Names of the files (not the folders) of a folder, hidden ones too, sorted.
    [[nodiscard]] QStringList files(QStringView relative = {}) const;

    /// Names of the folders of a folder, sorted.
    [[nodiscard]] QStringList folders(QStringView relative = {}) const;

    /// Makes a folder with all its levels.
    void makeFolder(QStringView relative) const;

private:
    [[nodiscard]] QStringList names(QStringView relative, bool wantFolders) const;

    QTemporaryDir folder_;
};

} // namespace velmora::test
