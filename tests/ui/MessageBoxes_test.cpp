// Messages about problems: one box at a time.
#include "ui/MessageBoxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {
namespace {

QList<QMessageBox *> openBoxes()
{
    QList<QMessageBox *> boxes;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        auto *const box = qobject_cast<QMessageBox *>(widget);
        if (box != nullptr && box->isVisible()) {
            boxes.append(box);
        }
    }
    return boxes;
}

class MessageBoxesTest : public testing::Test
{
protected:
    ~MessageBoxesTest() override
    {
        for (QMessageBox *const box : openBoxes()) {
            delete box;
        }
    }

    MessageBoxes messages_;
};

TEST_F(MessageBoxesTest, ShowsAPlainWarning)
{
    messages_.warn(QStringLiteral("<b>disk</b> full"));
    ASSERT_EQ(openBoxes().size(), 1);
    const QMessageBox &box = *openBoxes().first();
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    EXPECT_EQ(box.text(), QStringLiteral("<b>disk</b> full"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_FALSE(box.isModal());
}

TEST_F(MessageBoxesTest, AddsToTheBoxThatStands)
{
    messages_.warn(QStringLiteral("one"));
    messages_.warn(QStringLiteral("two"));
    ASSERT_EQ(openBoxes().size(), 1);
    EXPECT_EQ(openBoxes().first()->text(), QStringLiteral("one\n\ntwo"));
}

TEST_F(MessageBoxesTest, KeepsTheBoxSmall)
{
    for (int i = 0; i < 100; ++i) {
        messages_.warn(QString::number(i));
    }
    ASSERT_EQ(openBoxes().size(), 1);
    EXPECT_TRUE(openBoxes().first()->text().endsWith(QStringLiteral("9\n\n…")));
}

TEST_F(MessageBoxesTest, StartsOverOnceAnswered)
{
    messages_.warn(QStringLiteral("one"));
    openBoxes().first()->button(QMessageBox::Ok)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(openBoxes().isEmpty());
    messages_.warn(QStringLiteral("two"));
    ASSERT_EQ(openBoxes().size(), 1);
    EXPECT_EQ(openBoxes().first()->text(), QStringLiteral("two"));
}

} // namespace
} // namespace velmora
