// A list is stored as its user was shown it, or not at all.
#include "admin/ListEdit.h"

#include "cameras/CameraTable.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::TempTree;

class ListEditTest : public testing::Test
{
protected:
    [[nodiscard]] QString url(CameraAddress camera) const
    {
        return CameraTable::url(settings_.snapshot(), camera);
    }

    TempTree tree_;
    SettingsFile settings_{tree_.path()};
    ListEdit edit_{settings_};
};

TEST_F(ListEditTest, CountsWhatBecomesOfTheLines)
{
    settings_.write(u"Liste0", u"lst0", QStringLiteral("http://a/"));
    edit_.read("http://a/\nhttp://b/\n");
    EXPECT_EQ(edit_.summary(), QStringLiteral("1 new, 1 double, 0 wrong"));
    EXPECT_TRUE(edit_.mayStore());
    edit_.read("http://b/\n" + QByteArray(300, 'x') + '\n');
    EXPECT_EQ(edit_.summary(),
              QStringLiteral("1 new, 0 double, 1 wrong. Nothing is stored while a line is wrong."));
    EXPECT_FALSE(edit_.mayStore());
}

TEST_F(ListEditTest, HasNothingToStoreAtFirstOrOfDoublesAlone)
{
    EXPECT_FALSE(edit_.mayStore());
    settings_.write(u"Liste0", u"lst0", QStringLiteral("http://a/"));
    edit_.read("http://a/\n");
    EXPECT_FALSE(edit_.mayStore());
}

TEST_F(ListEditTest, StoresWhereThePlanHasThem)
{
    edit_.read("http://a/\nhttp://b/\n");
    EXPECT_EQ(edit_.store(), ListStoring::Stored);
    EXPECT_EQ(url({0, 0}), QStringLiteral("http://a/"));
    EXPECT_EQ(url({0, 1}), QStringLiteral("http://b/"));
    EXPECT_EQ(edit_.summary(), QStringLiteral("0 new, 2 double, 0 wrong"));
}

TEST_F(ListEditTest, StoresNothingOverARowThatWasTakenMeanwhile)
{
    edit_.read("http://a/\n");
    settings_.write(u"Liste0", u"lst0", QStringLiteral("http://other/"));
    EXPECT_EQ(edit_.store(), ListStoring::Overtaken);
    EXPECT_EQ(url({0, 0}), QStringLiteral("http://other/"));
    EXPECT_EQ(url({0, 1}), QString());
    EXPECT_EQ(edit_.plan().cameras.at(0).place, (CameraAddress{0, 1}));
}

TEST_F(ListEditTest, PlansAgainOnlyWhatHasChanged)
{
    edit_.read("http://a/\n");
    EXPECT_FALSE(edit_.planAgain());
    settings_.write(u"Liste0", u"lst0", QStringLiteral("http://other/"));
    EXPECT_TRUE(edit_.planAgain());
    EXPECT_FALSE(edit_.planAgain());
}

TEST_F(ListEditTest, GivesTheTextOfAFileToBeCorrected)
{
    tree_.write(u"list.csv", "http://a/\n");
    const ListFile file = readListFile(tree_.path(u"list.csv"));
    EXPECT_EQ(file.text, QStringLiteral("http://a/\n"));
    EXPECT_EQ(file.bytes, "http://a/\n");
    EXPECT_EQ(file.fault, QString());
}

TEST_F(ListEditTest, GivesNoTextOfWhatIsNoList)
{
    tree_.write(u"picture.csv", QByteArray("\xff\xd8\xff\x00\x01\x02", 6));
    const ListFile file = readListFile(tree_.path(u"picture.csv"));
    EXPECT_EQ(file.text, QString());
    EXPECT_EQ(file.bytes.size(), 6);
    EXPECT_EQ(file.fault, QString());
}

TEST_F(ListEditTest, SaysWhyAFileCannotBeRead)
{
    EXPECT_TRUE(readListFile(tree_.path(u"none.csv"))
                    .fault.contains(QStringLiteral("No such file or directory")));
    tree_.write(u"long.csv", QByteArray(kMostListFileBytes + 1, 'x'));
    EXPECT_TRUE(readListFile(tree_.path(u"long.csv"))
                    .fault.contains(QStringLiteral("far longer than a hundred cameras")));
}

} // namespace
} // namespace velmora
