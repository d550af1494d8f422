// What the user sees of problems, how often, and what is logged.
#include "settings/Problems.h"

#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::FakeClock;
using test::TempTree;

class ProblemsTest : public testing::Test
{
protected:
    ProblemsTest()
    {
        QObject::connect(&problems, &Problems::warned, &problems,
                         [this](const QString &text) { shown.append(text); });
    }

    TempTree tree;
    FakeClock clock;
    EventLog log{tree.path(), clock};
    Problems problems{log};
    QStringList shown;
};

int failing()
{
    throw OverflowError(QStringLiteral("Overflow: too large"));
}

TEST_F(ProblemsTest, ShowsAWarningOnceAndLogsItEachTime)
{
    log.setOn(true);
    problems.warn(QStringLiteral("a"));
    problems.warn(QStringLiteral("a"));
    EXPECT_EQ(shown, QStringList{QStringLiteral("a")});
    EXPECT_EQ(tree.read(u"Velmora.log"), QByteArray("14:05:09 a\n14:05:09 a\n"));
}

TEST_F(ProblemsTest, ShowsEachWarningOfAnotherText)
{
    problems.warn(QStringLiteral("a"));
    problems.warn(QStringLiteral("b"));
    problems.warn(QStringLiteral("a"));
    EXPECT_EQ(shown, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(ProblemsTest, TellsAndLogsEachTime)
{
    log.setOn(true);
    problems.tell(QStringLiteral("a"));
    problems.tell(QStringLiteral("a"));
    EXPECT_EQ(shown, (QStringList{QStringLiteral("a"), QStringLiteral("a")}));
    EXPECT_EQ(tree.read(u"Velmora.log"), QByteArray("14:05:09 a\n14:05:09 a\n"));
}

TEST_F(ProblemsTest, WritesNoLogWhileItIsOff)
{
    problems.warn(QStringLiteral("a"));
    problems.tell(QStringLiteral("b"));
    EXPECT_EQ(tree.files(), QStringList());
}

TEST_F(ProblemsTest, ShowsALogThatCannotBeWrittenOnce)
{
    tree.makeFolder(u"Velmora.log");
    log.setOn(true);
    problems.tell(QStringLiteral("a"));
    problems.tell(QStringLiteral("b"));
    ASSERT_EQ(shown.size(), 3);
    EXPECT_TRUE(shown[0].startsWith(QStringLiteral("The log file cannot be written")));
    EXPECT_EQ(shown.sliced(1), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(ProblemsTest, RemembersABoundedNumberOfTexts)
{
    for (int i = 0; i < 1001; ++i) {
        problems.warn(QString::number(i));
    }
    shown.clear();
    problems.warn(QStringLiteral("1000"));
    EXPECT_EQ(shown, QStringList()) << "the newest is remembered";
    problems.warn(QStringLiteral("0"));
    EXPECT_EQ(shown, QStringList{QStringLiteral("0")}) << "the oldest is not";
}

TEST_F(ProblemsTest, PassesOnAValueThatCanBeRead)
{
    EXPECT_EQ(problems.orDefault([] { return 7; }, 1), 7);
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(ProblemsTest, WarnsOnceAndGoesOnWithTheDefault)
{
    EXPECT_EQ(problems.orDefault(failing, 1), 1);
    EXPECT_EQ(problems.orDefault(failing, 2), 2);
    EXPECT_EQ(shown, QStringList{QStringLiteral("Overflow: too large")});
}

} // namespace
} // namespace velmora
