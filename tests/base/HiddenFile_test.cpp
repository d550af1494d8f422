// A file that replaces what is in its place only when it is whole, and only an ordinary file.
#include "base/HiddenFile.h"

#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

class HiddenFileTest : public testing::Test
{
protected:
    void makePipe() { ASSERT_EQ(::mkfifo(QFile::encodeName(path_).constData(), 0600), 0); }

    void expectPipe()
    {
        struct stat info = {};
        ASSERT_EQ(::stat(QFile::encodeName(path_).constData(), &info), 0);
        EXPECT_TRUE(S_ISFIFO(info.st_mode));
    }

    static void write(const HiddenFile &file)
    {
        ASSERT_EQ(::write(file.descriptor(), "new", 3), 3);
        EXPECT_EQ(file.bytes(), 3);
    }

    test::TempTree tree_;
    const QString path_ = tree_.path(u"a.mp4");
};

TEST_F(HiddenFileTest, LeavesNothingWithoutItsEnd)
{
    write(HiddenFile(path_));
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST_F(HiddenFileTest, ReplacesAFileThatCameMeanwhile)
{
    HiddenFile file(path_);
    write(file);
    tree_.write(u"a.mp4", "old");
    EXPECT_FALSE(file.finish());
    EXPECT_EQ(tree_.read(u"a.mp4"), QByteArray("new"));
    EXPECT_EQ(tree_.files(), QStringList{QStringLiteral("a.mp4")});
}

TEST_F(HiddenFileTest, RefusesAPipeAtOnce)
{
    makePipe();
    EXPECT_EQ(HiddenFile(path_).error(), std::errc::invalid_argument);
    expectPipe();
}

TEST_F(HiddenFileTest, RefusesAFolderThatIsMissing)
{
    EXPECT_EQ(HiddenFile(tree_.path(u"missing/a.mp4")).error(),
              std::errc::no_such_file_or_directory);
}

TEST_F(HiddenFileTest, LeavesAPipeThatCameMeanwhileAlone)
{
    HiddenFile file(path_);
    write(file);
    makePipe();
    EXPECT_EQ(file.finish(), std::errc::invalid_argument);
    expectPipe();
}

TEST_F(HiddenFileTest, GoesWhereALinkLeadsThatCameMeanwhile)
{
    HiddenFile file(path_);
    write(file);
    tree_.write(u"real/a.mp4", "old");
    ASSERT_TRUE(QFile::link(tree_.path(u"real/a.mp4"), path_));
    EXPECT_FALSE(file.finish());
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
    EXPECT_EQ(tree_.read(u"real/a.mp4"), QByteArray("new"));
    EXPECT_EQ(tree_.files(u"real"), QStringList{QStringLiteral("a.mp4")});
}

} // namespace
} // namespace velmora
