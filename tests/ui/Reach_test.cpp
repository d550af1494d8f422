// A walk over every window: names, tool tips, captions, and what the keyboard and a screen reader
// reach.
#include "WindowHouse.h"
#include "ui/planche.h"

#include <QAbstractButton>
#include <QTabBar>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class Reach : public testing::Test
{
protected:
    QString tip(const QString &name) { return house_.find<QWidget>(name).toolTip(); }

    // The controls in the order in which the tab key visits them, from the first box on.
    QStringList tabOrder()
    {
        QStringList names;
        QWidget *control = &house_.find<QWidget>(QStringLiteral("Selecteur"));
        for (int i = 0; i < 500; ++i) {
            control = control->nextInFocusChain();
            if (control == &house_.find<QWidget>(QStringLiteral("Selecteur"))) {
                break;
            }
            if ((control->focusPolicy() & Qt::TabFocus) != 0) {
                names.append(control->objectName());
            }
        }
        return names;
    }

    WindowHouse house_;
};

TEST_F(Reach, EveryRowHasItsTenfoldControls)
{
    for (int row = 0; row < kRows; ++row) {
        const QString digit = QString::number(row);
        EXPECT_NO_THROW(house_.find<QLineEdit>(QStringLiteral("Source") + digit));
        EXPECT_NO_THROW(house_.find<QCheckBox>(QStringLiteral("AutoDelay") + digit));
        EXPECT_NO_THROW(house_.find<QCheckBox>(QStringLiteral("EffM") + digit));
        EXPECT_NO_THROW(house_.find<QLabel>(QStringLiteral("BestTime") + digit));
        EXPECT_NO_THROW(house_.find<QLabel>(QStringLiteral("TimeLoad") + digit));
        EXPECT_NO_THROW(house_.find<QLabel>(QStringLiteral("lNew") + digit));
        EXPECT_NO_THROW(house_.find<QLabel>(QStringLiteral("n") + digit));
        EXPECT_NO_THROW(house_.find<Lamp>(QStringLiteral("SB") + digit));
    }
}

TEST_F(Reach, TheControlsOfTheMainWindowHaveTheirNames)
{
    EXPECT_EQ(house_.window.objectName(), QStringLiteral("Interface"));
    EXPECT_EQ(house_.window.windowTitle(), QStringLiteral("Velmora"));
    for (const char *const box : {"StRep", "tempo", "TIO"}) {
        EXPECT_NO_THROW(house_.find<QLineEdit>(QLatin1String(box)));
    }
    for (const char *const box : {"cDebug", "ActLst"}) {
        EXPECT_NO_THROW(house_.find<QCheckBox>(QLatin1String(box)));
    }
    for (const char *const button : {"MakeDir", "Browse", "cmdDebug", "Import", "RAZ", "Cache"}) {
        EXPECT_NO_THROW(house_.find<QAbstractButton>(QLatin1String(button)));
    }
    for (const char *const label :
         {"lVersion", "lCompte", "lErr", "lTest", "lTmp", "lHeure", "Locale", "lWeb"}) {
        EXPECT_NO_THROW(house_.find<QLabel>(QLatin1String(label)));
    }
    EXPECT_NO_THROW(house_.find<QTabBar>(QStringLiteral("Selecteur")));
    EXPECT_NO_THROW(house_.find<Lamp>(QStringLiteral("LampSA")));
}

TEST_F(Reach, ToolTipsAreTheGivenOnes)
{
    EXPECT_EQ(tip(QStringLiteral("Source3")), QStringLiteral("Enter link"));
    EXPECT_EQ(tip(QStringLiteral("AutoDelay3")), QStringLiteral("Auto delay"));
    EXPECT_EQ(tip(QStringLiteral("BestTime3")), QStringLiteral("Refresh time. Click to set 0"));
    EXPECT_EQ(tip(QStringLiteral("TimeLoad3")), QStringLiteral("Time of loading"));
    EXPECT_EQ(tip(QStringLiteral("TimeLoad9")), QStringLiteral("Time loading"));
    EXPECT_EQ(tip(QStringLiteral("lNew3")), QStringLiteral("New loading since the last reset"));
    EXPECT_EQ(tip(QStringLiteral("n3")), QStringLiteral("Click to open Dir"));
    EXPECT_EQ(tip(QStringLiteral("ActLst")), QStringLiteral("This list on/off"));
    EXPECT_EQ(tip(QStringLiteral("RAZ")), QStringLiteral("Set to 0"));
    EXPECT_EQ(tip(QStringLiteral("tempo")), QStringLiteral("Timer (mn) Zero for stop"));
    EXPECT_EQ(tip(QStringLiteral("MakeDir")), QStringLiteral("Définir le répertoire de stockage."));
    EXPECT_EQ(tip(QStringLiteral("SB3")), QString());
}

