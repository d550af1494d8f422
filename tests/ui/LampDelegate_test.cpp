// The lamps of the health table: each is drawn once.
#include "ui/LampDelegate.h"

#include <QStandardItemModel>

#include <gtest/gtest.h>

#include <set>

namespace velmora::test {
namespace {

struct OpenDelegate : LampDelegate
{
    using LampDelegate::initStyleOption;
};

qint64 iconKey(const OpenDelegate &delegate, const QModelIndex &index, QSize size)
{
    QStyleOptionViewItem option;
    option.decorationSize = size;
    delegate.initStyleOption(&option, index);
    return option.icon.cacheKey();
}

TEST(LampDelegateTest, DrawsTheLampOfAStateOnce)
{
    constexpr QSize kSize(16, 16);
    QStandardItemModel model(HealthTable::kStates, 1);
    const OpenDelegate delegate;
    std::set<qint64> keys;
    for (int round = 0; round < 3; ++round) {
        for (int state = 0; state < model.rowCount(); ++state) {
            const QModelIndex index = model.index(state, 0);
            model.setData(index, state, HealthTable::kStateRole);
            keys.insert(iconKey(delegate, index, kSize));
        }
    }
    EXPECT_EQ(keys.size(), HealthTable::kStates);
    EXPECT_EQ(keys.count(iconKey(delegate, model.index(0, 0), kSize * 2)), 0U);
}

} // namespace
} // namespace velmora::test
