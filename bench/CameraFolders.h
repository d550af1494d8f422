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
    /// Images in each folder.
    struct Sizes
    {
        int large = 0;
        int medium = 0;
        int group = 0; // in each of the ten of a group
        int newestDay = 0;
    };

    /// parent: where they are made; its file system is measured.
    CameraFolders(const QString &parent, const Sizes &sizes);

    [[nodiscard]] const QString &large() const { return large_; }

    [[nodiscard]] const QString &medium() const { return medium_; }

    [[nodiscard]] const std::vector<QString> &group() const { return group_; }

private:
    QTemporaryDir parent_;
    QString large_;
    QString medium_;
    std::vector<QString> group_;
};

/// Reads a folder with the bare system call, as fast as possible; returns the number of names.
/// path: native.
long readPlainly(const QString &path, std::size_t bufferBytes);

/// The same with the C library's readdir().
long readByLibrary(const QString &path);

/// Runs `ls FOLDER > /dev/null` to completion.
void runLs(const QString &path);

} // namespace velmora::bench
