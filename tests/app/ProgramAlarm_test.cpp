// The motion alarm within the running program: how it opens, closes and ends.
#include "ProgramHouse.h"
#include "support/LoopbackMail.h"
#include "support/StoredPictures.h"

#include <QFileInfo>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kBrowser = QStringLiteral("planche");
const QString kAlarm = QStringLiteral("Alarm");
const QString kFolder = QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/");

class ProgramAlarm : public ProgramHouse
{
protected:
    ProgramAlarm()
    {
        for (int i = 0; i < 25; ++i) {
            tree_.write(QString(kFolder + storedName(i)), pictureBytes(Qt::red));
        }
    }

    void openAlarm()
    {
        start();
        click(kBrowser, QStringLiteral("CmdAlarm"));
    }

    void writeMail(const QByteArray &lines)
    {
        tree_.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\\\r\nDebug=1\r\n[Mail]\r\n" + lines +
                                        "[Liste0]\r\nLstAct=1\r\nlst0=http://cam/a.png\r\n");
    }

    // Waits until the status is no longer "Sending…".
    QString mailStatus()
    {
        const auto status = [this] { return text(kAlarm, QStringLiteral("lStatus")); };
        EXPECT_TRUE(QTest::qWaitFor([&] { return status() != QStringLiteral("Sending…"); }, 10000));
        return status();
    }

    static QList<QMessageBox *> warnings()
    {
        QList<QMessageBox *> boxes;
        for (QWidget *const widget : QApplication::topLevelWidgets()) {
            if (auto *const box = qobject_cast<QMessageBox *>(widget)) {
                boxes.append(box);
            }
        }
        return boxes;
    }

    QString shown(const QString &picture)
    {
        return control(kAlarm, picture)->accessibleDescription();
    }
};

TEST_F(ProgramAlarm, TheBrowsersButtonShowsTheWindow)
{
    start();
    EXPECT_FALSE(isVisible(kAlarm));
    click(kBrowser, QStringLiteral("CmdAlarm"));
    EXPECT_TRUE(isVisible(kAlarm));
    topLevel(kAlarm)->close();
    EXPECT_FALSE(isVisible(kAlarm));
    EXPECT_TRUE(isVisible(kBrowser));
    click(kBrowser, QStringLiteral("CmdAlarm"));
    EXPECT_TRUE(isVisible(kAlarm));
}

TEST_F(ProgramAlarm, ScansTheCameraThatTheBrowserShows)
{
    openAlarm();
    click(kAlarm, QStringLiteral("iVide"));
    clock_.advance(1s);
    EXPECT_TRUE(shown(QStringLiteral("iVar")).startsWith(tree_.path(kFolder)));
    EXPECT_EQ(QFileInfo(shown(QStringLiteral("iRef"))).fileName().left(4), QStringLiteral("2006"));
}

TEST_F(ProgramAlarm, TheEndOfTheProgramJoinsAScan)
{
    openAlarm();
    QTest::mouseClick(control(kAlarm, QStringLiteral("iVide")), Qt::LeftButton);
    end();
    clock_.advance(60s);
    EXPECT_FALSE(isVisible(kAlarm));
    EXPECT_EQ(engine_->scope().running(), 0);
}

TEST_F(ProgramAlarm, TheButtonSendsAMailToTheServerOfTheSettings)
{
    LoopbackMail server;
    writeMail("Server=" + server.host() + "\r\nFrom=cam@example.org\r\nTo=guard@example.org\r\n");
    openAlarm();
    click(kAlarm, QStringLiteral("Command1"));
    EXPECT_EQ(mailStatus(), QStringLiteral("Sent"));
    ASSERT_EQ(server.mails().size(), 1);
    EXPECT_EQ(server.mails().first().recipients, QByteArrayList{"<guard@example.org>"});
    EXPECT_TRUE(server.mails().first().text.endsWith("\r\n\r\nessai\r\n"));
    EXPECT_TRUE(warnings().isEmpty());
}

TEST_F(ProgramAlarm, AMailThatFailsGivesOneWarningAndNoLogLine)
{
    writeMail("Server=127.0.0.1:1\r\nTo=guard@example.org\r\nUser=anna\r\nPassword=sesame\r\n");
    openAlarm();
    const QStringList before = logLines();
    click(kAlarm, QStringLiteral("Command1"));
    EXPECT_EQ(mailStatus(), QStringLiteral("Not sent"));
    ASSERT_EQ(warnings().size(), 1);
    const QMessageBox &box = *warnings().first();
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Velmora"));
    EXPECT_TRUE(box.text().contains(QStringLiteral("127.0.0.1:1 cannot be reached")));
    EXPECT_FALSE(box.text().contains(QStringLiteral("sesame")));
    EXPECT_EQ(logLines(), before);
}

TEST_F(ProgramAlarm, TheSameFailureIsReportedEachTime)
{
    openAlarm();
    for (int press = 0; press < 2; ++press) {
        click(kAlarm, QStringLiteral("Command1"));
        ASSERT_EQ(warnings().size(), 1);
        EXPECT_TRUE(warnings().first()->text().contains(QStringLiteral("No mail server is set")));
        delete warnings().first();
    }
}

TEST_F(ProgramAlarm, TheEndOfTheProgramJoinsAMail)
{
    LoopbackMail server;
    server.script.silent = {"TEXT"};
    writeMail("Server=" + server.host() + "\r\nTo=guard@example.org\r\n");
    openAlarm();
    click(kAlarm, QStringLiteral("Command1"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.commands().contains("DATA"); }, 10000));
    end();
    clock_.advance(60s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return engine_->scope().running() == 0; }, 5000));
    EXPECT_TRUE(warnings().isEmpty());
}

} // namespace
} // namespace velmora::test
