// The program while it runs and ends: the last pass, a second start, uncaught errors, and no log
// unless wanted.
#include "ProgramHouse.h"
#include "support/BusyClock.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QTabBar>

#include <algorithm>
#include <stdexcept>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class ProgramLife : public ProgramHouse
{
protected:
    /// Whose next image takes so long that the last pass can be looked at.
    void startBesideASlowCamera()
    {
        start();
        source_.answer(QStringLiteral("http://cam/a.png"),
                       {QByteArray(2000, 'y'), QString(), {}, 4000ms, {}});
    }

    QMessageBox *askToDelete()
    {
        QWidget *const list = control(QStringLiteral("planche"), QStringLiteral("LstDir"));
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Delete);
        return topLevel(QStringLiteral("planche"))->findChild<QMessageBox *>();
    }
};

TEST_F(ProgramLife, AClickInTheClosingBoxGivesTheLastPassUp)
{
    startBesideASlowCamera();
    topLevel(QStringLiteral("planche"))->close();
    settle();
    QTest::mouseClick(control(QStringLiteral("frmQuitte"), QStringLiteral("Frame1")),
                      Qt::LeftButton);
    settle();
    ended_ = true;
    EXPECT_EQ(source_.stopped().size(), 1);
    EXPECT_EQ(engine_->settings().read(u"Groupe0", u"lNew0"), QStringLiteral("1"));
}

// Images of the older form of name are renamed, which takes many turns of the event loop.
class EndWhileRenaming : public ProgramHouse
{
protected:
    EndWhileRenaming()
    {
        engine_ = std::make_unique<CaptureEngine>(tree_.path(), busy_, source_);
        program_ = std::make_unique<Program>(*engine_, opener_, mail_);
        program_->start();
        settle();
        for (int i = 100; i < 200; ++i) {
            tree_.write(QString(kFolder + QStringLiteral("20060307_140%1.jpg")).arg(i), "x");
        }
    }

    void rename() { engine_->launch(engine_->conformity().run()); }

    void endInTheMiddle()
    {
        busy_.setOnYield([this](int) {
            if (engine_->conformity().isRunning()) {
                busy_.setOnYield({});
                program_->end();
            }
        });
        rename();
        settle();
        ended_ = true;
    }

    [[nodiscard]] qsizetype shortNames() const
    {
        const QRegularExpression shortName(QStringLiteral("^.{15}\\."));
        return tree_.files(kFolder).filter(shortName).size();
    }

    static inline const QString kFolder = QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/");
    BusyClock busy_{clock_};
};

TEST_F(EndWhileRenaming, RunsTheLastPass)
{
    ASSERT_EQ(source_.requested().size(), 1);
    endInTheMiddle();
    EXPECT_EQ(source_.requested().size(), 2);
    EXPECT_GT(shortNames(), 0) << "the end does not wait for them";
}

TEST_F(EndWhileRenaming, BeginsNoRenamingThatWaitedForAnImport)
{
    auto import = std::make_unique<NamesInUse>(engine_->conformity());
    rename();
    busy_.setOnYield([this, &import](int) {
        if (isVisible(QStringLiteral("frmQuitte"))) {
            import.reset();
        }
    });
    end();
    EXPECT_EQ(source_.requested().size(), 2);
    EXPECT_EQ(shortNames(), 100);
}

// A command run while the windows are being made is answered in the first turn of the event loop,
// before the start has loaded anything.
class EarlyCommand : public ProgramHouse
{
protected:
    void startBesideACommand()
    {
        engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
        program_ = std::make_unique<Program>(*engine_, opener_, mail_);
        program_->start();
        engine_->adoptSettings(); // as the desk has it done
        settle();
    }
};

TEST_F(EarlyCommand, MakesNoStorageFolderWhoseDiskMayBeAway)
{
    writeSettings("StRep=C:\\none\\\r\n[Groupe0]\r\nLocalTime0=07/03/2006 14:05:09\r\n");
    startBesideACommand();
    ASSERT_TRUE(isVisible(QStringLiteral("Interface")));
    QTest::mouseClick(control(QStringLiteral("Interface"), QStringLiteral("Source0")),
                      Qt::LeftButton); // the live view
    settle();
    EXPECT_FALSE(tree_.exists(u"drives/c/none"));
}

TEST_F(EarlyCommand, StartsNoPassBeforeTheStart)
{
    startBesideACommand();
    const QStringList lines = logLines();
    const qsizetype init = lines.indexOf(QStringLiteral("Fin Init"));
    EXPECT_LT(init, lines.indexOf(QStringLiteral("Interface TestSA")));
    EXPECT_LT(init, lines.indexOf(QStringLiteral("<-Interface ChargeFile->")));
    EXPECT_EQ(engine_->scheduler().ticksLeft(), 4);
}

