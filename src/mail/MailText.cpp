#include "mail/MailText.h"

#include "base/DateText.h"
#include "base/MonthNames.h"
#include "base/OneLine.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr qsizetype kMaxLine = 76;
constexpr qsizetype kMaxWordBytes = 36; // whose base64 with its frame fits an encoded word
constexpr std::array kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

bool isPlain(char16_t c)
{
    return c >= u' ' && c <= u'~';
}

bool isPlain(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return isPlain(c.unicode()); });
}

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
    return isPlain(text) && text.size() <= kMaxLine - 10 && !text.contains(QLatin1String("=?"));
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

QByteArray zoneText(std::chrono::seconds utcOffset)
{
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(utcOffset).count();
    const auto size = static_cast<int>(std::abs(minutes));
    constexpr int kHour = 60;
    return (minutes < 0 ? '-' : '+') +
           (twoDigits(size / kHour) + twoDigits(size % kHour)).toLatin1();
}

QByteArray messageId(const MailLetter &letter)
{
    const QByteArray &address = letter.from.address;
    return '<' + letter.id + address.sliced(address.lastIndexOf('@')) + '>';
}

QStringList bodyLines(QString body)
{
    body.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    QStringList lines = body.split(u'\n');
    if (lines.last().isEmpty()) {
        lines.removeLast(); // the last line is terminated as well
    }
    return lines;
}

bool fitsAsItIs(const QStringList &lines)
{
    return std::ranges::all_of(lines, [](const QString &line) {
        return line.size() <= kMaxLine && isPlain(QStringView(line));
    });
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
    const QStringList lines = bodyLines(body);
    const QString text =
        lines.isEmpty() ? QString() : lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n");
    if (fitsAsItIs(lines)) {
        return "Content-Transfer-Encoding: 7bit\r\n\r\n" + text.toLatin1();
    }
    return "Content-Transfer-Encoding: base64\r\n\r\n" + inLines(text.toUtf8().toBase64());
}

} // namespace

QByteArray mailDate(WallTime date, std::chrono::seconds utcOffset)
{
    const WallFields at = wallFields(date);
    const std::chrono::weekday day(std::chrono::floor<std::chrono::days>(date));
    const QString text =
        QStringLiteral("%1, %2 %3 %4 %5:%6:%7 ")
            .arg(QLatin1String(kDays.at(day.c_encoding())), twoDigits(at.day),
                 QLatin1String(kMonthNames.at(static_cast<std::size_t>(at.month) - 1)))
            .arg(at.year, 4, 10, QLatin1Char('0'))
            .arg(twoDigits(at.hour), twoDigits(at.minute), twoDigits(at.second));
    return text.toLatin1() + zoneText(utcOffset);
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
