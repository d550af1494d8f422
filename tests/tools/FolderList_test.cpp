// The import's folder list: its levels, the folders below them, and the path text of each.
#include "tools/FolderList.h"

#include "tools/FolderPath.h"

#include <QAbstractItemModelTester>
#include <QFile>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct PathRow
{
    const char *text;
    const char *path;
    const char *levels;
};

class FolderPaths : public testing::TestWithParam<PathRow>
{
};

TEST_P(FolderPaths, HaveEachBackslashOnceAndOnlyARootEndsWithOne)
{
    const QString path = folderPath(QString::fromUtf8(GetParam().text));
    EXPECT_EQ(path, QString::fromUtf8(GetParam().path));
    EXPECT_EQ(folderLevels(path).join(u'|'), QString::fromUtf8(GetParam().levels));
    EXPECT_EQ(folderPath(path), path);
}

INSTANTIATE_TEST_SUITE_P(Texts, FolderPaths,
                         testing::Values(PathRow{"C:", "C:\\", "C:\\"},
                                         PathRow{"C:\\", "C:\\", "C:\\"},
                                         PathRow{"c:\\a\\b\\", "c:\\a\\b", "c:\\|a|b"},
                                         PathRow{"C:a", "C:\\a", "C:\\|a"},
                                         PathRow{"C:\\a\\\\b", "C:\\a\\b", "C:\\|a|b"},
                                         PathRow{"\\", "\\", "\\"}, PathRow{"", "\\", "\\"},
                                         PathRow{"\\media\\usb", "\\media\\usb", "\\|media|usb"},
                                         PathRow{"media", "\\media", "\\|media"},
                                         PathRow{"1:\\a", "\\1:\\a", "\\|1:|a"},
                                         PathRow{"C:\\a b", "C:\\a b", "C:\\|a b"}));

TEST(FolderPath, LevelsCountFromTheRoot)
{
    const QString path = QStringLiteral("C:\\a\\b");
    EXPECT_EQ(folderAtLevel(path, 1), QStringLiteral("C:\\"));
    EXPECT_EQ(folderAtLevel(path, 2), QStringLiteral("C:\\a"));
    EXPECT_EQ(folderAtLevel(path, 3), path);
    EXPECT_EQ(folderAtLevel(path, 9), path);
    EXPECT_EQ(folderAtLevel(path, 0), QStringLiteral("C:\\"));
}

TEST(FolderPath, ASubFolderOfARootHasNoDoubledBackslash)
{
    EXPECT_EQ(subFolder(QStringLiteral("C:\\"), QStringLiteral("a")), QStringLiteral("C:\\a"));
    EXPECT_EQ(subFolder(QStringLiteral("\\a"), QStringLiteral("b")), QStringLiteral("\\a\\b"));
}

SortedNames names(const QByteArrayList &list)
{
    NameList names;
    for (const QByteArray &name : list) {
        names.add(name);
    }
    while (names.sortSome()) {
    }
    return std::make_shared<const NameList>(std::move(names));
}

class FolderListTest : public testing::Test
{
protected:
    QString row(int row, int role = Qt::DisplayRole) const
    {
        return list_.index(row, 0).data(role).toString();
    }

    FolderList list_;
    QAbstractItemModelTester tester_{&list_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(FolderListTest, IsEmptyAtFirst)
{
    EXPECT_EQ(list_.rowCount(), 0);
    EXPECT_EQ(list_.pathAt(0), QString());
}

TEST_F(FolderListTest, ShowsTheLevelsAndThenTheFoldersInOrder)
{
    list_.open(QStringLiteral("C:\\a\\b"));
    EXPECT_EQ(list_.rowCount(), 3);
    list_.setSubFolders(names({"zoo", "Art"}));
    QStringList shown;
    for (int i = 0; i < list_.rowCount(); ++i) {
        shown.append(row(i));
    }
    EXPECT_EQ(shown.join(u'|'), QStringLiteral("C:\\|a|b|Art|zoo"));
    EXPECT_EQ(list_.openRow(), 2);
}

TEST_F(FolderListTest, TellsHowFarInAnEntryStandsAndWhetherItIsOpen)
{
    list_.open(QStringLiteral("C:\\a"));
    list_.setSubFolders(names({"b", "c"}));
    const QList<int> depths{0, 1, 2, 2};
    for (int i = 0; i < list_.rowCount(); ++i) {
        EXPECT_EQ(list_.index(i, 0).data(FolderList::kDepthRole).toInt(), depths.at(i)) << i;
        EXPECT_EQ(list_.index(i, 0).data(FolderList::kOpenRole).toBool(), i < 2) << i;
    }
}

TEST_F(FolderListTest, EveryEntryHasAPath)
{
    list_.open(QStringLiteral("\\media\\usb"));
    list_.setSubFolders(names({"DCIM"}));
    EXPECT_EQ(list_.pathAt(0), QStringLiteral("\\"));
    EXPECT_EQ(list_.pathAt(1), QStringLiteral("\\media"));
    EXPECT_EQ(list_.pathAt(2), QStringLiteral("\\media\\usb"));
    EXPECT_EQ(list_.pathAt(3), QStringLiteral("\\media\\usb\\DCIM"));
    EXPECT_EQ(list_.pathAt(4), QString());
    EXPECT_EQ(list_.pathAt(-1), QString());
}

TEST_F(FolderListTest, NewFoldersTakeThePlaceOfTheFormerOnes)
{
    list_.open(QStringLiteral("C:\\"));
    list_.setSubFolders(names({"a", "b", "c"}));
    list_.setSubFolders(names({"d"}));
    EXPECT_EQ(list_.rowCount(), 2);
    EXPECT_EQ(row(1), QStringLiteral("d"));
    list_.setSubFolders(names({}));
    EXPECT_EQ(list_.rowCount(), 1);
}

TEST_F(FolderListTest, AnotherFolderBeginsWithoutFolders)
{
    list_.open(QStringLiteral("C:\\"));
    list_.setSubFolders(names({"a", "b", "c"}));
    list_.open(QStringLiteral("C:\\a"));
    EXPECT_EQ(list_.rowCount(), 2);
}

TEST_F(FolderListTest, ANameIsShownOnOneLineAndKeptAsItIs)
{
    list_.open(QStringLiteral("C:\\"));
    list_.setSubFolders(names({"two\nlines"}));
    EXPECT_EQ(row(1), QStringLiteral("two lines"));
    EXPECT_EQ(list_.pathAt(1), QStringLiteral("C:\\two\nlines"));
}

} // namespace
} // namespace velmora::test