TEST_F(EarlyCommand, ProgramThatIsEndedAtOnceCapturesNothing)
{
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    program_->start();
    engine_->adoptSettings();
    end();
    EXPECT_EQ(source_.requested().size(), 0);
}

TEST_F(ProgramLife, ClosingTheMainWindowEndsTheProgramWithALastPass)
{
    start();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    topLevel(QStringLiteral("Interface"))->close();
    settle();
    ended_ = true;
    EXPECT_FALSE(isVisible(QStringLiteral("Interface")));
    EXPECT_FALSE(isVisible(QStringLiteral("planche")));
    EXPECT_EQ(source_.requested().size(), 2);
    EXPECT_EQ(engine_->scheduler().ticksLeft(), 0);
}

TEST_F(ProgramLife, StoresNothingButPlacesWhenItEnds)
{
    writeSettings("StRep=C:\\none\\\r\n");
    start();
    const QList<QByteArray> before = tree_.read(u"Velmora.ini").split('\n');
    end();
    const QList<QByteArray> after = tree_.read(u"Velmora.ini").split('\n');
    for (const QByteArray &line : after) {
        EXPECT_TRUE(before.contains(line) || line.startsWith("Planche.") ||
                    line.startsWith("fCine."))
            << line.constData();
    }
}

TEST_F(ProgramLife, StoresNoKeysOfItsOwnAmongTheOthers)
{
    start();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    for (const char *const box : {"AutoDelay1", "EffM2", "ActLst", "cDebug", "BestTime3", "RAZ"}) {
        click(QStringLiteral("Interface"), QLatin1String(box));
    }
    end();
    static const QRegularExpression known(QStringLiteral(
        "^(\\[(Control|Liste\\d|Groupe\\d)\\]|(StRep|Debug|Selecteur|Planche\\.(Top|Left)|"
        "fCine\\.(Top|left)|lstP|lstImg|Auto|Camera|Scan|Vitesse|LstAct|Tempo|TIO|lst\\d|"
        "(AutoDelai|EffM|BestTime|SB|TimeLoad|lNew|LastModified|LocalTime)\\d)=.*)?\r?$"));
    const QList<QByteArray> lines = tree_.read(u"Velmora.ini").split('\n');
    EXPECT_GT(lines.size(), 50);
    for (const QByteArray &line : lines) {
        EXPECT_TRUE(known.match(QString::fromLatin1(line)).hasMatch()) << line.constData();
    }
}

TEST_F(ProgramLife, AWarningFromBeforeTheImagesStandsAboveThem)
{
    tree_.makeFolder(u"Velmora.log"); // no line can be written
    start();
    auto *const box = topLevel(QStringLiteral("planche"))->findChild<QMessageBox *>();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisible());
    EXPECT_TRUE(box->text().contains(QStringLiteral("log file"))) << box->text().toStdString();
}

TEST_F(ProgramLife, ASecondStartBringsTheImagesToTheFront)
{
    start();
    topLevel(QStringLiteral("planche"))->showMinimized();
    program_->bringToFront();
    EXPECT_TRUE(isVisible(QStringLiteral("planche")));
    EXPECT_FALSE(topLevel(QStringLiteral("planche"))->isMinimized());
    EXPECT_FALSE(isVisible(QStringLiteral("Interface")));
}

TEST_F(ProgramLife, ASecondStartBringsTheMainWindowToTheFrontWhileItIsShown)
{
    start();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    topLevel(QStringLiteral("Interface"))->showMinimized();
    program_->bringToFront();
    EXPECT_FALSE(topLevel(QStringLiteral("Interface"))->isMinimized());
}

TEST_F(ProgramLife, ASecondStartLeavesNoBoxInWhichAnAddressIsTyped)
{
    start();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    auto *const box =
        qobject_cast<QLineEdit *>(control(QStringLiteral("Interface"), QStringLiteral("Source2")));
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::keyClicks(box, QStringLiteral("http://ca"));
    program_->bringToFront();
    settle();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("m/b.png"));
    EXPECT_EQ(box->text(), QStringLiteral("http://cam/b.png"));
    EXPECT_EQ(engine_->settings().read(u"Liste0", u"lst2"), QString());
}

TEST_F(ProgramLife, ASecondStartLeavesTheKeyboardToAQuestion)
{
    start();
    const QPointer<QMessageBox> question = askToDelete();
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(question));
    program_->bringToFront();
    settle();
    EXPECT_EQ(QApplication::activeWindow(), question);
}

TEST_F(ProgramLife, ASecondStartShowsNothingWhileItEnds)
{
    start();
    end();
    program_->bringToFront();
    EXPECT_FALSE(isVisible(QStringLiteral("planche")));
    EXPECT_FALSE(isVisible(QStringLiteral("Interface")));
}

