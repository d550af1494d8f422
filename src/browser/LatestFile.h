// The file among several that was modified last.
#pragma once

#include "base/FolderFiles.h"

#include <QByteArray>
#include <QByteArrayView>

#include <chrono>

namespace velmora {

/// Asks the file system for the time of each file, in steps. Files that are not there any more do
/// not count; of those with the same time the first in order of names does.
class LatestFile
{
public:
    /// folder: native path. names: each with a NUL behind it.
    LatestFile(const QString &folder, QByteArray names);

    /// Looks at some files, a fraction of a millisecond's work; false when all are done.
    bool lookAtSome();

    /// Native bytes; empty when none of the files is there.
    [[nodiscard]] QByteArray name() const { return latest_.toByteArray(); }

    /// True when there was a link among them: what it leads to changes without its folder.
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
