// What an answer is worth: which of the two rules for new images decides.
#include "capture/AnswerWorth.h"

#include "capture/HttpDate.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kHeader = QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT");
const QString kStored = QStringLiteral("07/03/2006 14:05:09");
const PictureMark kMark{"digest", {}};

struct WorthRow
{
    const char *name;
    QString header;
    Keep keep;
    PictureMark stored;
    FolderState folder;
    Worth worth;
};

void PrintTo(const WorthRow &row, std::ostream *out)
{
    *out << row.name;
}

class AnswerWorth : public testing::TestWithParam<WorthRow>
{
};

TEST_P(AnswerWorth, FollowsTheRuleThatIsChosen)
{
    const WorthRow &row = GetParam();
    const KeepChoice choice{row.keep};
    const ImageDates dates = imageDates(row.header, kStored, choice);
    EXPECT_EQ(worthOf({dates, choice, kMark, row.stored, row.folder}), row.worth);
}

TEST_P(AnswerWorth, IsTheSameByTheFolderItself)
{
    const WorthRow &row = GetParam();
    const TempTree tree;
    if (row.folder == FolderState::HoldsFiles) {
        tree.write(u"image.jpg", "1");
    }
    const KeepChoice choice{row.keep};
    const ImageDates dates = imageDates(row.header, kStored, choice);
    EXPECT_EQ(worthIn(tree.path(), {dates, choice, kMark, row.stored, {}}), row.worth);
}

const WorthRow kRows[] = {
    {"SameDate", kHeader, Keep::Dated, {}, FolderState::HoldsFiles, Worth::Unchanged},
    {"SameDateOfComparedCamera",
     kHeader,
     Keep::Differing,
     {},
     FolderState::HoldsFiles,
     Worth::Unchanged},
    {"SameDateIntoEmptyFolder", kHeader, Keep::Dated, {}, FolderState::Empty, Worth::New},
    {"OtherDate",
     QStringLiteral("Tue, 07 Mar 2006 14:05:10 GMT"),
     Keep::Dated,
     {},
     FolderState::HoldsFiles,
     Worth::New},
    {"NotADate", QStringLiteral("now"), Keep::Dated, {}, FolderState::HoldsFiles, Worth::New},
    {"NoDate", {}, Keep::Dated, {}, FolderState::HoldsFiles, Worth::NotDated},
    {"NoDateIntoEmptyFolder", {}, Keep::Dated, {}, FolderState::Empty, Worth::New},
    {"ComparedAndSame", {}, Keep::Differing, kMark, FolderState::HoldsFiles, Worth::Unchanged},
    {"ComparedAndOther", {}, Keep::Differing, {}, FolderState::HoldsFiles, Worth::New},
    {"ComparedIntoEmptyFolder", {}, Keep::Clearly, kMark, FolderState::Empty, Worth::New},
};

INSTANTIATE_TEST_SUITE_P(Rules, AnswerWorth, testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(IsCompared, OnlyWithoutADateAndWhereChosen)
{
    const ImageDates dated = imageDates(kHeader, {}, {});
    EXPECT_TRUE(isCompared({{}, {Keep::Differing}, {}, {}, {}}));
    EXPECT_TRUE(isCompared({{}, {Keep::Clearly}, {}, {}, {}}));
    EXPECT_FALSE(isCompared({{}, {Keep::Dated}, {}, {}, {}}));
    EXPECT_FALSE(isCompared({dated, {Keep::Differing}, {}, {}, {}}));
}

TEST(ImageDates, AreThoseOfTheAnswerAndOfTheSettings)
{
    const ImageDates dates = imageDates(kHeader, kStored, {});
    EXPECT_EQ(dates.header, kHeader);
    EXPECT_EQ(dates.modified, CalculDate(kHeader));
    EXPECT_EQ(dates.stored, dates.modified);
    EXPECT_FALSE(imageDates({}, {}, {}).modified);
    EXPECT_FALSE(imageDates({}, {}, {}).stored);
}

TEST(ImageDates, TakeAHeaderThatIsNoDateForNoneWherePicturesAreCompared)
{
    const QString header = QStringLiteral("garbage");
    EXPECT_EQ(imageDates(header, {}, {Keep::Dated}).header, header);
    EXPECT_EQ(imageDates(header, {}, {Keep::Differing}).header, QString());
    EXPECT_TRUE(isCompared(
        {imageDates(QStringLiteral("-1"), {}, {Keep::Clearly}), {Keep::Clearly}, {}, {}, {}}));
}

} // namespace
} // namespace velmora::test
