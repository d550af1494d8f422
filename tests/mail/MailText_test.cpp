// The text of a mail, as other programs read it.
#include "mail/MailText.h"

#include "base/OneLine.h"
#include "support/FakeClock.h"
#include "support/MailReader.h"
#include "support/Printers.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

MailLetter letter(const QString &body = QStringLiteral("essai"))
{
    return {{{}, "cam@example.org"},
            {{{}, "guard@example.org"}},
            QStringLiteral("Alarm"),
            body,
            kFakeStart,
            1h,
            "abc123"};
}

TEST(MailTextTest, HasTheHeadersThatAMailNeeds)
{
    EXPECT_EQ(mailText(letter()), "From: cam@example.org\r\n"
                                  "To: guard@example.org\r\n"
                                  "Subject: Alarm\r\n"
                                  "Date: Tue, 07 Mar 2006 14:05:09 +0100\r\n"
                                  "Message-ID: <abc123@example.org>\r\n"
                                  "Auto-Submitted: auto-generated\r\n"
                                  "MIME-Version: 1.0\r\n"
                                  "Content-Type: text/plain; charset=utf-8\r\n"
                                  "Content-Transfer-Encoding: 7bit\r\n"
                                  "\r\n"
                                  "essai\r\n");
}

struct DateRow
{
    std::chrono::seconds offset;
    const char *zone;
};

constexpr DateRow kZones[] = {
    {0s, "+0000"},
    {1h, "+0100"},
    {-1h, "-0100"},
    {5h + 30min, "+0530"},
    {-(3h + 30min), "-0330"},
    {14h, "+1400"},
    {-12h, "-1200"},
};

TEST(MailTextTest, TheDateHasItsZone)
{
    for (const DateRow &row : kZones) {
        EXPECT_EQ(mailDate(kFakeStart, row.offset),
                  QByteArray("Tue, 07 Mar 2006 14:05:09 ") + row.zone);
    }
}

TEST(MailTextTest, TheDateNamesDayAndMonthInEnglish)
{
    const std::chrono::local_days sunday{std::chrono::year{2026} / std::chrono::November / 22};
    EXPECT_EQ(mailDate(sunday, 0s), "Sun, 22 Nov 2026 00:00:00 +0000");
    EXPECT_EQ(mailDate(sunday - 1s, 0s), "Sat, 21 Nov 2026 23:59:59 +0000");
    const std::chrono::local_days leap{std::chrono::year{2024} / std::chrono::February / 29};
    EXPECT_EQ(mailDate(leap, 0s), "Thu, 29 Feb 2024 00:00:00 +0000");
}

struct BodyRow
{
    QString body;
    const char *decoded; // what a mail program shows
};

const BodyRow kBodies[] = {
    {QStringLiteral("essai"), "essai\r\n"},
    {QStringLiteral("essai\n"), "essai\r\n"},
    {QString(), ""},
    {QStringLiteral("\n"), "\r\n"},
    {QStringLiteral("a\nb\rc\r\nd"), "a\r\nb\r\nc\r\nd\r\n"},
    {QStringLiteral("a\n\n.\n..b"), "a\r\n\r\n.\r\n..b\r\n"},
    {QStringLiteral("été à la mer 🎥"), "été à la mer 🎥\r\n"},
    {QStringLiteral("a\tb"), "a\tb\r\n"},
    {QStringLiteral("a\x01z"), "a\x01z\r\n"},
    {QStringLiteral("From here"), "From here\r\n"},
};

TEST(MailTextTest, TheBodyIsReadAsItWasWritten)
{
    for (const BodyRow &row : kBodies) {
        const ReadMail mail = readMail(mailText(letter(row.body)));
        EXPECT_EQ(mail.body, row.decoded) << row.body.toStdString();
    }
}

TEST(MailTextTest, LongLinesAreFoldedOnTheWire)
{
    const QString body = QString(5000, u'x') + u'\n' + QString(3000, QChar(u'é'));
    const QByteArray text = mailText(letter(body));
    for (const QByteArray &line : text.split('\n')) {
        EXPECT_LE(line.size(), 79);
    }
    EXPECT_EQ(readMail(text).body, body.toUtf8().replace("\n", "\r\n") + "\r\n");
}

