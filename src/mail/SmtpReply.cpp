#include "mail/SmtpReply.h"

#include "base/OneLine.h"

#include <QRegularExpression>

namespace velmora {

QString SmtpReply::shown(const QByteArray &password) const
{
    constexpr qsizetype kMostLetters = 200;
    const bool isSecret = !password.isEmpty() &&
                          (lastLine.contains(password) || lastLine.contains(password.toBase64()));
    return isSecret ? QString::number(code)
                    : onOneLine(QString::fromUtf8(lastLine)).left(kMostLetters);
}

std::optional<SmtpReply> takeReply(QByteArray &bytes)
{
    static const QRegularExpression whole(QStringLiteral(
        R"(\A(?:[1-5][0-9]{2}-[^\n]*\n)*+(?<line>(?<code>[1-5][0-9]{2})?[^\n]*)\n)"));
    if (bytes.size() > kMaxReplyBytes) {
        return SmtpReply{};
    }
    const QRegularExpressionMatch match = whole.match(QString::fromLatin1(bytes));
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    bytes.remove(0, match.capturedLength());
    return SmtpReply{match.captured(u"code").toInt(), match.captured(u"line").toLatin1().trimmed()};
}

QByteArray dotStuffed(const QByteArray &text)
{
    QByteArray stuffed = "\r\n" + text;
    stuffed.replace("\r\n.", "\r\n..");
    return stuffed.sliced(2) + ".\r\n";
}

} // namespace velmora
