// Reads a mail back, like a mail program: unfolds its headers, decodes its words and its body.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QRegularExpression>
#include <QString>

namespace velmora::test {

struct ReadMail
{
    QByteArrayList names; ///< of the headers, in order
    QByteArrayList values;
    QByteArray body; ///< decoded

    [[nodiscard]] QByteArray raw(const QByteArray &name) const
    {
        return values.value(names.indexOf(name));
    }

    /// The value with its encoded words decoded.
    [[nodiscard]] QString header(const QByteArray &name) const
    {
        static const QRegularExpression word(
            QStringLiteral(R"(=\?UTF-8\?B\?([A-Za-z0-9+/=]*)\?=\s*)"));
        const QString value = QString::fromLatin1(raw(name));
        QString decoded;
        qsizetype at = 0;
        for (auto i = word.globalMatch(value); i.hasNext();) {
            const QRegularExpressionMatch match = i.next();
            decoded += value.mid(at, match.capturedStart() - at);
            decoded += QString::fromUtf8(QByteArray::fromBase64(match.captured(1).toLatin1()));
            at = match.capturedEnd();
        }
        return decoded + value.mid(at);
    }
};

[[nodiscard]] inline ReadMail readMail(const QByteArray &text)
{
    ReadMail mail;
    const qsizetype end = text.indexOf("\r\n\r\n");
    for (const QByteArray &line : text.left(end).replace("\r\n ", " ").split('\n')) {
        mail.names.append(line.left(line.indexOf(':')));
        mail.values.append(line.mid(line.indexOf(':') + 1).trimmed());
    }
    mail.body = text.mid(end + 4);
    if (mail.raw("Content-Transfer-Encoding") == "base64") {
        mail.body = QByteArray::fromBase64(mail.body.replace("\r\n", ""),
                                           QByteArray::AbortOnBase64DecodingErrors);
    }
    return mail;
}

} // namespace velmora::test
