#include "capture/ReplyBody.h"

#include "base/SystemCalls.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kPieceBytes = qint64{512} * 1024;

} // namespace

ReplyBody::ReplyBody(QByteArray bytes)
    : memory_(std::move(bytes))
    , size_(memory_.size())
{
}

ReplyBody::ReplyBody(QString workFolder, std::shared_ptr<BodyStock> stock)
    : workFolder_(std::move(workFolder))
    , stock_(std::move(stock))
{
}

ReplyBody::ReplyBody(ReplyBody &&other) noexcept
    : workFolder_(std::move(other.workFolder_))
    , stock_(std::move(other.stock_))
    , memory_(std::exchange(other.memory_, {}))
    , file_(std::move(other.file_))
    , digest_(std::exchange(other.digest_, {}))
    , error_(std::exchange(other.error_, {}))
    , size_(std::exchange(other.size_, 0))
    , counted_(std::exchange(other.counted_, 0))
{
}

ReplyBody &ReplyBody::operator=(ReplyBody &&other) noexcept
{
    ReplyBody taken(std::move(other));
    std::swap(workFolder_, taken.workFolder_);
    std::swap(stock_, taken.stock_);
    std::swap(memory_, taken.memory_);
    std::swap(file_, taken.file_);
    std::swap(digest_, taken.digest_);
    std::swap(error_, taken.error_);
    std::swap(size_, taken.size_);
    std::swap(counted_, taken.counted_);
    return *this;
}

ReplyBody::~ReplyBody()
{
    release();
}

void ReplyBody::release()
{
    if (stock_) {
        stock_->bytesInMemory -= std::exchange(counted_, 0);
    }
    dropFile();
}

// A long file that was not stored goes bit by bit.
void ReplyBody::dropFile()
{
    if (file_) {
        stock_->files -= 1;
        stock_->leaving.take(file_->takeFile());
        file_.reset();
    }
}

void ReplyBody::append(QByteArrayView bytes)
{
    const bool fits = !stock_ || (size_ + bytes.size() <= kMostInMemory &&
                                  stock_->bytesInMemory + bytes.size() <= kMostInMemoryTogether);
    if (!file_ && !error_ && !fits) {
        spill();
    }
    if (file_) {
        if (const std::error_code error = file_->write(bytes)) {
            giveUp(error);
        }
    } else if (!error_) {
        memory_.append(bytes);
        keepInMemory(memory_.size());
    }
    if (digest_) {
        digest_->add(bytes);
    }
    size_ += bytes.size();
}

void ReplyBody::reserve(qint64 bytes)
{
    if (bytes > 0 && bytes <= kMostInMemory) {
        memory_.reserve(static_cast<qsizetype>(bytes));
    }
}

void ReplyBody::keepInMemory(qsizetype bytes)
{
    if (stock_) {
        stock_->bytesInMemory += bytes - std::exchange(counted_, bytes);
    }
}

// What has arrived so far moves to a file; its head stays in memory.
void ReplyBody::spill()
{
    file_ = std::make_unique<WorkFile>(WorkFile::inMadeFolder(QFile::encodeName(workFolder_)));
    stock_->files += 1;
    std::error_code error = file_->error();
    if (!error) {
        error = file_->write(memory_);
    }
    memory_ = QByteArray(memory_.constData(), std::min<qsizetype>(memory_.size(), kHeadBytes));
    keepInMemory(memory_.size());
    if (error) {
        giveUp(error);
    }
}

void ReplyBody::giveUp(std::error_code error)
{
    error_ = error;
    dropFile();
}

QByteArrayView ReplyBody::head() const
{
    return QByteArrayView(memory_).first(std::min<qsizetype>(memory_.size(), kHeadBytes));
}

QByteArray ReplyBody::digest() const
{
    return digest_ ? digest_->text() : QByteArray();
}

std::optional<QByteArray> ReplyBody::piece(qint64 from, qint64 mostBytes) const
{
    if (error_) {
        return std::nullopt;
    }
    const auto count = static_cast<qsizetype>(std::clamp<qint64>(size_ - from, 0, mostBytes));
    if (!file_) {
        return memory_.mid(static_cast<qsizetype>(from), count);
    }
    QByteArray bytes(count, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < count) {
        const ssize_t read =
            readSomeAt(file_->fd(), bytes.data() + filled, count - filled, from + filled);
        if (read <= 0) {
            return std::nullopt;
        }
        filled += read;
    }
    return bytes;
}

bool ReplyBody::isOnDiskOf(const QString &folder) const
{
    return !file_ || file_->isOnDiskOf(QFile::encodeName(folder));
}

QCoro::Task<> ReplyBody::moveToDiskOf(QString folder, Clock *clock)
{
    if (isOnDiskOf(folder)) {
        co_return;
    }
    auto copy = std::make_unique<WorkFile>(QFile::encodeName(folder));
    const std::error_code error = co_await copyTo(copy.get(), clock);
    if (error) {
        giveUp(error);
    } else {
        stock_->leaving.take(file_->takeFile());
        file_ = std::move(copy);
    }
}

QCoro::Task<std::error_code> ReplyBody::copyTo(const WorkFile *copy, Clock *clock) const
{
    std::error_code error = copy->error();
    for (qint64 at = 0; at < size_ && !error; at += kPieceBytes) {
        const std::optional<QByteArray> bytes = piece(at, kPieceBytes);
        error = bytes ? copy->write(*bytes) : std::make_error_code(std::errc::io_error);
        co_await clock->yield();
    }
    co_return error;
}

StoreResult ReplyBody::storeAs(const QString &workFolder, const QString &target)
{
    if (error_) {
        return {StoreOutcome::Failed, error_};
    }
    return file_ ? storeResult(file_->appearAs(QFile::encodeName(target)))
                 : storeNewFile(workFolder, target, memory_);
}

} // namespace velmora
