// One run of the import: copies the matching files into a camera's folder, each under a name that
// begins with its date.
#pragma once

#include "base/FileCopy.h"
#include "base/Gate.h"
#include "base/WorkSlice.h"
#include "tools/NameReader.h"
#include "tools/TakenNames.h"

#include <QObject>

namespace velmora {

/// What to copy where, as of the start of the run.
struct ImportOrder
{
    QString sourceText; // path texts as compared with each other
    QString targetText;
    QString source; // native paths without a final "/", empty for a drive that does not exist
    QString target;
    QString workFolder; // native path; for unfinished copies that need a name
    QString filter;
};

enum class ImportEnd {
    Copied,    // all files, if there were any
    Identical, // source and target have the same text: nothing was done
    Aborted,   // a file could not be copied, or a folder not be read; earlier ones stay
    Stopped    // before the end, on request
};

struct [[nodiscard]] ImportResult
{
    ImportEnd end = ImportEnd::Aborted;
    qint32 copied = 0;
    QString failure; // of an aborted run: the file or folder and what was wrong, for the user
};

/// Progress of a run.
struct ImportProgress
{
    qint32 copied = 0;
    qint32 files = 0;      // number of files to copy
    qint16 collisions = 0; // number of names already taken

    bool operator==(const ImportProgress &) const = default;
};

/// Runs do not overlap; a new one starts after the previous one has ended.
class ImportRun : public QObject
{
    Q_OBJECT

public:
    /// gate: shut while nothing may be done in folders. Clock and gate outlive the object, which
    /// outlives a run.
    ImportRun(Clock &clock, Gate &gate);

    /// Names are listed at the start, so what is copied into the same folder is not copied again.
    /// If the source cannot be read to its end, what was read of it is copied before the run is
    /// aborted. afterFile: ends the run after the current file. atOnce: ends it in the middle of a
    /// file, of which nothing remains. Events are handled every few milliseconds.
    QCoro::Task<ImportResult> run(ImportOrder order, std::stop_token afterFile,
                                  std::stop_token atOnce);

    [[nodiscard]] const ImportProgress &progress() const { return progress_; }

Q_SIGNALS:
    /// Emitted before events are handled, and at the end.
    void advanced();

private:
    QCoro::Task<ImportEnd> copyNames(SortedNames names, std::stop_token afterFile,
                                     std::stop_token atOnce);
    QCoro::Task<ImportEnd> copyAll(SortedNames names, std::stop_token afterFile,
                                   std::stop_token atOnce);
    QCoro::Task<ImportEnd> copyFile(QByteArray name, std::stop_token atOnce);
    QCoro::Task<> copyPiece(FileCopy *copy, bool *more, std::stop_token atOnce);
    QCoro::Task<> pauseIfDue(std::stop_token atOnce);
    ImportEnd abort(const QString &reason);
    [[nodiscard]] std::optional<QByteArray> newName(const QByteArray &name) const;
    QCoro::Task<ImportEnd> giveName(FileCopy *copy, QByteArray name, std::stop_token atOnce);
    QCoro::Task<StoreResult> tryName(FileCopy *copy, QByteArray name, std::stop_token atOnce);
    [[nodiscard]] std::optional<QByteArray> nextName(const QByteArray &name);

    Clock &clock_;
    Gate &gate_;
    NameReader reader_;
    WorkSlice slice_;
    CopyMeans means_;
    ImportProgress progress_;
    QByteArray source_; // native folders, with a final "/"
    QByteArray target_;
    TakenNames taken_;
    QString failure_; // about the file or folder at which a run was aborted
    qint16 collisions_ = 0;
    qint64 pieceBytes_ = 0;
    int piecesInSlice_ = 0;
};

} // namespace velmora
