// Where a link leads, and whether that can be opened.
#include "base/LinkTarget.h"

#include "support/TempTree.h"
#include "support/WithoutRootRights.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

using test::TempTree;

class LinkTargetTest : public testing::Test
{
protected:
    LinkTargetTest()
    {
        tree_.write(u"drives/c/doc.txt", "text");
        tree_.write(u"drives/c/sub/two words.txt", "text");
    }

    [[nodiscard]] LinkTarget of(const QString &link) const { return linkTarget(link, paths_); }

    [[nodiscard]] QString native(const QString &relative) const { return tree_.path(relative); }

    TempTree tree_;
    NativePaths paths_{tree_.path()};
};

TEST_F(LinkTargetTest, IsAnAddressAsItStands)
{
    for (const char *const address : {"http://127.0.0.1/a b?c=%20", "https://example.org",
                                      "mailto:me@example.org", "x-my.scheme+1:thing"}) {
        const QString link = QString::fromLatin1(address);
        EXPECT_EQ(of(link).target, link);
        EXPECT_EQ(of(link).state, TargetState::Reachable) << address;
    }
}

TEST_F(LinkTargetTest, IsTheFileOfAPathText)
{
    const LinkTarget link = of(QStringLiteral("C:\\sub\\two words.txt"));
    EXPECT_EQ(link.target, native(QStringLiteral("drives/c/sub/two words.txt")));
    EXPECT_EQ(link.state, TargetState::Reachable);
}

TEST_F(LinkTargetTest, IsTakenFromTheDriveCWithoutAPathInFront)
{
    const LinkTarget link = of(QStringLiteral("doc.txt"));
    EXPECT_EQ(link.target, native(QStringLiteral("drives/c/doc.txt")));
    EXPECT_EQ(link.state, TargetState::Reachable);
}

TEST_F(LinkTargetTest, IsANativePathToo)
{
    const QString path = native(QStringLiteral("drives/c/doc.txt"));
    EXPECT_EQ(of(path).target, path);
    EXPECT_EQ(of(path).state, TargetState::Reachable);
    EXPECT_EQ(of(QStringLiteral("file://") + path).target, path);
}

TEST_F(LinkTargetTest, MayBeAFolder)
{
    EXPECT_EQ(of(QStringLiteral("C:\\sub\\")).state, TargetState::Reachable);
}

TEST_F(LinkTargetTest, IsMissingWithoutItsFile)
{
    EXPECT_EQ(of(QStringLiteral("C:\\none.txt")).state, TargetState::FileMissing);
    EXPECT_EQ(of(QStringLiteral("file://") + native(QStringLiteral("none"))).state,
              TargetState::FileMissing);
}

TEST_F(LinkTargetTest, IsMissingWhenItIsEmpty)
{
    EXPECT_EQ(of(QString()).state, TargetState::FileMissing);
    EXPECT_EQ(of(QStringLiteral("  ")).state, TargetState::FileMissing);
}

TEST_F(LinkTargetTest, HasNoFolderWithoutItsFolderOrDrive)
{
    for (const char16_t *const link :
         {u"C:\\none\\doc.txt", u"C:\\none\\", u"/none/", u"Q:\\doc.txt", u"C:\\doc.txt\\x"}) {
        EXPECT_EQ(of(QString::fromUtf16(link)).state, TargetState::FolderMissing)
            << QString::fromUtf16(link).toStdString();
    }
}

TEST_F(LinkTargetTest, MayNotBeReadWithoutTheRight)
{
    const QByteArray file = QFile::encodeName(native(QStringLiteral("drives/c/doc.txt")));
    const QByteArray folder = QFile::encodeName(native(QStringLiteral("drives/c/sub")));
    ASSERT_EQ(::chmod(QFile::encodeName(tree_.path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(file.constData(), 0), 0);
    ASSERT_EQ(::chmod(folder.constData(), 0), 0);
    const test::WithoutRootRights nobody;
    EXPECT_EQ(of(QStringLiteral("C:\\doc.txt")).state, TargetState::NoPermission);
    EXPECT_EQ(of(QStringLiteral("C:\\sub\\two words.txt")).state, TargetState::NoPermission);
}

} // namespace
} // namespace velmora
