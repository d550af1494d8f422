// Copies a file in pieces, so that nobody waits for a long one, and shows the copy under its name
// only when it is whole.
#pragma once

#include "base/FileWriter.h"
#include "base/UniqueFd.h"
#include "base/WorkFile.h"

#include <QByteArray>

#include <memory>
#include <system_error>

namespace velmora {

/// What the file systems on both sides turned out to be able to do; kept from one copy to the next
/// so that no question is asked twice.
struct CopyMeans
{
    QByteArray workFolder;    // native path, on the target's file system; made when missing
    bool clones = true;       // shares the blocks of both files
    bool copiesItself = true; // copies without the bytes passing through the program
    bool unnamedFiles = true; // keeps a file without a name, which is gone after a kill
    std::unique_ptr<char[]> buffer;
};

/// One copy. The new file has the source's rights as far as the process's mask leaves them, and the
/// date of the copy, like the one that "cp" makes. Without finish() nothing of it stays.
class FileCopy
{
public:
    static constexpr qint64 kMostBytes = qint64{1} << 20;

    /// source: native path of an ordinary file or of a link to one; anything else is an error, and
    /// nobody waits for it. targetFolder: native path. means: outlives the copy.
    FileCopy(const QByteArray &source, const QByteArray &targetFolder, CopyMeans &means);
    Q_DISABLE_COPY_MOVE(FileCopy)
    ~FileCopy() = default;

    /// Copies the next bytes, at most so many (up to kMostBytes); false when all are copied, or
    /// after an error. A file that grows meanwhile is copied as long as it was.
    [[nodiscard]] bool copySome(qint64 mostBytes);

    /// What went wrong so far.
    [[nodiscard]] std::error_code error() const { return error_; }

    /// Gives the copy its path, in the target folder; never replaces anything. After AlreadyThere
    /// another path may be tried.
    StoreResult finish(const QByteArray &target);

private:
    void openTarget(const QByteArray &folder, unsigned mode);
    [[nodiscard]] bool clone();
    void refuseWhatDoesNotFit();
    [[nodiscard]] qint64 copyPiece(qint64 mostBytes);
    [[nodiscard]] qint64 copyThroughBuffer(qint64 mostBytes);

    CopyMeans &means_;
    UniqueFd source_;
    std::unique_ptr<WorkFile> target_;
    std::error_code error_;
    qint64 bytes_ = 0; // of the source, 0 also when the file system does not say
    qint64 copied_ = 0;
    bool begun_ = false;
};

} // namespace velmora
