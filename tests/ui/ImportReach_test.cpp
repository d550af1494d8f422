// A walk over the import's window: names, kinds, tool tips, captions, and what the keyboard and a
// screen reader reach.
#include "ImportHouse.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct ControlRow
{
    const char *name;
    const char *type;
    const char *tip;  // nullptr: any
    const char *text; // nullptr: any
};

constexpr ControlRow kControls[] = {
    {"Drive1", "QComboBox", nullptr, nullptr},
    {"Dir1", "QListView", nullptr, nullptr},
    {"File1", "QListView", nullptr, nullptr},
    {"Filtre", "QLineEdit", "Patern", "*.jpg"},
    {"nRep", "QLabel", nullptr, nullptr},
    {"NbF", "QLabel", nullptr, nullptr},
    {"ctr", "QLabel", nullptr, nullptr},
    {"iSource", "velmora::PictureView", nullptr, nullptr},
    {"iTarget", "velmora::PictureView", nullptr, nullptr},
    {"Cam", "QComboBox", "Group", nullptr},
    {"Lien", "QComboBox", "Camera", nullptr},
    {"cmdGo", "QAbstractButton", "Copy files", "Copy"},
    {"cmdQuit", "QAbstractButton", nullptr, "Quit"},
    {"Progress", "QProgressBar", nullptr, nullptr},
};

class ImportReach : public testing::Test
{
protected:
    ImportReach() { house_.open(); }

    ImportHouse house_;
};

TEST_F(ImportReach, EveryControlIsWhatItsNameSays)
{
    for (const ControlRow &row : kControls) {
        SCOPED_TRACE(row.name);
        const auto &control = house_.find<QWidget>(row.name);
        EXPECT_TRUE(control.inherits(row.type)) << control.metaObject()->className();
        EXPECT_FALSE(control.accessibleName().isEmpty());
        if (row.tip != nullptr) {
            EXPECT_EQ(control.toolTip(), QString::fromUtf8(row.tip));
        }
        if (row.text != nullptr) {
            EXPECT_EQ(control.property("text").toString(), QString::fromUtf8(row.text));
        }
    }
    EXPECT_EQ(house_.text("Label2"), QStringLiteral("Camera target"));
    EXPECT_EQ(house_.window.windowTitle(), QStringLiteral("Import"));
    EXPECT_EQ(house_.window.objectName(), QStringLiteral("frmImport"));
}

// The box takes its size from the drives that it has when it is shown first.
TEST(ImportWindowSize, DoesNotGrowWithTheNamesOfMountPoints)
{
    ImportHouse house;
    house.find<QComboBox>("Drive1").addItem(QStringLiteral("\\media\\") + QString(200, u'x'));
    EXPECT_LT(house.window.minimumSizeHint().width(), 800);
}

TEST_F(ImportReach, APatternIsSeenInTheSmallestWindow)
{
    house_.window.resize(house_.window.minimumSizeHint());
    house_.settle();
    const auto &filter = house_.find<QLineEdit>("Filtre");
    EXPECT_GT(filter.width(), filter.fontMetrics().horizontalAdvance(QStringLiteral("2006*.jpg ")));
}

TEST_F(ImportReach, TheDrivesAreChosenLikeAGroupAndToldWholeInATip)
{
    auto &drives = house_.find<QComboBox>("Drive1");
    EXPECT_STREQ(drives.itemDelegate()->metaObject()->className(),
                 house_.find<QComboBox>("Cam").itemDelegate()->metaObject()->className());
    drives.showPopup();
    QWidget &choices = *drives.view()->viewport();
    const QPoint place = drives.view()->visualRect(drives.model()->index(0, 0)).center();
    QHelpEvent help(QEvent::ToolTip, place, choices.mapToGlobal(place));
    QApplication::sendEvent(&choices, &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("C:"));
    QToolTip::hideText();
    drives.hidePopup();
}

TEST_F(ImportReach, ItsListsBeginSideBySide)
{
    const auto topOf = [this](const char *name) {
        return house_.find<QWidget>(name).mapTo(&house_.window, QPoint()).y();
    };
    EXPECT_EQ(topOf("Dir1"), topOf("File1"));
}

TEST_F(ImportReach, GroupsAndCamerasAreTheTenDigits)
{
    for (const char *const name : {"Cam", "Lien"}) {
        const auto &box = house_.find<QComboBox>(name);
        ASSERT_EQ(box.count(), 10);
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(box.itemText(i), QString::number(i));
        }
    }
}

TEST_F(ImportReach, TheTabKeyVisitsTheControlsInTheOrderOfTheirUse)
{
    QStringList names;
    auto &first = house_.find<QWidget>("Drive1");
    first.setFocus();
    for (int i = 0; i < 20; ++i) {
        names.append(house_.window.focusWidget()->objectName());
        QTest::keyClick(house_.window.windowHandle(), Qt::Key_Tab);
        if (house_.window.focusWidget() == &first) {
            break;
        }
    }
    EXPECT_EQ(names.join(u' '), QStringLiteral("Drive1 Dir1 Filtre File1 Cam Lien cmdGo cmdQuit"));
}

TEST_F(ImportReach, LabelsWithAKeyLeadToTheirBoxAndTheCaptionToTheGroup)
{
    for (const QLabel *const label : house_.window.findChildren<QLabel *>()) {
        if (label->text().contains(u'&')) {
            EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
        }
    }
    EXPECT_EQ(house_.find<QLabel>("Label2").buddy(), &house_.find<QWidget>("Cam"));
}

TEST_F(ImportReach, CopyAndQuitHaveKeys)
{
    QTest::keyClick(house_.window.windowHandle(), Qt::Key_C, Qt::AltModifier);
    // A button pressed by its shortcut is released a moment later.
    ASSERT_TRUE(QTest::qWaitFor([this] { return house_.message() != nullptr; }));
    QTest::keyClick(house_.message(), Qt::Key_Return);
    house_.open();
    QTest::keyClick(house_.window.windowHandle(), Qt::Key_Q, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !house_.window.isVisible(); }));
}

TEST_F(ImportReach, TheWindowOpensWithTheKeyboardInItsFirstControl)
{
    EXPECT_EQ(house_.window.focusWidget(), &house_.find<QWidget>("Drive1"));
}

} // namespace
} // namespace velmora::test
