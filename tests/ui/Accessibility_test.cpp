// What screen readers can read out, queried as the toolkit's bridge to them does.
#include "ui/Accessibility.h"

#include "WindowHouse.h"
#include "ui/BoxEdit.h"
#include "ui/DayNumbers.h"
#include "ui/ToolTips.h"
#include "ui/Zoom.h"

#include <QAccessible>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class AccessibilityTest : public testing::Test
{
    // Before there is any window, as in the program.
    struct Installed
    {
        Installed() { installAccessibility(); }
    } installed_;

protected:
    QAccessibleInterface &told(const QString &name)
    {
        return *QAccessible::queryAccessibleInterface(&house_.find<QWidget>(name));
    }

    WindowHouse house_;
};

TEST_F(AccessibilityTest, LabelsTellTheirNameAndTheirValue)
{
    house_.house.addCamera({0, 4}, QStringLiteral("http://cam/e.png"));
    house_.house.setValue(u"lNew", {0, 4}, QStringLiteral("12"));
    house_.selectTab(0);
    EXPECT_EQ(told(QStringLiteral("lNew4")).text(QAccessible::Name),
              QStringLiteral("New images of camera 4: 12"));
    EXPECT_EQ(told(QStringLiteral("lNew4")).text(QAccessible::Value), QStringLiteral("12"));
    EXPECT_EQ(told(QStringLiteral("lNew4")).role(), QAccessible::StaticText);
    EXPECT_TRUE(told(QStringLiteral("BestTime4"))
                    .text(QAccessible::Name)
                    .endsWith(QStringLiteral(": 00:00:00")));
    house_.window.showMessage(QStringLiteral("disk full"));
    EXPECT_TRUE(told(QStringLiteral("lMessage")).text(QAccessible::Name).contains(u"disk full"));
}

TEST_F(AccessibilityTest, ALabelWithoutAValueTellsItsNameAlone)
{
    house_.window.showMessage({});
    EXPECT_EQ(told(QStringLiteral("lMessage")).text(QAccessible::Name),
              house_.find<QWidget>(QStringLiteral("lMessage")).accessibleName());
}

TEST_F(AccessibilityTest, WindowsAreWindowsAndPicturesPictures)
{
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&house_.window)->role(), QAccessible::Window);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&house_.window)->text(QAccessible::Name),
              QStringLiteral("Velmora"));
    EXPECT_EQ(told(QStringLiteral("iWeb")).role(), QAccessible::Graphic);
    EXPECT_EQ(told(QStringLiteral("LampSA")).role(), QAccessible::Graphic);
    Zoom zoom;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&zoom)->role(), QAccessible::Window);
}

TEST_F(AccessibilityTest, APictureIsDescribedByWhatItShowsAndALabelInPlainText)
{
    auto &picture = house_.find<QWidget>(QStringLiteral("iWeb"));
    picture.setToolTip(QStringLiteral("a tip"));
    picture.setAccessibleDescription({});
    QAccessibleInterface &told = *QAccessible::queryAccessibleInterface(&picture);
    EXPECT_EQ(told.text(QAccessible::Description), QString());
    EXPECT_EQ(told.text(QAccessible::Help), QStringLiteral("a tip"));
    picture.setAccessibleDescription(QStringLiteral("/in/a.jpg"));
    EXPECT_EQ(told.text(QAccessible::Description), QStringLiteral("/in/a.jpg"));
    QLabel label(QStringLiteral("text"));
    setPlainToolTip(label, QStringLiteral("<b>Bold</b> & Co."));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Description),
              QStringLiteral("<b>Bold</b> & Co."));
}

TEST_F(AccessibilityTest, WhatWasDescribedBeforeItStoodInItsWindowIsNoWindow)
{
    QWidget window;
    auto *const box = new BoxEdit;
    box->setText(QStringLiteral("2006-03-07"));
    auto *const part = new DayNumbers(nullptr);
    for (QWidget *const widget : {static_cast<QWidget *>(box), static_cast<QWidget *>(part)}) {
        EXPECT_NE(QAccessible::queryAccessibleInterface(widget), nullptr);
        widget->setParent(&window);
        EXPECT_NE(QAccessible::queryAccessibleInterface(widget)->role(), QAccessible::Window);
    }
    const QAccessibleInterface &described = *QAccessible::queryAccessibleInterface(box);
    EXPECT_EQ(described.role(), QAccessible::EditableText);
    EXPECT_EQ(described.text(QAccessible::Value), QStringLiteral("2006-03-07"));
}

} // namespace
} // namespace velmora::test
