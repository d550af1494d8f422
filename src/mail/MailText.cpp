#include "mail/MailText.h"

#include "base/OneLine.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

namespace velmora {
namespace {

constexpr qsizetype kMaxLine = 76;
constexpr qsizetype kMaxWordBytes = 36; // whose base64 with its frame fits an encoded word

QByteArray encodedWord(const QString &piece)
{
    return "=?UTF-8?B?" + piece.toUtf8().toBase64() + "?=";
}

// Words of whole characters, so that each can be decoded alone, on separate lines.
QByteArray encodedWords(const QString &text)
{
    QByteArrayList words;
    QString piece;
    for (const uint code : text.toUcs4()) {
        const auto letter = static_cast<char32_t>(code);
        const QString more = QString::fromUcs4(&letter, 1);
        if ((piece + more).toUtf8().size() > kMaxWordBytes) {
            words.append(encodedWord(piece));
            piece.clear();
        }
        piece += more;
    }
    words.append(encodedWord(piece));
    return words.join("\r\n ");
}

bool fitsAsItIs(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral(R"(\A[ -~]{0,66}\z)"));
    return plain.match(text).hasMatch() && !text.contains(QLatin1String("=?"));
}

QByteArray headerText(const QString &text)
{
    const QString line = onOneLine(text);
    return fitsAsItIs(line) ? line.toLatin1() : encodedWords(line);
}

QByteArray nameText(const QString &name)
{
    const QString line = onOneLine(name);
    if (!fitsAsItIs(line)) {
        return encodedWords(line);
    }
    QString quoted = line;
    quoted.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
    return '"' + quoted.toLatin1() + '"';
}

QByteArray addressText(const MailAddress &address)
{
    return address.name.isEmpty() ? address.address
                                  : nameText(address.name) + "\r\n <" + address.address + '>';
}

QByteArray addressTexts(const QList<MailAddress> &addresses)
{
    QByteArrayList texts;
    for (const MailAddress &address : addresses) {
        texts.append(addressText(address));
    }
    return texts.join(",\r\n ");
}

QByteArray messageId(const MailLetter &letter)
{
    const QByteArray &address = letter.from.address;
    return '<' + letter.id + address.sliced(address.lastIndexOf('@')) + '>';
}

// The last line is terminated as well.
QString withLineEnds(QString body)
{
    body.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    if (!body.isEmpty() && !body.endsWith(u'\n')) {
        body += u'\n';
    }
    return body.replace(u'\n', QLatin1String("\r\n"));
}

QByteArray inLines(const QByteArray &base64)
{
    QByteArray lines;
    for (qsizetype at = 0; at < base64.size(); at += kMaxLine) {
        lines += base64.mid(at, kMaxLine) + "\r\n";
    }
    return lines;
}

// The rest of the header, the empty line and the body.
QByteArray encodedBody(const QString &body)
{
    static const QRegularExpression shortLines(QStringLiteral(R"(\A(?>[ -~]{0,76}\r\n)*+\z)"));
    const QString text = withLineEnds(body);
    if (shortLines.match(text).hasMatch()) {
        return "Content-Transfer-Encoding: 7bit\r\n\r\n" + text.toLatin1();
    }
    return "Content-Transfer-Encoding: base64\r\n\r\n" + inLines(text.toUtf8().toBase64());
}

} // namespace

QByteArray mailDate(WallTime date, std::chrono::seconds utcOffset)
{
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch());
    QDateTime at = QDateTime::fromMSecsSinceEpoch(ms.count(), Qt::UTC);
    at.setOffsetFromUtc(static_cast<int>(utcOffset.count())); // the fields stay as they are
    return (QLocale::c().toString(at, u"ddd, ") + at.toString(Qt::RFC2822Date)).toLatin1();
}

QByteArray mailText(const MailLetter &letter)
{
    return "From: " + addressText(letter.from) + "\r\nTo: " + addressTexts(letter.to) +
           "\r\nSubject: " + headerText(letter.subject) +
           "\r\nDate: " + mailDate(letter.date, letter.utcOffset) +
           "\r\nMessage-ID: " + messageId(letter) +
           "\r\nAuto-Submitted: auto-generated\r\nMIME-Version: 1.0\r\n"
           "Content-Type: text/plain; charset=utf-8\r\n" +
           encodedBody(letter.body);
}

} // namespace velmora
