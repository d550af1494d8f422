// The body of a camera's answer: in memory while it is small, in a working file beyond that, so
// that no camera, nor the number of them, decides how much memory the program takes.
#pragma once

#include "base/Clock.h"
#include "base/FileWriter.h"
#include "base/SlowClose.h"
#include "base/WorkFile.h"
#include "capture/BodyDigest.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QString>

#include <memory>
#include <optional>
#include <system_error>

namespace velmora {

/// The memory and open files held by the bodies that share it.
struct BodyStock
{
    qint64 bytesInMemory = 0;
    int files = 0;
    SlowClose leaving; // files of bodies that are not needed any more

    /// Descriptors that they keep.
    [[nodiscard]] int descriptors() const { return files + leaving.open(); }
};

/// Filled piece by piece with append(). A reader asks for size() and head(), which cost nothing,
/// and then either for whole() or, for what may be 64 MiB, for one piece() after another with a
/// yield in between:
///
///     for (qint64 at = 0; at < body.size(); at += kPiece) {
///         const std::optional<QByteArray> piece = body.piece(at, kPiece); // nothing: unreadable
///         …
///         co_await clock.yield();
///     }
///
/// To look at the bytes as they arrive, do so before append().
class ReplyBody
{
public:
    static constexpr qint64 kMostInMemory = qint64{256} * 1024;               // of one body
    static constexpr qint64 kMostInMemoryTogether = qint64{24} * 1024 * 1024; // of one stock
    static constexpr qint64 kHeadBytes = 4096;

    /// An empty body that is never added to.
    ReplyBody() = default;

    /// A complete body, in memory.
    ReplyBody(QByteArray bytes); // NOLINT(google-explicit-constructor): bytes are a body

    /// An empty body to be filled. workFolder: native path of the folder for a working file, made
    /// if missing (one level) and only when needed.
    ReplyBody(QString workFolder, std::shared_ptr<BodyStock> stock);
    ReplyBody(ReplyBody &&other) noexcept;
    ReplyBody &operator=(ReplyBody &&other) noexcept;
    ReplyBody(const ReplyBody &) = delete;
    ReplyBody &operator=(const ReplyBody &) = delete;
    ~ReplyBody();

    /// Makes a digest of whatever is added from now on; call it before the first bytes. It costs
    /// least while the bytes are at hand.
    void digestAlong() { digest_.emplace(); }

    /// Adds bytes at the end. Bytes that cannot be written still count: whether it matters that a
    /// body cannot be kept shows only when it is to be stored. Throws std::bad_alloc.
    void append(QByteArrayView bytes);

    /// Reserves room for a body of that length, as far as it would stay in memory. Throws
    /// std::bad_alloc.
    void reserve(qint64 bytes);

    /// Bytes that have arrived.
    [[nodiscard]] qint64 size() const { return size_; }

    [[nodiscard]] bool isEmpty() const { return size_ == 0; }

    /// The first bytes, kHeadBytes at most.
    [[nodiscard]] QByteArrayView head() const;

    /// The text of its BodyDigest, also of a body that cannot be kept; empty when none was asked
    /// for.
    [[nodiscard]] QByteArray digest() const;

    /// Why the body cannot be kept; none when it can.
    [[nodiscard]] std::error_code error() const { return error_; }

    /// Up to that many bytes from an offset on; nothing when they cannot be read.
    [[nodiscard]] std::optional<QByteArray> piece(qint64 from, qint64 mostBytes) const;

    /// All of it, in memory.
    [[nodiscard]] std::optional<QByteArray> whole() const { return piece(0, size_); }

    /// False when storing the body in that folder (native path) would copy a long file in one go.
    [[nodiscard]] bool isOnDiskOf(const QString &folder) const;

    /// Brings a body in a working file to the disk of that folder, in pieces between which events
    /// run. A failure shows in error().
    QCoro::Task<> moveToDiskOf(QString folder, Clock *clock);

    /// Makes the body a file and never replaces one. A body in memory can be stored again; one in a
    /// working file becomes that file. workFolder: as above, for a body in memory. target: native
    /// path.
    StoreResult storeAs(const QString &workFolder, const QString &target);

private:
    void spill();
    void giveUp(std::error_code error);
    QCoro::Task<std::error_code> copyTo(const WorkFile *copy, Clock *clock) const;
    void keepInMemory(qsizetype bytes);
    void release();
    void dropFile();

    QString workFolder_;
    std::shared_ptr<BodyStock> stock_;
    QByteArray memory_; // the whole body, or its head
    std::unique_ptr<WorkFile> file_;
    std::optional<BodyDigest> digest_;
    std::error_code error_;
    qint64 size_ = 0;
    qint64 counted_ = 0; // bytes of this body in the stock
};

} // namespace velmora