TEST_F(ProgramLife, ItsEndLeavesNoQuestionBehind)
{
    startBesideASlowCamera();
    const QPointer<QMessageBox> question = askToDelete();
    ASSERT_NE(question, nullptr);
    program_->end();
    settle();
    ASSERT_TRUE(isVisible(QStringLiteral("frmQuitte")));
    EXPECT_TRUE(question.isNull() || !question->isVisible());
    EXPECT_EQ(QApplication::activeWindow(), topLevel(QStringLiteral("frmQuitte")));
}

TEST_F(ProgramLife, ItsEndLeavesNoMenuBehind)
{
    startBesideASlowCamera();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    settle();
    QWidget *const main = topLevel(QStringLiteral("Interface"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(main));
    const QWidget *const number = control(QStringLiteral("Interface"), QStringLiteral("n0"));
    QTest::mouseClick(main->windowHandle(), Qt::RightButton, {},
                      number->mapTo(main, number->rect().center()));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    program_->end();
    settle();
    ASSERT_TRUE(isVisible(QStringLiteral("frmQuitte")));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

// A button pressed by its access key is clicked a tenth of a second later.
TEST_F(ProgramLife, ItsEndOpensNoWindowForAKeyThatWasPressedBefore)
{
    startBesideASlowCamera();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    settle();
    QWidget *const main = topLevel(QStringLiteral("Interface"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(main));
    QTest::keyClick(main->windowHandle(), Qt::Key_I, Qt::AltModifier);
    auto *const button = qobject_cast<QAbstractButton *>(
        control(QStringLiteral("Interface"), QStringLiteral("Import")));
    ASSERT_TRUE(button->isDown());
    program_->end();
    settle();
    ASSERT_TRUE(isVisible(QStringLiteral("frmQuitte")));
    EXPECT_FALSE(QTest::qWaitFor([this] { return isVisible(QStringLiteral("frmImport")); }, 300));
}

TEST_F(ProgramLife, ItsEndLeavesAWarningToBeRead)
{
    startBesideASlowCamera();
    engine_->problems().warn(QStringLiteral("to be read"));
    program_->end();
    settle();
    ASSERT_TRUE(isVisible(QStringLiteral("frmQuitte")));
    const QWidgetList windows = QApplication::topLevelWidgets();
    EXPECT_TRUE(std::ranges::any_of(windows, [](const QWidget *window) {
        return qobject_cast<const QMessageBox *>(window) != nullptr && window->isVisible();
    }));
}

QCoro::Task<> failing()
{
    throw std::runtime_error("Overflow: too large");
    co_return;
}

TEST_F(ProgramLife, AnUncaughtErrorIsShownAndLoggedAndTheProgramGoesOn)
{
    start();
    engine_->launch(failing());
    settle();
    QStringList shown;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const box = qobject_cast<QMessageBox *>(widget); box != nullptr) {
            shown.append(box->text());
        }
    }
    EXPECT_EQ(shown, QStringList{QStringLiteral("Overflow: too large")});
    EXPECT_TRUE(logLines().contains(QStringLiteral("Overflow: too large")));
    EXPECT_TRUE(engine_->timer().isActive());
}

TEST_F(ProgramLife, TouchesNoLogWhileDebugIsOff)
{
    writeSettings("StRep=C:\\in\\\r\n");
    tree_.write(u"Velmora.log", QByteArray(64001, 'x'));
    start();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    topLevel(QStringLiteral("Interface"))
        ->findChild<QTabBar *>(QStringLiteral("Selecteur"))
        ->setCurrentIndex(4);
    click(QStringLiteral("Interface"), QStringLiteral("Import"));
    click(QStringLiteral("Interface"), QStringLiteral("Cache"));
    end();
    EXPECT_EQ(tree_.read(u"Velmora.log"), QByteArray(64001, 'x'));
    EXPECT_FALSE(tree_.exists(u"Velmora.old"));
}

TEST_F(ProgramLife, AnErrorInTheLastPassEndsTheProgramAllTheSame)
{
    start();
    source_.answer(
        QStringLiteral("http://cam/a.png"),
        {QByteArray(2000, 'y'), QStringLiteral("Tue, 07 Mar 2006 15:05:09 GMT"), {}, {}, {}});
    QObject::connect(
        &engine_->store(), &ImageStore::imageStored, program_.get(),
        [](CameraAddress, const QString &) { throw std::runtime_error("out of luck"); });
    end();
    EXPECT_TRUE(logLines().contains(QStringLiteral("out of luck")));
    for (const char *const window : {"frmQuitte", "planche", "Interface"}) {
        EXPECT_FALSE(isVisible(QLatin1String(window))) << window;
    }
    EXPECT_TRUE(engine_->scope().stopToken().stop_requested());
    EXPECT_EQ(engine_->scope().running(), 0);
}

} // namespace
} // namespace velmora::test
