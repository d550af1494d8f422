// Many cameras at once: what a list would do is shown before any of it is stored.
#include "ui/CameraListWindow.h"

#include "FileBoxHands.h"
#include "WindowHouse.h"
#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHelpEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolTip>

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace velmora::test {
namespace {

const QStringList kFileButtons{QStringLiteral("listOpen"), QStringLiteral("listExport")};

class CameraListWindowTest : public testing::Test
{
protected:
    void paste(const QString &text)
    {
        window_.present();
        text_.setPlainText(text);
    }

    void choose(const char *button, const QString &path)
    {
        window_.findChild<QPushButton *>(QLatin1String(button))->click();
        auto *const dialog = window_.findChild<QFileDialog *>();
        ASSERT_NE(dialog, nullptr);
        Q_EMIT dialog->fileSelected(path);
        delete dialog;
    }

    void resize(int width)
    {
        window_.resize(width, 600);
        QCoreApplication::processEvents();
    }

    QString cell(int line, int column) { return preview_.item(line, column)->text(); }

    TempTree tree_;
    SettingsFile settings_{tree_.path()};
    CameraListWindow window_{settings_};
    QPlainTextEdit &text_ = *window_.findChild<QPlainTextEdit *>(QStringLiteral("listText"));
    QTableWidget &preview_ = *window_.findChild<QTableWidget *>(QStringLiteral("listPreview"));
    QPushButton &store_ = *window_.findChild<QPushButton *>(QStringLiteral("listStore"));
    QLabel &message_ = *window_.findChild<QLabel *>(QStringLiteral("listMessage"));
};

TEST_F(CameraListWindowTest, ShowsWhatWouldGoWhereBeforeItStores)
{
    paste(QStringLiteral("name,address,group,row\nGate,http://u:p@a/,3,7\n,http://b/,,\n"));
    ASSERT_EQ(preview_.rowCount(), 2);
    EXPECT_EQ(cell(0, 0), QStringLiteral("3:7"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Gate"));
    EXPECT_EQ(cell(0, 2), QStringLiteral("http://a/"));
    EXPECT_FALSE(tree_.exists(u"Velmora.ini"));
    QTest::mouseClick(&store_, Qt::LeftButton);
    EXPECT_EQ(settings_.read(u"Liste3", u"lst7"), QStringLiteral("http://u:p@a/"));
    EXPECT_EQ(settings_.read(u"Liste0", u"lst0"), QStringLiteral("http://b/"));
}

TEST_F(CameraListWindowTest, KeepsTheRemarksInSightBesideALongNameAndAddress)
{
    const QString address = QStringLiteral("http://cam/") + QString(200, u'x');
    paste(QStringLiteral("name,address,group,row\n%1,%2,77,0\n").arg(QString(60, u'N'), address));
    const int middle = preview_.columnViewportPosition(3) + preview_.columnWidth(3) / 2;
    EXPECT_LT(middle, preview_.viewport()->width());
    EXPECT_NE(cell(0, 3), QString());
    const QPoint place = preview_.visualRect(preview_.model()->index(0, 2)).center();
    QHelpEvent help(QEvent::ToolTip, place, preview_.viewport()->mapToGlobal(place));
    QApplication::sendEvent(preview_.viewport(), &help);
    EXPECT_EQ(QToolTip::text(), address);
    QToolTip::hideText();
}

TEST_F(CameraListWindowTest, ShowsALongNameWholeWhereThereIsRoom)
{
    paste(QStringLiteral("name,address,group,row\n%1,http://cam/,1,0\n").arg(QString(40, u'n')));
    EXPECT_GE(preview_.columnWidth(1), preview_.fontMetrics().horizontalAdvance(QString(40, u'n')));
}

TEST_F(CameraListWindowTest, KeepsTheRemarksInSightAtEveryWidth)
{
    const QString address = QStringLiteral("http://cam/") + QString(60, u'x');
    paste(QStringLiteral("name,address,group,row\n%1,%2,77,0\n").arg(QString(40, u'N'), address));
    resize(window_.minimumSizeHint().width());
    const int middle = preview_.columnViewportPosition(3) + preview_.columnWidth(3) / 2;
    EXPECT_LT(middle, preview_.viewport()->width());
    resize(1900);
    EXPECT_GT(preview_.columnWidth(2), preview_.fontMetrics().horizontalAdvance(address));
}

TEST_F(CameraListWindowTest, StoresNothingElsewhereThanItShows)
{
    paste(QStringLiteral("http://a/\n"));
    ASSERT_EQ(cell(0, 0), QStringLiteral("0:0"));
    settings_.write(u"Liste0", u"lst0", u"http://other/"); // by another program
    QTest::mouseClick(&store_, Qt::LeftButton);
    EXPECT_EQ(settings_.read(u"Liste0", u"lst1"), QString());
    EXPECT_EQ(cell(0, 0), QStringLiteral("0:1"));
    EXPECT_TRUE(message_.text().contains(u"meanwhile")) << message_.text().toStdString();
    QTest::mouseClick(&store_, Qt::LeftButton);
    EXPECT_EQ(settings_.read(u"Liste0", u"lst0"), QStringLiteral("http://other/"));
    EXPECT_EQ(settings_.read(u"Liste0", u"lst1"), QStringLiteral("http://a/"));
}

TEST_F(CameraListWindowTest, ItsStoreKeyPressedTwiceLeavesItOpen)
{
    paste(QStringLiteral("http://a/\n"));
    store_.setFocus();
    QTest::keyClick(window_.focusWidget(), Qt::Key_Space);
    ASSERT_EQ(message_.text(), QStringLiteral("Stored."));
    QTest::keyClick(window_.focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(window_.isVisible()) << window_.focusWidget()->objectName().toStdString();
}

// As when an address that is being typed in the main window is stored first.
TEST_F(CameraListWindowTest, StoresNothingElsewhereThanItShowsOnceWhatIsTypedIsStored)
{
    paste(QStringLiteral("http://a/1.jpg"));
    ASSERT_EQ(cell(0, 0), QStringLiteral("0:0"));
    QObject::connect(&window_, &CameraListWindow::storing, &window_,
                     [this] { settings_.write(u"Liste0", u"lst0", u"http://typed/"); });
    QTest::mouseClick(&store_, Qt::LeftButton);
    EXPECT_EQ(settings_.read(u"Liste0", u"lst0"), QStringLiteral("http://typed/"));
    EXPECT_EQ(settings_.read(u"Liste0", u"lst1"), QString());
    EXPECT_EQ(cell(0, 0), QStringLiteral("0:1"));
}

TEST_F(CameraListWindowTest, ShowsTheRowsAsTheyAreWhenItComesUpAgain)
{
    paste(QStringLiteral("http://a/\n"));
    settings_.write(u"Liste0", u"lst0", u"http://other/");
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(&window_, &activation);
    EXPECT_EQ(cell(0, 0), QStringLiteral("0:1"));
}

TEST_F(CameraListWindowTest, KeepsWhatWasPastedWhenItIsOpenedAgain)
{
    paste(QStringLiteral("http://a/\n"));
    window_.present();
    EXPECT_EQ(text_.toPlainText(), QStringLiteral("http://a/\n"));
    window_.close();
    window_.present();
    EXPECT_EQ(text_.toPlainText(), QString());
}

TEST_F(CameraListWindowTest, ShowsNoPasswordHoweverLong)
{
    const QString token(300, u't');
    paste(QStringLiteral("http://admin:%1@cam/a.jpg\nhttp://admin:%1@cam/a.jpg Front door\n")
              .arg(token));
    EXPECT_EQ(cell(0, 2), QStringLiteral("http://cam/a.jpg"));
    EXPECT_EQ(cell(1, 2), QStringLiteral("http://cam/a.jpg Front door"));
    EXPECT_EQ(cell(1, 3), QStringLiteral("\"http://cam/a.jpg Front door\" is not an address"));
}

TEST_F(CameraListWindowTest, ReadsAFileWholeOrNotAtAll)
{
    tree_.write(u"list.txt", QByteArray("http://cam/a.jpg\n").repeated(20));
    {
        const RefusedCall refused(Call::Read, EIO, 1);
        window_.openFile(tree_.path(u"list.txt"));
    }
    EXPECT_EQ(preview_.rowCount(), 0);
    EXPECT_FALSE(store_.isEnabled());
    EXPECT_TRUE(message_.text().contains(u"cannot be read")) << message_.text().toStdString();
    window_.openFile(tree_.path(u"list.txt"));
    EXPECT_EQ(preview_.rowCount(), 20);
}

TEST_F(CameraListWindowTest, WaitsForNoPipe)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree_.path(u"pipe")).constData(), 0600), 0);
    window_.openFile(tree_.path(u"pipe"));
    EXPECT_TRUE(message_.text().contains(u"cannot be read")) << message_.text().toStdString();
}

TEST_F(CameraListWindowTest, ShowsTheFilesOwnTextToCorrect)
{
    const QString lines = QStringLiteral("# caméras\nthis is none\nhttp://b/1.jpg\n<p>a</p> b\n");
    tree_.write(u"lines.txt", QString(lines).replace(u'\n', QStringLiteral("\r\n")).toUtf8());
    window_.present();
    window_.openFile(tree_.path(u"lines.txt"));
    EXPECT_EQ(text_.toPlainText(), lines);
    const QString before = message_.text();
    EXPECT_TRUE(before.startsWith(u"1 new, 0 double, 2 wrong")) << before.toStdString();
    QTest::keyClick(&text_, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&text_, Qt::Key_Return);
    EXPECT_EQ(message_.text(), before);
    EXPECT_FALSE(store_.isEnabled());
    QTest::mouseClick(&store_, Qt::LeftButton);
    EXPECT_FALSE(tree_.exists(u"Velmora.ini"));
}

TEST_F(CameraListWindowTest, LeavesInATableWhatIsWrongInIt)
{
    const QString table = QStringLiteral("name;address;group;row\nGate;http://a/6.jpg;77;1\n");
    tree_.write(u"table.csv", table.toUtf8());
    window_.present();
    window_.openFile(tree_.path(u"table.csv"));
    EXPECT_EQ(text_.toPlainText(), table);
    EXPECT_EQ(cell(0, 3), QStringLiteral("a group is a number from 0 to 9"));
    text_.find(QStringLiteral("77"));
    QTest::keyClicks(&text_, QStringLiteral("7"));
    EXPECT_EQ(cell(0, 0), QStringLiteral("7:1"));
    EXPECT_TRUE(store_.isEnabled());
}

TEST_F(CameraListWindowTest, ShowsNothingOfAFileThatIsNoList)
{
    paste(QStringLiteral("http://a/\n"));
    tree_.write(u"program", QByteArray("\x7f"
                                       "ELF\0\1\2",
                                       7));
    window_.openFile(tree_.path(u"program"));
    EXPECT_EQ(text_.toPlainText(), QString());
    EXPECT_EQ(preview_.rowCount(), 0);
    EXPECT_FALSE(store_.isEnabled());
    EXPECT_EQ(message_.text(), QStringLiteral("The list is not a text file"));
}

TEST_F(CameraListWindowTest, StoresNothingWhileALineIsWrong)
{
    paste(QStringLiteral("http://a/\nnothing\nhttp://a/\n"));
    EXPECT_FALSE(store_.isEnabled());
    EXPECT_TRUE(message_.text().startsWith(u"1 new, 1 double, 1 wrong"));
    text_.setPlainText(QStringLiteral("http://a/\n"));
    EXPECT_TRUE(store_.isEnabled());
}

TEST_F(CameraListWindowTest, ReadsAFile)
{
    tree_.write(u"list.txt", QByteArray("\xFF\xFEh\0t\0t\0p\0:\0/\0/\0a\0/\0", 20));
    window_.present();
    window_.openFile(tree_.path(u"list.txt"));
    ASSERT_EQ(preview_.rowCount(), 1);
    EXPECT_EQ(cell(0, 2), QStringLiteral("http://a/"));
    EXPECT_EQ(text_.toPlainText(), QStringLiteral("http://a/"));
    tree_.write(u"long.txt", QByteArray("http://a/\n").repeated(1'000'000));
    window_.openFile(tree_.path(u"long.txt"));
    EXPECT_FALSE(store_.isEnabled());
    EXPECT_TRUE(message_.text().contains(QStringLiteral("longer")));
}

TEST_F(CameraListWindowTest, ReadsAndWritesTheFilesThatItsDialogsChoose)
{
    window_.present();
    settings_.write(u"Liste0", u"lst0", u"http://cam/a.jpg");
    const QString path = tree_.path(u"cameras.csv");
    choose("listExport", path);
    EXPECT_EQ(message_.text(), QStringLiteral("Written to ") + path);
    settings_.write(u"Liste0", u"lst0", QString());
    choose("listOpen", path);
    ASSERT_EQ(preview_.rowCount(), 1);
    EXPECT_EQ(cell(0, 2), QStringLiteral("http://cam/a.jpg"));
    choose("listExport", QStringLiteral("/dev/full"));
    EXPECT_TRUE(message_.text().contains(QStringLiteral("/dev/full")))
        << message_.text().toStdString();
}

// A file may be long in answering, or never answer.
TEST_F(CameraListWindowTest, OpensNoFileOfAFolderThatItsDialogsShow)
{
    window_.present();
    for (const QString &button : kFileButtons) {
        tree_.write(button + QStringLiteral("/of no kind"), "x");
        QTest::mouseClick(window_.findChild<QPushButton *>(button), Qt::LeftButton);
        EXPECT_EQ(filesOpenedForListing(window_, tree_.path(button)), QStringList());
        delete window_.findChild<QFileDialog *>();
    }
}

TEST_F(CameraListWindowTest, ItsDialogsDeleteAndMoveNothing)
{
    window_.present();
    for (const QString &button : kFileButtons) {
        const QString file = button + QStringLiteral("/list.txt");
        tree_.write(file, "x");
        QTest::mouseClick(window_.findChild<QPushButton *>(button), Qt::LeftButton);
        EXPECT_FALSE(changesFiles(window_, QFileInfo(tree_.path(file))));
        delete window_.findChild<QFileDialog *>();
    }
}

// The toolkit runs its menus and questions in loops of their own, above the box that they belong
// to.
TEST_F(CameraListWindowTest, ItsDialogsGoWithTheirMenus)
{
    window_.present();
    for (const QString &button : kFileButtons) {
        QTest::mouseClick(window_.findChild<QPushButton *>(button), Qt::LeftButton);
        EXPECT_TRUE(goesWithWhatItOpens(window_, &openRowsMenu)) << button.toStdString();
    }
}

TEST_F(CameraListWindowTest, ItsDialogsGoWithTheQuestionsThatTheyAsk)
{
    window_.present();
    tree_.write(u"there.csv", "x");
    const QStringList names{tree_.path(u"missing.csv"), tree_.path(u"there.csv")};
    for (qsizetype i = 0; i < names.size(); ++i) {
        QTest::mouseClick(window_.findChild<QPushButton *>(kFileButtons.at(i)), Qt::LeftButton);
        EXPECT_TRUE(goesWithWhatItOpens(window_, [&](QFileDialog &box) {
            auto *const name = box.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            name->setText(names.at(i));
            QTest::keyClick(name, Qt::Key_Return);
        })) << kFileButtons.at(i).toStdString();
    }
    EXPECT_EQ(tree_.read(u"there.csv"), QByteArray("x"));
}

// As the clipboard is when the program that had copied something has ended.
TEST_F(CameraListWindowTest, PastesNothingFromAClipboardThatHoldsNothing)
{
    window_.present();
    QGuiApplication::clipboard()->setMimeData(new QMimeData);
    text_.setFocus();
    QTest::keyClick(&text_, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text_.toPlainText(), QString());
}

TEST_F(CameraListWindowTest, PastesTheTextThatAProgramOffersBesideOtherForms)
{
    window_.present();
    auto *const copied = new QMimeData;
    copied->setData(QStringLiteral("text/markdown"), "http\\://a/");
    copied->setText(QStringLiteral("http://a/*_x_*"));
    QGuiApplication::clipboard()->setMimeData(copied);
    text_.setFocus();
    QTest::keyClick(&text_, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text_.toPlainText(), QStringLiteral("http://a/*_x_*"));
}

TEST_F(CameraListWindowTest, SaysThatTheSettingsCannotBeWritten)
{
    paste(QStringLiteral("http://a/\n"));
    const FileSizeLimit limit(2);
    QTest::mouseClick(&store_, Qt::LeftButton);
    EXPECT_EQ(message_.text(), QStringLiteral("The settings file cannot be written"));
    EXPECT_EQ(settings_.read(u"Liste0", u"lst0"), QString());
}

} // namespace
} // namespace velmora::test
