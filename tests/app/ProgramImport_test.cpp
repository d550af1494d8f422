// The import as part of the running program: how its window opens, what the browser shows after a
// run, and what ending the program does to a run.
#include "ProgramHouse.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kMain = QStringLiteral("Interface");
const QString kBrowser = QStringLiteral("planche");
const QString kImport = QStringLiteral("frmImport");
const QString kFolder = QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/");

class ProgramImport : public ProgramHouse
{
protected:
    ProgramImport()
    {
        tree_.makeFolder(kFolder);
        writeSettings("StRep=C:\\in\\\r\nDebug=1\r\nDrive=C:\r\nDir=C:\\card\r\nPatern=*.png\r\n");
        for (const QString &name : {QStringLiteral("20240102_0304050203.png"),
                                    QStringLiteral("20240102_0304060203.png")}) {
            tree_.write(QString(QStringLiteral("drives/c/card/") + name), "picture");
        }
    }

    void openImport()
    {
        start();
        click(kBrowser, QStringLiteral("cSetUp"));
        click(kMain, QStringLiteral("Import"));
    }

    static QMessageBox *message() { return topLevel(kImport)->findChild<QMessageBox *>(); }

    QStringList images() { return tree_.files(kFolder); }

    qsizetype refreshes() { return logLines().count(QStringLiteral("Planche DirImage")); }
};

TEST_F(ProgramImport, TheImportButtonOpensTheWindow)
{
    start();
    EXPECT_FALSE(isVisible(kImport));
    click(kBrowser, QStringLiteral("cSetUp"));
    click(kMain, QStringLiteral("Import"));
    EXPECT_TRUE(isVisible(kImport));
    EXPECT_EQ(topLevel(kImport)->windowTitle(), QStringLiteral("Import"));
    EXPECT_TRUE(logLines().contains(QStringLiteral("Interface Import_Click")));
    EXPECT_TRUE(logLines().contains(QStringLiteral("frmImport Form_Load")));
}

TEST_F(ProgramImport, ASecondPressOfTheButtonLoadsNothingAgain)
{
    openImport();
    click(kMain, QStringLiteral("Import"));
    EXPECT_EQ(logLines().count(QStringLiteral("frmImport Form_Load")), 1);
}

TEST_F(ProgramImport, CopyFillsTheCamerasFolderAndSaysHowMany)
{
    openImport();
    click(kImport, QStringLiteral("cmdGo"));
    ASSERT_NE(message(), nullptr);
    EXPECT_EQ(message()->text(), QStringLiteral("2 files copied"));
    EXPECT_EQ(message()->icon(), QMessageBox::Information);
    EXPECT_EQ(message()->standardButtons(), QMessageBox::Ok);
    EXPECT_TRUE(images().contains(QStringLiteral("20240102_0304050203.png")));
    EXPECT_TRUE(images().contains(QStringLiteral("20240102_0304060203.png")));
}

TEST_F(ProgramImport, TheBrowserListsWhatWasCopied)
{
    openImport();
    const qsizetype before = refreshes();
    const QString position = text(kBrowser, QStringLiteral("NbI"));
    click(kImport, QStringLiteral("cmdGo"));
    EXPECT_EQ(refreshes(), before + 1);
    EXPECT_NE(text(kBrowser, QStringLiteral("NbI")), position);
    EXPECT_EQ(text(kBrowser, QStringLiteral("NbI")).section(u' ', 2), QStringLiteral("3"));
}

TEST_F(ProgramImport, QuitIsLoggedAndClosesTheWindow)
{
    openImport();
    click(kImport, QStringLiteral("cmdQuit"));
    EXPECT_FALSE(isVisible(kImport));
    const QStringList lines = logLines();
    const qsizetype quit = lines.indexOf(QStringLiteral("frmImport cmdClik"));
    EXPECT_GE(quit, 0);
    EXPECT_GT(lines.indexOf(QStringLiteral("frmImport Form_Unload")), quit);
    EXPECT_EQ(lines.count(QStringLiteral("frmImport Form_Unload")), 1);
}

TEST_F(ProgramImport, NothingIsLoggedWithoutDebug)
{
    writeSettings("StRep=C:\\in\\\r\nDebug=0\r\n");
    openImport();
    click(kImport, QStringLiteral("cmdQuit"));
    EXPECT_FALSE(tree_.exists(u"Velmora.log"));
}

TEST_F(ProgramImport, ClosingTheMainWindowLeavesTheImportOpen)
{
    openImport();
    click(kMain, QStringLiteral("Cache"));
    EXPECT_TRUE(isVisible(kImport));
    EXPECT_TRUE(control(kImport, QStringLiteral("cmdGo"))->isEnabled());
}

TEST_F(ProgramImport, TheEndStopsARunBehindAFile)
{
    constexpr int kFiles = 3000;
    for (int i = 0; i < kFiles; ++i) {
        tree_.write(
            QStringLiteral("drives/c/card/20240103_000000%1.png").arg(i, 4, 10, QLatin1Char('0')),
            "whole");
    }
    openImport();
    QTest::mouseClick(control(kImport, QStringLiteral("cmdGo")), Qt::LeftButton);
    end();
    clock_.advance(60s);
    const QStringList copied = images().filter(QStringLiteral("20240103"));
    EXPECT_LT(copied.size(), kFiles / 2);
    EXPECT_EQ(engine_->scope().running(), 0);
    for (const QString &name : copied) {
        EXPECT_EQ(tree_.read(QString(kFolder + name)), "whole");
    }
}

TEST_F(ProgramImport, TheEndClosesTheWindow)
{
    openImport();
    end();
    clock_.advance(60s);
    EXPECT_FALSE(isVisible(kImport));
    EXPECT_TRUE(logLines().contains(QStringLiteral("frmImport Form_Unload")));
}

} // namespace
} // namespace velmora::test
