// The alarm's mail: what it says, the settings it uses, and one at a time.
#include "tools/AlarmMail.h"

#include "support/BrowserHouse.h"
#include "support/FilmDouble.h"
#include "support/MailDouble.h"
#include "support/MailReader.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class AlarmMailTest : public testing::Test
{
protected:
    AlarmMailTest()
    {
        set(u"Server", u"mail.example.org");
        set(u"To", u"guard@example.org");
        QObject::connect(&mail_, &AlarmMail::began, &mail_, [this] { events_ += u'b'; });
        QObject::connect(&mail_, &AlarmMail::sent, &mail_, [this] { events_ += u's'; });
        QObject::connect(&mail_, &AlarmMail::failed, &mail_, [this](const QString &text) {
            events_ += u'f';
            warning_ = text;
        });
    }

    void set(QStringView key, QStringView value)
    {
        house_.capture.settings.write(u"Mail", key, value);
    }

    void send(const QString &text = QStringLiteral("essai"))
    {
        mail_.send(text);
        house_.clock.advance(0ms);
    }

    void finish(std::optional<MailProblem> problem = {})
    {
        sender_.finish(std::move(problem));
        house_.clock.advance(0ms);
    }

    BrowserHouse house_{[](BrowserHouse &) { return std::make_unique<FilmDouble>(); }};
    MailDouble sender_;
    AlarmMail mail_{house_.capture.settings, sender_, house_.clock, house_.capture.scope};
    QString events_;
    QString warning_;
};

TEST_F(AlarmMailTest, IsNotKeptFromTheNextMailByOneThatBrokeDown)
{
    sender_.breaksDown = true;
    send();
    sender_.breaksDown = false;
    send();
    finish();
    EXPECT_EQ(events_, QStringLiteral("bbs"));
}

TEST_F(AlarmMailTest, SendsTheTextUnderTheSubjectAlarm)
{
    house_.clock.setUtcOffset(2h);
    set(u"From", u"cam@example.org");
    send();
    finish();
    ASSERT_EQ(sender_.texts.size(), 1);
    const ReadMail mail = readMail(sender_.texts.first());
    EXPECT_EQ(mail.raw("From"), "cam@example.org");
    EXPECT_EQ(mail.raw("To"), "guard@example.org");
    EXPECT_EQ(mail.raw("Subject"), "Alarm");
    EXPECT_EQ(mail.raw("Date"), "Tue, 07 Mar 2006 14:05:09 +0200");
    EXPECT_EQ(mail.body, "essai\r\n");
    EXPECT_EQ(events_, QStringLiteral("bs"));
}

TEST_F(AlarmMailTest, EveryMailHasAnIdOfItsOwn)
{
    send();
    finish();
    send();
    finish();
    const QByteArray first = readMail(sender_.texts.first()).raw("Message-ID");
    EXPECT_NE(first, readMail(sender_.texts.last()).raw("Message-ID"));
    EXPECT_TRUE(first.endsWith("@example.org>"));
    EXPECT_EQ(first.size(), 1 + 32 + 13);
}

TEST_F(AlarmMailTest, ASecondMailWhileOneIsUnderWayIsNotSent)
{
    send();
    send();
    EXPECT_EQ(events_, QStringLiteral("b"));
    finish();
    EXPECT_EQ(sender_.texts.size(), 1);
    EXPECT_EQ(events_, QStringLiteral("bs"));
    send();
    EXPECT_EQ(sender_.texts.size(), 2);
    finish();
}

TEST_F(AlarmMailTest, AFailureIsReportedOnceAndNeitherLoggedNorTriedAgain)
{
    house_.newLog();
    send();
    finish(MailProblem{MailFailure::TimedOut, {}, QStringLiteral("mail.example.org")});
    EXPECT_EQ(events_, QStringLiteral("bf"));
    EXPECT_TRUE(warning_.contains(QStringLiteral("mail.example.org did not answer in time")));
    house_.clock.advance(1h);
    EXPECT_EQ(sender_.texts.size(), 1);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(AlarmMailTest, BadSettingsAreReportedWithoutAskingAServer)
{
    set(u"Server", u"");
    send();
    EXPECT_EQ(events_, QStringLiteral("bf"));
    EXPECT_TRUE(warning_.contains(QStringLiteral("No mail server is set")));
    EXPECT_TRUE(sender_.texts.isEmpty());
    send();
    EXPECT_EQ(events_, QStringLiteral("bfbf")) << "the first is over";
}

TEST_F(AlarmMailTest, SettingsAreReadAtEachMail)
{
    send();
    finish();
    set(u"To", u"other@example.org");
    set(u"User", u"anna");
    set(u"Password", u"secret");
    send();
    finish();
    EXPECT_EQ(sender_.accounts.first().to.first().address, "guard@example.org");
    EXPECT_EQ(sender_.accounts.last().to.first().address, "other@example.org");
    EXPECT_EQ(sender_.accounts.last().password, "secret");
    EXPECT_FALSE(sender_.texts.last().contains("secret"));
}

TEST_F(AlarmMailTest, TheEndOfTheProgramStopsItWithoutAWord)
{
    send();
    house_.capture.scope.requestStop();
    house_.clock.advance(0ms);
    EXPECT_EQ(events_, QStringLiteral("b"));
    send();
    EXPECT_EQ(sender_.texts.size(), 1);
}

} // namespace
} // namespace velmora::test
