#include "tools/RangeCopy.h"

#include "base/FilePath.h"
#include "base/Folders.h"
#include "capture/Conformity.h"

#include <QFile>

namespace velmora {
namespace {

constexpr qint64 kPieceBytes = qint64{256} * 1024;

} // namespace

RangeCopy::RangeCopy(Clock &clock)
    : clock_(clock)
    , slice_(clock)
{
}

QCoro::Task<> RangeCopy::run(CopyOrder order, std::stop_token stop)
{
    tally_ = {};
    tally_.all = order.picks.count();
    tally_.readError = order.names->readError();
    means_ = {};
    means_.workFolder = QFile::encodeName(order.target);
    co_await clock_.yield();
    slice_.begin();
    while (!stop.stop_requested() && copySome(order)) {
        if (slice_.isOver()) {
            Q_EMIT advanced();
            co_await clock_.yield();
            slice_.begin();
        }
    }
    copy_.reset();
    Q_EMIT advanced();
}

// Copies a piece of a file, or ends one and starts the next; false when all is done.
bool RangeCopy::copySome(const CopyOrder &order)
{
    if (tally_.error || tally_.isRenaming || (!copy_ && tally_.done == tally_.all)) {
        return false;
    }
    if (!copy_) {
        begin(order, order.names->name(order.picks.position(tally_.done)));
    } else if (!copy_->copySome(kPieceBytes)) {
        finish(order);
    }
    return true;
}

void RangeCopy::begin(const CopyOrder &order, const QByteArray &name)
{
    name_ = name;
    copy_ = std::make_unique<FileCopy>(filePath(QFile::encodeName(order.folder), name),
                                       QFile::encodeName(order.target), means_);
}

void RangeCopy::finish(const CopyOrder &order)
{
    const StoreResult result = copy_->finish(filePath(QFile::encodeName(order.target), name_));
    copy_.reset();
    ++tally_.done;
    tally_.copied += result.outcome == StoreOutcome::Stored ? 1 : 0;
    tally_.there += result.outcome == StoreOutcome::AlreadyThere ? 1 : 0;
    if (result.outcome != StoreOutcome::Failed) {
        return;
    }
    const bool isThere = QFile::exists(filePath(order.folder, QFile::decodeName(name_)));
    if (isThere || !folderExists(order.folder)) { // a disk that is away has lost no images
        tally_.error = result.error;
    } else if (Conformity::isRenamed(order.folder, name_)) {
        tally_.isRenaming = true; // by another program: those of this one wait
    } else {
        ++tally_.gone;
    }
}

} // namespace velmora
