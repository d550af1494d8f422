// Which stored images the program may delete by itself, for their age or for room on the disk, by
// the rules alone.
#pragma once

#include "base/Clock.h"
#include "cameras/CameraAddress.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <set>

namespace velmora::test {

/// Stored files by their paths: how many names each has.
using StoredFiles = QMap<QString, int>;

/// An image's date, if its name is of the current form with a date that exists.
[[nodiscard]] std::optional<WallTime> ruleImageDate(const QString &name);

struct DeletionRules
{
    /// Takes the choices that the settings' text says.
    void read(const QByteArray &settings);

    /// Why an image, which is gone, must not go for its age or for room; empty when it may.
    [[nodiscard]] QString faultOfAge(const QString &path, const StoredFiles &left) const;
    [[nodiscard]] QString faultOfRoom(const QString &path, int names,
                                      const StoredFiles &left) const;

    /// Images that must go now for their age, or may go for room.
    [[nodiscard]] QStringList oldOnes(const StoredFiles &files) const;
    [[nodiscard]] QStringList roomOnes(const StoredFiles &files) const;

    /// Bytes free, from which on nothing more is deleted, or below which something must be.
    [[nodiscard]] qint64 wantedBytes() const;
    [[nodiscard]] qint64 leastBytes() const;

    /// A camera's folder, native.
    [[nodiscard]] QString folder(const QString &url) const;

    /// By a camera with another address than this one, which has the folder too and keeps its
    /// images.
    [[nodiscard]] bool isKept(const QString &folder, const QString &url) const;

    std::map<CameraAddress, QString> urls; // of the rows that have one
    std::set<CameraAddress> ticked;
    bool makesRoom = false;
    qint64 limitMegabytes = 0;

    QString storage; // native path of the folder in force
    bool isEdited = false;
    WallTime earlier; // of local and universal time
    WallTime later;
    qint64 allBytes = 0;

private:
    [[nodiscard]] bool isWished(const QString &folder) const;
    [[nodiscard]] bool isCameras(const QString &folder) const;
    [[nodiscard]] QString faultOf(const QString &path, const StoredFiles &left) const;
};

} // namespace velmora::test