TEST(MailTextTest, ALineOfSeventySixLettersStaysAsItIs)
{
    EXPECT_TRUE(mailText(letter(QString(76, u'x'))).contains("7bit"));
    EXPECT_TRUE(mailText(letter(QString(77, u'x'))).contains("base64"));
}

const QString kSubjects[] = {
    QStringLiteral("Alarm"),
    QStringLiteral("Alarme à l'entrée"),
    QStringLiteral("🎥").repeated(60),
    QString(300, u'x'),
    QStringLiteral("=?UTF-8?B?eA==?="),
    QStringLiteral("\"quoted\", (comment) <b@c>"),
};

TEST(MailTextTest, ASubjectIsReadAsItWasWritten)
{
    for (const QString &subject : kSubjects) {
        MailLetter mine = letter();
        mine.subject = subject;
        const QByteArray text = mailText(mine);
        EXPECT_EQ(readMail(text).header("Subject"), subject);
        for (const QByteArray &line : text.split('\n')) {
            EXPECT_LE(line.size(), 79) << line.toStdString();
        }
    }
}

TEST(MailTextTest, NoLineBreakGetsIntoAHeader)
{
    for (const QString &breaks :
         {QStringLiteral("\r\n"), QStringLiteral("\n"), QStringLiteral("\r"),
          QStringLiteral("\u2028"), QStringLiteral("\u0085"), QStringLiteral("\0")}) {
        MailLetter mine = letter();
        mine.subject = QStringLiteral("Alarm") + breaks + QStringLiteral("Bcc: all@example.org");
        mine.from.name = QStringLiteral("Cam") + breaks + QStringLiteral("X-Evil: yes");
        const ReadMail mail = readMail(mailText(mine));
        EXPECT_EQ(mail.names, readMail(mailText(letter())).names);
        EXPECT_EQ(mail.header("Subject"), onOneLine(mine.subject));
    }
}

// Characters, some of them dangerous, drawn at random.
QString anyText(QRandomGenerator &lot)
{
    static const QString letters =
        QStringLiteral("ab =?.,;:<>@\"\\\r\n\t\u0000\u007f\u0085\u2028éЖ日🎥");
    QString text;
    for (int length = lot.bounded(200); length > 0; --length) {
        text += letters.mid(lot.bounded(static_cast<int>(letters.size())), 1);
    }
    return text;
}

TEST(MailTextTest, WhateverIsWrittenTheHeadersStayTheSameAndTheBodyIsReadBack)
{
    QRandomGenerator lot(20060307);
    const QByteArrayList names = readMail(mailText(letter())).names;
    for (int i = 0; i < 3000; ++i) {
        MailLetter mine = letter(anyText(lot));
        mine.subject = anyText(lot);
        mine.from.name = anyText(lot);
        mine.to.first().name = anyText(lot);
        const QByteArray text = mailText(mine);
        ASSERT_EQ(QByteArray(text).replace("\r\n", "").count('\n'), 0);
        ASSERT_EQ(QByteArray(text).replace("\r\n", "").count('\r'), 0);
        const ReadMail mail = readMail(text);
        ASSERT_EQ(mail.names, names);
        QString meant = mine.body;
        meant.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
        if (!meant.isEmpty() && !meant.endsWith(u'\n')) {
            meant += u'\n';
        }
        ASSERT_EQ(mail.body, meant.toUtf8().replace("\n", "\r\n"));
    }
}

struct NameRow
{
    QString name;
    const char *wire;
};

const NameRow kNames[] = {
    {QStringLiteral("Guard"), "\"Guard\"\r\n <guard@example.org>"},
    {QStringLiteral("Doe, \"J\" \\"), "\"Doe, \\\"J\\\" \\\\\"\r\n <guard@example.org>"},
    {QStringLiteral("é"), "=?UTF-8?B?w6k=?=\r\n <guard@example.org>"},
};

TEST(MailTextTest, NamesAreQuotedOrEncoded)
{
    for (const NameRow &row : kNames) {
        MailLetter mine = letter();
        mine.to = {{row.name, "guard@example.org"}, {{}, "b@example.org"}};
        EXPECT_TRUE(
            mailText(mine).contains(QByteArray("To: ") + row.wire + ",\r\n b@example.org\r\n"))
            << mailText(mine).toStdString();
    }
}

} // namespace
} // namespace velmora::test
