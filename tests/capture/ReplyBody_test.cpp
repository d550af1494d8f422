// Bodies in memory and in working files: the same bytes either way, and bounded memory.
#include "capture/ReplyBody.h"

#include "support/FileSizeLimit.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora::test {
namespace {

constexpr qint64 kPiece = 16 * 1024;

QByteArray bytesFrom(qint64 at, qint64 count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    for (qint64 i = 0; i < count; ++i) {
        bytes[i] = static_cast<char>((at + i) * 7 / 3);
    }
    return bytes;
}

class ReplyBodyTest : public testing::Test
{
protected:
    [[nodiscard]] ReplyBody filled(qint64 bytes) const
    {
        ReplyBody body(work_, stock_);
        for (qint64 at = 0; at < bytes; at += kPiece) {
            body.append(bytesFrom(at, std::min(kPiece, bytes - at)));
        }
        return body;
    }

    TempTree tree_;
    QString work_ = tree_.path(u"tmp");
    std::shared_ptr<BodyStock> stock_ = std::make_shared<BodyStock>();
};

/// The parameter is a length, below or above what stays in memory.
class ReplyBodyOfLength : public ReplyBodyTest, public testing::WithParamInterface<qint64>
{
};

INSTANTIATE_TEST_SUITE_P(Lengths, ReplyBodyOfLength,
                         testing::Values(1, 5000, ReplyBody::kMostInMemory,
                                         ReplyBody::kMostInMemory + 1, 3'000'001));

TEST_P(ReplyBodyOfLength, GivesItsBytesWholeAndInPieces)
{
    const ReplyBody body = filled(GetParam());
    EXPECT_EQ(body.size(), GetParam());
    EXPECT_EQ(body.whole(), bytesFrom(0, GetParam()));
    QByteArray together;
    while (together.size() < body.size()) {
        const std::optional<QByteArray> piece = body.piece(together.size(), 100'000);
        ASSERT_TRUE(piece);
        ASSERT_FALSE(piece->isEmpty());
        together += *piece;
    }
    EXPECT_EQ(together, bytesFrom(0, GetParam()));
    EXPECT_EQ(body.piece(GetParam(), 10), QByteArray());
    EXPECT_EQ(body.head(), bytesFrom(0, std::min(GetParam(), ReplyBody::kHeadBytes)));
}

TEST_P(ReplyBodyOfLength, BecomesAFile)
{
    ReplyBody body = filled(GetParam());
    EXPECT_EQ(body.storeAs(work_, tree_.path(u"a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"a.jpg"), bytesFrom(0, GetParam()));
}

TEST_P(ReplyBodyOfLength, ReplacesNoFile)
{
    tree_.write(u"a.jpg", "old");
    ReplyBody body = filled(GetParam());
    EXPECT_EQ(body.storeAs(work_, tree_.path(u"a.jpg")).outcome, StoreOutcome::AlreadyThere);
    EXPECT_EQ(tree_.read(u"a.jpg"), "old");
}

TEST_P(ReplyBodyOfLength, LeavesNothingUnlessItIsStored)
{
    static_cast<void>(filled(GetParam()));
    EXPECT_EQ(tree_.exists(u"tmp") ? tree_.files(u"tmp") : QStringList(), QStringList());
    EXPECT_EQ(stock_->files, 0);
    EXPECT_EQ(stock_->bytesInMemory, 0);
}

TEST_P(ReplyBodyOfLength, IsTheSameAfterAMove)
{
    ReplyBody body = filled(GetParam());
    ReplyBody moved(std::move(body));
    ReplyBody assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.whole(), bytesFrom(0, GetParam()));
    EXPECT_EQ(stock_->files, GetParam() > ReplyBody::kMostInMemory ? 1 : 0);
}

TEST_F(ReplyBodyTest, HasADigestOfItsBytesHoweverTheyCameAndAreKept)
{
    for (const qint64 size : {qint64{40'000}, ReplyBody::kMostInMemory + 70'000}) {
        ReplyBody inPieces(work_, stock_);
        inPieces.digestAlong();
        for (qint64 at = 0; at < size; at += kPiece) {
            inPieces.append(bytesFrom(at, std::min(kPiece, size - at)));
        }
        ReplyBody atOnce(work_, stock_);
        atOnce.digestAlong();
        atOnce.append(bytesFrom(0, size));
        EXPECT_EQ(inPieces.digest().size(), 32);
        EXPECT_EQ(inPieces.digest(), atOnce.digest());
        const ReplyBody taken = std::move(inPieces);
        EXPECT_EQ(taken.digest(), atOnce.digest());
        atOnce.append("x");
        EXPECT_NE(taken.digest(), atOnce.digest());
    }
    EXPECT_EQ(filled(40'000).digest(), QByteArray());
}

TEST_F(ReplyBodyTest, HasItsDigestThoughTheDiskDoesNotTakeIt)
{
    tree_.write(u"in the way", "a file");
    ReplyBody lost(tree_.path(u"in the way"), stock_);
    ReplyBody whole(work_, stock_);
    for (ReplyBody *const body : {&lost, &whole}) {
        body->digestAlong();
        body->append(bytesFrom(0, ReplyBody::kMostInMemory + 1));
    }
    ASSERT_FALSE(lost.whole());
    EXPECT_EQ(lost.digest(), whole.digest());
}

TEST_F(ReplyBodyTest, KeepsOnlyItsHeadInMemoryOnceItIsLong)
{
    const ReplyBody body = filled(1'000'000);
    EXPECT_EQ(stock_->files, 1);
    EXPECT_LE(stock_->bytesInMemory, ReplyBody::kHeadBytes);
}

TEST_F(ReplyBodyTest, TogetherTakeNoMoreMemoryThanTheirShare)
{
    std::vector<ReplyBody> bodies;
    for (int i = 0; i < 200; ++i) {
        bodies.push_back(filled(ReplyBody::kMostInMemory));
        ASSERT_LE(stock_->bytesInMemory, ReplyBody::kMostInMemoryTogether);
    }
    EXPECT_GT(stock_->files, 0);
    EXPECT_EQ(bodies.back().whole(), bytesFrom(0, ReplyBody::kMostInMemory));
}

TEST_F(ReplyBodyTest, MakesNoFolderForASmallBody)
{
    const ReplyBody body = filled(1000);
    EXPECT_FALSE(tree_.exists(u"tmp"));
}

TEST_F(ReplyBodyTest, GoesOnCountingWhenTheDiskIsFull)
{
    const FileSizeLimit full(500'000);
    ReplyBody body = filled(1'000'000);
    EXPECT_EQ(body.size(), 1'000'000);
    EXPECT_EQ(body.error(), std::errc::file_too_large);
    EXPECT_EQ(body.whole(), std::nullopt);
    EXPECT_EQ(body.head(), bytesFrom(0, ReplyBody::kHeadBytes));
    const StoreResult result = body.storeAs(work_, tree_.path(u"a.jpg"));
    EXPECT_EQ(result.outcome, StoreOutcome::Failed);
    EXPECT_EQ(result.error, std::errc::file_too_large);
    EXPECT_EQ(stock_->files, 0);
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST_F(ReplyBodyTest, NeedsAFolderOnlyWhenItIsLong)
{
    work_.clear();
    EXPECT_FALSE(filled(1000).error());
    EXPECT_EQ(filled(1'000'000).error(), std::errc::no_such_file_or_directory);
}

TEST_F(ReplyBodyTest, OfBytesIsWhole)
{
    const ReplyBody body(QByteArray("picture"));
    EXPECT_EQ(body.size(), 7);
    EXPECT_EQ(body.whole(), "picture");
    EXPECT_TRUE(ReplyBody().isEmpty());
}

} // namespace
} // namespace velmora::test
