// Messages about problems: one box at a time.
#include "ui/MessageBoxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

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

class WarningOverADialog : public MessageBoxesTest
{
protected:
    WarningOverADialog()
    {
        window_.show();
        question_->setAttribute(Qt::WA_DeleteOnClose);
        question_->open();
        EXPECT_TRUE(QTest::qWaitForWindowActive(question_));
        messages_.warn(QStringLiteral("disk full"));
    }

    static QMessageBox *warning()
    {
        const QList<QMessageBox *> boxes = openBoxes();
        const auto found =
            std::ranges::find(boxes, QStringLiteral("disk full"), &QMessageBox::text);
        return found == boxes.end() ? nullptr : *found;
    }

    static void deleteClosed()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QWidget window_;
    QPointer<QMessageBox> question_ = new QMessageBox(&window_);
};

TEST_F(WarningOverADialog, OutlivesIt)
{
    question_->close();
    deleteClosed();
    ASSERT_EQ(question_, nullptr);
    ASSERT_NE(warning(), nullptr);
    EXPECT_EQ(warning()->parentWidget(), &window_);
}

TEST_F(WarningOverADialog, CanBeAnsweredFirst)
{
    QTest::mouseClick(warning()->button(QMessageBox::Ok), Qt::LeftButton);
    question_->close();
    deleteClosed();
    EXPECT_EQ(openBoxes(), QList<QMessageBox *>());
}

TEST_F(WarningOverADialog, CanBeAnsweredAfterIt)
{
    question_->close();
    deleteClosed();
    QTest::mouseClick(warning()->button(QMessageBox::Ok), Qt::LeftButton);
    deleteClosed();
    EXPECT_EQ(openBoxes(), QList<QMessageBox *>());
}

TEST_F(MessageBoxesTest, ShowsWhatComesAtTheMomentOfTheAnswer)
{
    messages_.warn(QStringLiteral("one"));
    openBoxes().first()->button(QMessageBox::Ok)->click();
    messages_.warn(QStringLiteral("two"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(openBoxes().size(), 1);
    EXPECT_EQ(openBoxes().first()->text(), QStringLiteral("two"));
}

} // namespace
} // namespace velmora
