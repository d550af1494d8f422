// One run of the import: copies the files that match into a camera's folder, each under a name that
// begins with its date.
#pragma once

#include "base/FileCopy.h"
#include "base/Gate.h"
#include "base/WorkSlice.h"
#include "tools/NameReader.h"
#include "tools/TakenNames.h"

#include <QObject>

namespace velmora {

/// What is copied where, as it stood when the run began.
struct ImportOrder
{
    QString sourceText; // path texts as they are compared
    QString targetText;
    QString source; // native paths without a "/" at the end, empty for a drive that is not there
    QString target;
    QString workFolder; // native path; for unfinished copies where they need a name
    QString filter;
};

enum class ImportEnd {
    Copied,    // all of them; there may have been none
    Identical, // source and target have the same text: nothing was done
    Aborted,   // a file could not be copied; those before it stay
    Stopped    // before the end, as asked
};

struct [[nodiscard]] ImportResult
{
    ImportEnd end = ImportEnd::Aborted;
    qint32 copied = 0;
    QString failure; // of a run that was aborted: the file and what was wrong, for people
};

/// How far a run has come.
struct ImportProgress
{
    qint32 copied = 0;
    qint32 files = 0;      // that the run will copy
    qint16 collisions = 0; // names that were taken

    bool operator==(const ImportProgress &) const = default;
};

/// Runs do not overlap; a new one begins after the end of the one before.
class ImportRun : public QObject
{
    Q_OBJECT

public:
    /// gate: shut while nothing may be done in folders. Clock and gate outlive the object, which
    /// outlives a run.
    ImportRun(Clock &clock, Gate &gate);

    /// The names are listed at the begin: what is copied into the same folder is not met again.
    /// afterFile: ends the run behind the file in hand. atOnce: ends it in the middle of a file, of
    /// which nothing stays. Events are let through every few milliseconds.
    QCoro::Task<ImportResult> run(ImportOrder order, std::stop_token afterFile,
                                  std::stop_token atOnce);

    [[nodiscard]] const ImportProgress &progress() const { return progress_; }

Q_SIGNALS:
    /// Told before the events get their turn, and at the end.
    void advanced();

private:
    QCoro::Task<ImportEnd> copyAll(SortedNames names, std::stop_token afterFile,
                                   std::stop_token atOnce);
    QCoro::Task<ImportEnd> copyFile(QByteArray name, std::stop_token atOnce);
    QCoro::Task<> copyPiece(FileCopy *copy, bool *more, std::stop_token atOnce);
    QCoro::Task<> letEventsRun(std::stop_token atOnce);
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
    QByteArray source_; // native folders, with a "/" at the end
    QByteArray target_;
    TakenNames taken_;
    QString failure_; // of the file at which a run was aborted
    qint16 collisions_ = 0;
    qint64 pieceBytes_ = 0;
    int piecesInSlice_ = 0;
};

} // namespace velmora
