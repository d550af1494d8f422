#include "tools/ImportRun.h"

#include "base/FileDates.h"
#include "base/Folders.h"
#include "base/OneLine.h"
#include "tools/ImportName.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr qint64 kLeastPiece = qint64{64} * 1024;
constexpr auto kLongPiece = 3ms;       // a slow disk: ask for less at a time
constexpr int kMostPiecesInSlice = 32; // also for a clock that is slow to show that time has passed

QByteArray folderBytes(const QString &folder)
{
    return folder.isEmpty() ? QByteArray() : QFile::encodeName(folder) + '/';
}

// As a pattern it matches other names too; the system itself takes it literally.
bool hasWildcards(const QByteArray &name)
{
    return name.contains('*') || name.contains('?');
}

} // namespace

ImportRun::ImportRun(Clock &clock, Gate &gate)
    : clock_(clock)
    , gate_(gate)
    , reader_(clock)
    , slice_(clock)
{
}

QCoro::Task<ImportResult> ImportRun::run(ImportOrder order, std::stop_token afterFile,
                                         std::stop_token atOnce)
{
    progress_ = {};
    collisions_ = 0;
    failure_.clear();
    means_ = {};
    means_.workFolder = QFile::encodeName(order.workFolder);
    pieceBytes_ = FileCopy::kMostBytes;
    source_ = folderBytes(order.source);
    target_ = folderBytes(order.target);
    if (order.sourceText == order.targetText) {
        co_return ImportResult{ImportEnd::Identical, 0, {}};
    }
    co_await clock_.yield(); // so that the state of the run is painted before it begins
    const SortedNames names =
        co_await reader_.files(order.source, filterPattern(order.filter), afterFile);
    std::optional<TakenNames> taken = co_await reader_.taken(order.target, afterFile);
    co_await gate_.pass(atOnce);
    if (!names || !taken || atOnce.stop_requested()) {
        co_return ImportResult{ImportEnd::Stopped, 0, {}};
    }
    taken_ = *std::move(taken);
    const ImportEnd end = co_await copyNames(names, afterFile, atOnce);
    Q_EMIT advanced();
    co_return ImportResult{end, progress_.copied, failure_};
}

// A user who empties a card after this must have all of it, and what can still be read of a failing
// card is wanted all the more.
QCoro::Task<ImportEnd> ImportRun::copyNames(SortedNames names, std::stop_token afterFile,
                                            std::stop_token atOnce)
{
    if (taken_.readError()) {
        co_return abort(QStringLiteral("camera's folder: ") + unreadFolderText(taken_.readError()));
    }
    const ImportEnd end = co_await copyAll(names, afterFile, atOnce);
    if (end == ImportEnd::Copied && names->readError()) {
        co_return abort(unreadFolderText(names->readError()));
    }
    co_return end;
}

QCoro::Task<ImportEnd> ImportRun::copyAll(SortedNames names, std::stop_token afterFile,
                                          std::stop_token atOnce)
{
    progress_.files = static_cast<qint32>(names->list().size());
    slice_.begin();
    for (const ListedName &name : names->list()) {
        if (afterFile.stop_requested() || atOnce.stop_requested()) {
            co_return ImportEnd::Stopped;
        }
        const ImportEnd end = co_await copyFile(name.view().toByteArray(), atOnce);
        if (end == ImportEnd::Aborted) {
            failure_.prepend(onOneLine(QFile::decodeName(name.view().toByteArray())) +
                             QStringLiteral(": "));
        }
        if (end != ImportEnd::Copied) {
            co_return end;
        }
        ++progress_.copied;
        progress_.collisions = collisions_;
        co_await pauseIfDue(atOnce);
    }
    co_return ImportEnd::Copied;
}

