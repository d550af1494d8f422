// Finds the file that was modified last among several.
#pragma once

#include "base/FolderFiles.h"

#include <QByteArray>
#include <QByteArrayView>

#include <chrono>

namespace velmora {

/// Asks the file system for each file's time, in steps. Files that no longer exist are ignored; of
/// those with equal times the first by name wins.
class LatestFile
{
public:
    /// folder: native path. names: each followed by a NUL.
    LatestFile(const QString &folder, QByteArray names);

    /// Looks at some files, a fraction of a millisecond's work; false when all are done.
    bool lookAtSome();

    /// Native bytes; empty when none of the files exists.
    [[nodiscard]] QByteArray name() const { return latest_.toByteArray(); }

    /// True when a link was among them: its target changes without the folder.
    [[nodiscard]] bool sawLinks() const { return sawLinks_; }

private:
    void lookAt(QByteArrayView name);

    FolderFiles files_;
    QByteArray names_;
    qsizetype next_ = 0;
    QByteArrayView latest_;
    std::chrono::nanoseconds latestTime_{0};
    bool sawLinks_ = false;
};

} // namespace velmora
