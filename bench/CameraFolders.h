// Camera folders full of empty images, one a minute, for the measurements of listing.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace velmora::bench {

/// Removed with the object.
class CameraFolders
{
public:
    /// parent: where they are made; its file system is measured.
    CameraFolders(const QString &parent, int large, int small, int smallOnes);

    [[nodiscard]] const QString &large() const { return large_; }

    [[nodiscard]] const std::vector<QString> &small() const { return small_; }

private:
    QTemporaryDir parent_;
    QString large_;
    std::vector<QString> small_;
};

/// Reads a folder with the bare system call, as fast as possible; returns the number of names.
/// path: native.
long readPlainly(const QString &path, std::size_t bufferBytes);

/// The same with the C library's readdir().
long readByLibrary(const QString &path);

/// Runs `ls FOLDER > /dev/null` to completion.
void runLs(const QString &path);

} // namespace velmora::bench