TEST_F(Reach, CaptionsAreTheGivenOnes)
{
    const auto caption = [&](const QString &name) {
        return house_.find<QAbstractButton>(name).text();
    };
    EXPECT_EQ(caption(QStringLiteral("RAZ")), QStringLiteral("Reset"));
    EXPECT_EQ(caption(QStringLiteral("EffM0")), QStringLiteral("EffM"));
    EXPECT_EQ(caption(QStringLiteral("cDebug")), QStringLiteral("Debug"));
    EXPECT_EQ(caption(QStringLiteral("cmdDebug")), QStringLiteral("View log file"));
    EXPECT_EQ(caption(QStringLiteral("Import")), QStringLiteral("Import"));
    QStringList texts;
    for (const QLabel *const label : house_.window.findChildren<QLabel *>()) {
        texts.append(label->text().remove(u'&'));
    }
    for (const QString &heading :
         {QStringLiteral("Caclul auto"), QStringLiteral("Effacer après 1 mois"),
          QStringLiteral("Storage"), QStringLiteral("Timer (mn)"), QStringLiteral("Timeout (s)")}) {
        EXPECT_TRUE(texts.contains(heading)) << heading.toStdString();
    }
}

TEST_F(Reach, EveryControlHasANameForScreenReaders)
{
    for (const QWidget *const control : house_.window.findChildren<QWidget *>()) {
        const bool matters =
            control->focusPolicy() != Qt::NoFocus || qobject_cast<const Lamp *>(control);
        const bool ours = !control->objectName().startsWith(QStringLiteral("qt_")) &&
                          qobject_cast<const QTabBar *>(control->parent()) == nullptr;
        if (matters && ours) {
            EXPECT_FALSE(control->accessibleName().isEmpty())
                << control->objectName().toStdString();
        }
    }
}

TEST_F(Reach, TheTabKeyVisitsEveryControlRowByRow)
{
    const QStringList order = tabOrder();
    const qsizetype first = order.indexOf(QStringLiteral("Source0"));
    ASSERT_GE(first, 0);
    EXPECT_EQ(order.mid(first, 6),
              (QStringList{QStringLiteral("Source0"), QStringLiteral("AutoDelay0"),
                           QStringLiteral("BestTime0"), QStringLiteral("EffM0"),
                           QStringLiteral("n0"), QStringLiteral("Source1")}));
    EXPECT_GT(order.indexOf(QStringLiteral("Cache")), order.indexOf(QStringLiteral("n9")));
    EXPECT_GE(order.indexOf(QStringLiteral("RAZ")), 0);
}

TEST_F(Reach, LabelsWithAKeyLeadToTheirBox)
{
    for (const QLabel *const label : house_.window.findChildren<QLabel *>()) {
        if (label->text().contains(u'&')) {
            EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
        }
    }
}

TEST_F(Reach, NoNameForScreenReadersHasAMarkOfAKey)
{
    for (const QWidget *const control : house_.window.findChildren<QWidget *>()) {
        EXPECT_FALSE(control->accessibleName().contains(u'&'))
            << control->objectName().toStdString();
    }
}

TEST_F(Reach, TheHideButtonSaysWhatItDoes)
{
    const struct
    {
        const char *folder;
        const char *caption;
        const char *tip;
        Qt::Key key;
    } rows[] = {{"C:\\none", "Quitter", "End the program", Qt::Key_Q},
                {"C:\\in", "Ok", "Hide this window and show the images", Qt::Key_K}};

    const auto &button = house_.find<QAbstractButton>(QStringLiteral("Cache"));
    for (const auto &row : rows) {
        house_.retype(QStringLiteral("StRep"), QLatin1String(row.folder));
        EXPECT_EQ(button.text(), QLatin1String(row.caption));
        EXPECT_EQ(button.toolTip(), QLatin1String(row.tip));
        EXPECT_TRUE(button.accessibleName().contains(QLatin1String(row.tip)));
        EXPECT_EQ(button.shortcut(), QKeySequence(Qt::ALT | row.key));
    }
}

} // namespace
} // namespace velmora::test
