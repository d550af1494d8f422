// The table of cameras as a view sees it.
#include "health/HealthTable.h"

#include "HealthHouse.h"

#include <QAbstractItemModelTester>
#include <QTest>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kThree{0, 3};

class HealthTableTest : public HealthTest
{
protected:
    HealthTableTest()
    {
        for (const CameraAddress camera : {kOne, kTwo, kThree}) {
            add(camera);
        }
        book_.load();
    }

    [[nodiscard]] QString text(int row, HealthTable::Column column) const
    {
        return table_.index(row, column).data().toString();
    }

    [[nodiscard]] qint64 badness(int row) const
    {
        return table_.index(row, HealthTable::Lamp).data(HealthTable::kSortRole).toLongLong();
    }

    HealthTable table_{book_};
    QAbstractItemModelTester tester_{&table_};
};

TEST_F(HealthTableTest, HasARowForEachCamera)
{
    table_.refresh();
    ASSERT_EQ(table_.rowCount(), 3);
    EXPECT_EQ(table_.address(0), kOne);
    house_.addCamera(kTwo, {});
    book_.followTable();
    EXPECT_EQ(table_.rowCount(), 2);
    house_.addCamera({9, 9}, QStringLiteral("http://new/a.jpg"));
    book_.followTable();
    EXPECT_EQ(table_.rowCount(), 3);
    EXPECT_EQ(text(2, HealthTable::Camera), QStringLiteral("9:9 new/a.jpg"));
}

TEST_F(HealthTableTest, PutsLateBeforeFailingBeforeUnknownBeforeGood)
{
    table_.refresh();
    deliver(kOne, 2);
    book_.setLate(kOne, true);
    book_.addFailure(kTwo, QStringLiteral("no answer"));
    EXPECT_GT(badness(0), badness(1));
    EXPECT_GT(badness(1), badness(2));
    deliver(kThree, 2);
    const qint64 good = badness(2);
    EXPECT_GT(badness(1), good);
    EXPECT_EQ(text(0, HealthTable::Lamp), QStringLiteral("late"));
    EXPECT_EQ(text(1, HealthTable::Lamp), QStringLiteral("failing"));
    EXPECT_EQ(text(2, HealthTable::Lamp), QStringLiteral("good"));
}

TEST_F(HealthTableTest, PutsTheLongestFailingAboveThoseThatDoNotFail)
{
    table_.refresh();
    const auto failing = [this](int row) {
        return table_.index(row, HealthTable::FailedFor).data(HealthTable::kSortRole).toLongLong();
    };
    book_.addFailure(kOne, QStringLiteral("no answer"));
    clock_.advance(1min);
    book_.addFailure(kTwo, QStringLiteral("no answer"));
    EXPECT_GT(failing(0), failing(1));
    EXPECT_GT(failing(1), failing(2));
}

TEST_F(HealthTableTest, SortsColumnsByTheirNumbersNotByTheirTexts)
{
    table_.refresh();
    deliver(kOne, 12);
    deliver(kTwo, 3);
    const auto value = [this](int row, HealthTable::Column column) {
        return table_.index(row, column).data(HealthTable::kSortRole).toLongLong();
    };
    EXPECT_EQ(value(0, HealthTable::Day), 12);
    EXPECT_EQ(value(1, HealthTable::Day), 3);
    EXPECT_EQ(value(2, HealthTable::Day), 0);
    EXPECT_GT(value(0, HealthTable::Age), value(1, HealthTable::Age)) << "older";
    EXPECT_GT(value(2, HealthTable::Age), value(0, HealthTable::Age)) << "none at all";
    EXPECT_EQ(value(0, HealthTable::Interval), 60);
    EXPECT_EQ(value(2, HealthTable::Interval), 0);
    EXPECT_GE(value(0, HealthTable::ADay), value(1, HealthTable::ADay));
    EXPECT_GE(value(0, HealthTable::InAll), value(1, HealthTable::InAll));
}

TEST_F(HealthTableTest, ShowsWhatIsKnown)
{
    table_.refresh();
    deliver(kOne, 3);
    book_.addFailure(kOne, QStringLiteral("no answer"));
    clock_.advance(2min);
    EXPECT_EQ(text(0, HealthTable::Age), QStringLiteral("3 min"));
    EXPECT_EQ(text(0, HealthTable::Interval), QStringLiteral("1 min"));
    EXPECT_EQ(text(0, HealthTable::Day), QStringLiteral("3"));
    EXPECT_EQ(text(0, HealthTable::Failure), QStringLiteral("no answer"));
    EXPECT_EQ(text(0, HealthTable::FailedFor), QStringLiteral("2 min"));
    EXPECT_EQ(text(0, HealthTable::Failures), QStringLiteral("1"));
    const QVariantList bars =
        table_.index(0, HealthTable::Day).data(HealthTable::kBarsRole).toList();
    ASSERT_EQ(bars.size(), kBars);
    EXPECT_EQ(bars.last().toInt(), 3);
}

TEST_F(HealthTableTest, ShowsChangesTogetherASecondLater)
{
    table_.refresh();
    house_.finish();
    int shown = 0;
    QObject::connect(&table_, &QAbstractItemModel::dataChanged, &table_,
                     [&](const QModelIndex &first) { shown += first.row() == 0 ? 1 : 0; });
    for (int i = 0; i < 100; ++i) {
        book_.addFailure(kOne, QStringLiteral("no answer"));
    }
    EXPECT_EQ(shown, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown > 0; }));
    EXPECT_EQ(shown, 1);
}

TEST_F(HealthTableTest, HasATitleForEachColumn)
{
    for (int column = 0; column < HealthTable::kColumns; ++column) {
        EXPECT_FALSE(
            table_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().isEmpty());
    }
}

} // namespace
} // namespace velmora::test
