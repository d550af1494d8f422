// File-name patterns by the rules of the names' home platform.
#include "base/FilePattern.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct PatternRow
{
    const char *what;
    QByteArray pattern;
    QByteArray name;
    bool matches;
};

class FilePatternTable : public testing::TestWithParam<PatternRow>
{
};

TEST_P(FilePatternTable, Matches)
{
    EXPECT_EQ(FilePattern(GetParam().pattern).matches(GetParam().name), GetParam().matches);
}

const PatternRow kMatching[] = {
    {"SameName", "IMG_1.JPG", "IMG_1.JPG", true},
    {"IgnoresCase", "*.jpg", "IMG_1.JPG", true},
    {"IgnoresCaseOfThePattern", "*.JPG", "img_1.jpg", true},
    {"EveryFile", "*.*", "readme.txt", true},
    {"EveryFileWithoutADot", "*.*", "readme", true},
    {"EveryFileThatBeginsWithADot", "*.*", ".hidden", true},
    {"DayWithADot", "20061005*.*", "20061005_1230450001.jpg", true},
    {"DayWithoutADot", "20061005*.*", "20061005_1230450001jpg", true},
    {"EndingWithoutADotAndNoStar", "readme.*", "README", true},
    {"StarIsNoText", "a*b", "ab", true},
    {"StarsInARow", "a**b", "axxb", true},
    {"StarTriesAgain", "*ab", "aab", true},
    {"StarSpansDots", "*.jpg", "a.b.jpg", true},
    {"QuestionMarksOfAName", "????????_??????.*", "20061005_123045.jpg", true},
    {"QuestionMarkIsOneCharacter", "d?p.jpg", "d\xC3\xA9p.jpg", true},
    {"QuestionMarkIsAByteThatIsNoText", "d?p.jpg", "d\x80p.jpg", true},
    {"CaseOfOtherLetters", "\xC3\xA9*.*", "\xC3\x89T\xC3\x89.JPG", true},
    {"CaseOfOtherLettersInThePattern", "\xC5\xB8*", "\xC3\xBF.jpg", true},
    {"NoDotAtAll", "*.", "readme", true},
    {"TheNameWithoutADot", "ReadMe.", "README", true},
    {"BeginningWithoutADot", "read*.", "readme", true},
    {"ManyDotsAreEveryName", "*.*.*", "readme", true},
    {"ManyDotsAreEveryNameWithOne", "*.*.*", "a.jpg", true},
    {"ManyDotsAreEveryNameWithMany", "*.*.*", "a.b.c.jpg", true},
    {"EmptyName", "*", "", true},
    {"LineBreak", "a*b", "a\nb", true},
};
INSTANTIATE_TEST_SUITE_P(Matching, FilePatternTable, testing::ValuesIn(kMatching),
                         [](const auto &row) { return row.param.what; });

const PatternRow kOthers[] = {
    {"OtherEnding", "*.jpg", "IMG_1.JPEG", false},
    {"LongerName", "*.jpg", "a.jpg.txt", false},
    {"OtherBeginning", "20*.*", "19991231_1230450001.jpg", false},
    {"NoDotWhereOneIsAskedFor", "*.jpg", "ajpg", false},
    {"OtherNameWithoutADot", "readme.*", "readme2", false},
    {"QuestionMarkIsNotNothing", "a?.jpg", "a.jpg", false},
    {"QuestionMarkIsNotTwo", "a?.jpg", "abc.jpg", false},
    {"OlderFormHasFewerDigits", "????????_??????.*", "20061005_1230450001.jpg", false},
    {"EmptyPattern", "", "a", false},
    {"DotAmongTheQuestionMarks", "????????_??????????.*", "20061005_123045.jpg", false},
    {"OtherLetter", "\xC3\x89.jpg", "\xC3\xAA.jpg", false},
    {"DotWhereNoneIsAskedFor", "*.", "a.jpg", false},
    {"DotAtTheEndWhereNoneIsAskedFor", "*.", "a.", false},
    {"DotStarInTheMiddle", "a.*b", "a", false},
    {"OtherNameWithoutItsDot", "name.", "names", false},
    {"QuestionMarkBehindADot", "a.?", "a", false},
};
INSTANTIATE_TEST_SUITE_P(Others, FilePatternTable, testing::ValuesIn(kOthers),
                         [](const auto &row) { return row.param.what; });

TEST(FilePattern, CountsAStrayContinuationByteAsACharacter)
{
    EXPECT_FALSE(FilePattern("?").matches("0\x80"));
    EXPECT_TRUE(FilePattern("??").matches("0\x80"));
}

} // namespace
} // namespace velmora
