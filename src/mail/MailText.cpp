#include "mail/MailText.h"

#include "base/OneLine.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace velmora {
namespace {

// Words of whole characters, so that each can be decoded alone, on separate lines: of at most 36
// bytes, whose base64 with its frame fits a line.
QByteArray encodedWords(const QString &text)
{
    static const QRegularExpression piece(QStringLiteral(R"((?s).{1,36}(?![\x{80}-\x{BF}]))"));
    QByteArrayList words;
    for (const auto &match : piece.globalMatch(QString::fromLatin1(text.toUtf8()))) {
        words.append("=?UTF-8?B?" + match.captured().toLatin1().toBase64() + "?=");
    }
    return words.join("\r\n ");
}

QByteArray headerText(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral(R"(\A(?!.*=\?)[ -~]{0,66}\z)"));
    const QString line = onOneLine(text);
    return plain.match(line).hasMatch() ? line.toLatin1() : encodedWords(line);
}

// The name is quoted unless it is encoded.
QByteArray addressText(const MailAddress &address)
{
    if (address.name.isEmpty()) {
        return address.address;
    }
    QByteArray name = headerText(address.name);
    if (!name.startsWith("=?")) {
        name = '"' + name.replace('\\', R"(\\)").replace('"', R"(\")") + '"';
    }
    return name + "\r\n <" + address.address + '>';
}

// The rest of the header, the empty line and the body. Its last line is terminated as well.
QByteArray encodedBody(const QString &body)
{
    static const QRegularExpression lineEnd(QStringLiteral(R"(\r\n?|\n|(?<=[^\r\n])\z)"));
    static const QRegularExpression shortLines(QStringLiteral(R"(\A(?>[ -~]{0,76}\r\n)*+\z)"));
    static const QRegularExpression base64Line(QStringLiteral("(.{1,76})"));
    QString bytes = QString::fromLatin1(body.toUtf8());
    bytes.replace(lineEnd, QStringLiteral("\r\n"));
    if (shortLines.match(bytes).hasMatch()) {
        return "Content-Transfer-Encoding: 7bit\r\n\r\n" + bytes.toLatin1();
    }
    QString base64 = QString::fromLatin1(bytes.toLatin1().toBase64());
    base64.replace(base64Line, QStringLiteral("\\1\r\n"));
    return "Content-Transfer-Encoding: base64\r\n\r\n" + base64.toLatin1();
}

} // namespace

QByteArray mailDate(WallTime date, std::chrono::seconds utcOffset)
{
    QDateTime at = QDateTime::fromSecsSinceEpoch(date.time_since_epoch().count(), Qt::UTC);
    at.setOffsetFromUtc(static_cast<int>(utcOffset.count())); // the fields stay as they are
    return (QLocale::c().toString(at, u"ddd, ") + at.toString(Qt::RFC2822Date)).toLatin1();
}

QByteArray mailText(const MailLetter &letter)
{
    QByteArrayList to;
    std::ranges::transform(letter.to, std::back_inserter(to), &addressText);
    return "From: " + addressText(letter.from) + "\r\nTo: " + to.join(",\r\n ") +
           "\r\nSubject: " + headerText(letter.subject) +
           "\r\nDate: " + mailDate(letter.date, letter.utcOffset) + "\r\nMessage-ID: <" +
           letter.id + '@' + letter.from.address.split('@').last() +
           ">\r\nAuto-Submitted: auto-generated\r\nMIME-Version: 1.0\r\n"
           "Content-Type: text/plain; charset=utf-8\r\n" +
           encodedBody(letter.body);
}

} // namespace velmora