QCoro::Task<ImportEnd> ImportRun::copyFile(QByteArray name, std::stop_token atOnce)
{
    const std::optional<QByteArray> target = newName(name);
    if (!target) {
        co_return abort(QStringLiteral("the file is gone"));
    }
    FileCopy copy(source_ + name, target_, means_);
    bool more = true;
    while (more) {
        co_await copyPiece(&copy, &more, atOnce);
        if (atOnce.stop_requested()) {
            co_return ImportEnd::Stopped;
        }
    }
    co_return co_await giveName(&copy, *target, atOnce);
}

// A disk that took long over a piece is asked for a smaller one.
QCoro::Task<> ImportRun::copyPiece(FileCopy *copy, bool *more, std::stop_token atOnce)
{
    const std::chrono::milliseconds began = clock_.monotonicNow();
    *more = copy->copySome(pieceBytes_);
    ++piecesInSlice_;
    if (clock_.monotonicNow() - began >= kLongPiece) {
        pieceBytes_ = std::max(pieceBytes_ / 2, kLeastPiece);
    } else {
        pieceBytes_ = std::min(pieceBytes_ * 2, FileCopy::kMostBytes);
    }
    if (*more) {
        co_await pauseIfDue(atOnce);
    }
}

QCoro::Task<> ImportRun::pauseIfDue(std::stop_token atOnce)
{
    if (slice_.isOver() || piecesInSlice_ >= kMostPiecesInSlice) {
        Q_EMIT advanced();
        co_await clock_.yield();
        co_await gate_.pass(atOnce);
        piecesInSlice_ = 0;
        slice_.begin();
    }
}

// Nothing when the file is gone.
std::optional<QByteArray> ImportRun::newName(const QByteArray &name) const
{
    if (!needsImportName(name)) {
        return name;
    }
    const std::optional<WallTime> created = creationTime(source_ + name);
    return created ? std::optional(importName(name, *created, collisions_)) : std::nullopt;
}

// The search for a free name may also take long.
QCoro::Task<ImportEnd> ImportRun::giveName(FileCopy *copy, QByteArray name, std::stop_token atOnce)
{
    std::optional<QByteArray> next = name;
    while (next) {
        const StoreResult tried = co_await tryName(copy, *next, atOnce);
        if (tried.outcome == StoreOutcome::Stored) {
            taken_.add(*next);
            co_return ImportEnd::Copied;
        }
        if (tried.outcome == StoreOutcome::Failed) {
            co_return abort(QString::fromStdString(tried.error.message()));
        }
        co_await pauseIfDue(atOnce);
        if (atOnce.stop_requested()) {
            co_return ImportEnd::Stopped;
        }
        next = nextName(*next);
    }
    co_return abort(QStringLiteral("no name is free for it"));
}

ImportEnd ImportRun::abort(const QString &reason)
{
    failure_ = reason;
    return ImportEnd::Aborted;
}

// The file system itself says that a name is taken, by refusing it; it knows nothing of names that
// differ in case.
QCoro::Task<StoreResult> ImportRun::tryName(FileCopy *copy, QByteArray name, std::stop_token atOnce)
{
    if (taken_.holds(name)) {
        co_return StoreResult{StoreOutcome::AlreadyThere, {}};
    }
    if (hasWildcards(name)) {
        const std::optional<NameFound> taken =
            co_await reader_.holds(QFile::decodeName(target_), FilePattern(name), atOnce);
        co_await gate_.pass(atOnce);
        if (!taken || taken->isThere || atOnce.stop_requested()) {
            co_return StoreResult{StoreOutcome::AlreadyThere, {}};
        }
        if (taken->readError) {
            co_return StoreResult{StoreOutcome::Failed, taken->readError};
        }
    }
    co_return copy->finish(target_ + name);
}

// The number of collisions has 16 bits; after the last there is no further name.
std::optional<QByteArray> ImportRun::nextName(const QByteArray &name)
{
    if (collisions_ == std::numeric_limits<qint16>::max()) {
        return std::nullopt;
    }
    ++collisions_;
    return nameAfterCollision(name, collisions_);
}

} // namespace velmora
