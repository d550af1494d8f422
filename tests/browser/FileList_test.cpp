// The list of a camera's images as a model, and its selection.
#include "browser/FileList.h"

#include "support/Printers.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora {
namespace {

std::shared_ptr<const ImageNames> namesOf(const QByteArrayList &list)
{
    ImageNamesBuilder builder;
    for (const QByteArray &name : list) {
        builder.add(name);
    }
    while (builder.sortSome()) {
    }
    return std::make_shared<const ImageNames>(builder.take());
}

class FileListTest : public testing::Test
{
protected:
    void bind(const QByteArrayList &names)
    {
        list_.bind({}, QStringLiteral("C:\\in\\a\\"), namesOf(names));
    }

    FileList list_;
    QAbstractItemModelTester tester_{&list_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(FileListTest, IsEmptyAndWithoutSelectionAtFirst)
{
    EXPECT_EQ(list_.count(), 0);
    EXPECT_EQ(list_.ListIndex(), -1);
    EXPECT_TRUE(list_.selected().isNone());
}

TEST_F(FileListTest, ListsTheNamesInOrder)
{
    bind({"20060307_2.jpg", "20060307_1.jpg"});
    ASSERT_EQ(list_.rowCount(), 2);
    EXPECT_EQ(list_.index(0).data().toString(), QStringLiteral("20060307_1.jpg"));
    EXPECT_EQ(list_.index(1).data().toString(), QStringLiteral("20060307_2.jpg"));
}

TEST_F(FileListTest, TellsTheFileAtAPositionWithItsFolder)
{
    bind({"20060307_1.jpg"});
    EXPECT_EQ(list_.file(0).path(), QStringLiteral("C:\\in\\a\\20060307_1.jpg"));
}

TEST_F(FileListTest, HasNoFileOutsideTheList)
{
    bind({"20060307_1.jpg"});
    EXPECT_TRUE(list_.file(-1).isNone());
    EXPECT_TRUE(list_.file(1).isNone());
    EXPECT_EQ(list_.file(1).path(), QString());
}

TEST_F(FileListTest, SelectsNoneWhenANewFolderIsListed)
{
    bind({"20060307_1.jpg"});
    list_.setListIndex(0);
    bind({"20060307_1.jpg"});
    EXPECT_EQ(list_.ListIndex(), -1);
}

TEST_F(FileListTest, TellsOfTheSelectionThatGoesWithTheOldFolder)
{
    bind({"20060307_1.jpg"});
    list_.setListIndex(0);
    const QSignalSpy changes(&list_, &FileList::selectionChanged);
    bind({"20060307_2.jpg"});
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toInt(), -1);
}

TEST_F(FileListTest, TellsOfASelectionAndGivesItsFile)
{
    bind({"20060307_1.jpg", "20060307_2.jpg"});
    const QSignalSpy changes(&list_, &FileList::selectionChanged);
    list_.setListIndex(1);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toInt(), 1);
    EXPECT_EQ(list_.selected().name, QStringLiteral("20060307_2.jpg"));
}

TEST_F(FileListTest, SelectsNoneForAPositionOutsideTheList)
{
    bind({"20060307_1.jpg"});
    list_.setListIndex(0);
    list_.setListIndex(1);
    EXPECT_EQ(list_.ListIndex(), -1);
    list_.setListIndex(0);
    list_.setListIndex(-2);
    EXPECT_EQ(list_.ListIndex(), -1);
}

TEST_F(FileListTest, ShowsANameWithALineEndOnOneLine)
{
    bind({"20060307\n 1.jpg"});
    EXPECT_EQ(list_.index(0).data().toString(), QStringLiteral("20060307  1.jpg"));
    EXPECT_EQ(list_.file(0).name, QStringLiteral("20060307\n 1.jpg"));
}

TEST_F(FileListTest, HasTextsAloneAndNothingForOtherRows)
{
    bind({"20060307_1.jpg"});
    EXPECT_FALSE(list_.data(list_.index(0), Qt::DecorationRole).isValid());
    EXPECT_FALSE(list_.data({}, Qt::DisplayRole).isValid());
    EXPECT_EQ(list_.rowCount(list_.index(0)), 0);
}

} // namespace
} // namespace velmora
