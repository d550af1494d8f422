// Keys in a list so long that it is laid out a part at a time.
#include "ui/ListBoxes.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kRows = 100000;

class LongModel final : public QAbstractListModel
{
public:
    [[nodiscard]] int rowCount(const QModelIndex &) const override { return kRows; }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(QString::number(index.row())) : QVariant();
    }

    void readAgain()
    {
        beginResetModel();
        endResetModel();
    }
};

class FileViewKeys : public testing::TestWithParam<int>
{
protected:
    FileViewKeys()
    {
        view_.setModel(&model_);
        view_.resize(200, 400);
        view_.show();
        view_.showRow(kRows - 1);
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return view_.visualRect(model_.index(kRows - 1, 0)).isValid(); }));
    }

    // The row that a key selects from the last one; -1 if it selects none.
    int rowBehind(int key)
    {
        QSignalSpy chosen(&view_, &FileView::chosen);
        QTest::keyClick(&view_, static_cast<Qt::Key>(key));
        view_.showRow(kRows - 1);
        return chosen.isEmpty() ? -1 : chosen.front().front().toInt();
    }

    LongModel model_;
    FileView view_;
};

TEST_P(FileViewKeys, LeadToTheSameRowWhileTheListIsLaidOut)
{
    const int usual = rowBehind(GetParam());
    model_.readAgain();
    view_.showRow(kRows - 1);
    EXPECT_EQ(rowBehind(GetParam()), usual);
    EXPECT_EQ(view_.currentIndex().row(), kRows - 1);
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return view_.visualRect(view_.currentIndex()).intersects(view_.viewport()->rect());
    }));
}

INSTANTIATE_TEST_SUITE_P(Move, FileViewKeys,
                         testing::Values(Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                                         Qt::Key_Home, Qt::Key_End));

} // namespace
} // namespace velmora::test
