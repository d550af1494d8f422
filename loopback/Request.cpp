#include "loopback/Request.h"

#include <QRegularExpression>

#include <algorithm>

namespace velmora::loopback {
namespace {

// The characters of methods and header names (RFC 9110).
bool isToken(const QByteArray &text)
{
    static const QRegularExpression token(QStringLiteral("\\A[-!#$%&'*+.^_`|~0-9A-Za-z]+\\z"));
    return token.match(QString::fromLatin1(text)).hasMatch();
}

bool isValid(const Request &request)
{
    qsizetype hosts = 0;
    for (const auto &[name, value] : request.headers) {
        if (!isToken(name)) {
            return false;
        }
        hosts += name.compare("host", Qt::CaseInsensitive) == 0 ? 1 : 0;
    }
    return isToken(request.method) && ((request.version == "HTTP/1.1" && hosts == 1) ||
                                       (request.version == "HTTP/1.0" && hosts <= 1));
}

} // namespace

QByteArray Request::header(QByteArrayView name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}

std::optional<Request> parsedRequest(const QByteArray &head)
{
    QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    if (words.size() != 3) {
        return std::nullopt;
    }
    Request request{words[0], words[1], words[2], {}};
    for (const QByteArray &line : lines) {
        const qsizetype colon = std::max<qsizetype>(line.indexOf(':'), 0);
        request.headers.emplace_back(line.first(colon), line.mid(colon + 1).trimmed());
    }
    return isValid(request) ? std::optional(request) : std::nullopt;
}

} // namespace velmora::loopback
