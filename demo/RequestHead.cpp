#include "demo/RequestHead.h"

#include <QList>
#include <QUrl>

#include <algorithm>

namespace velmora::demo {
namespace {

// The characters of methods and header names (RFC 9110).
bool isToken(const QByteArray &text)
{
    const QByteArray marks = QByteArrayLiteral("!#$%&'*+-.^_`|~");
    return !text.isEmpty() && std::ranges::all_of(text, [&marks](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               marks.contains(c);
    });
}

QList<QByteArray> linesOf(const QByteArray &head)
{
    QList<QByteArray> lines = head.split('\n');
    for (QByteArray &line : lines) {
        if (line.endsWith('\r')) {
            line.chop(1);
        }
    }
    while (!lines.isEmpty() && lines.constLast().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

// The path of "/camera0.jpg?x" or, as a proxy requests it, of "http://host/camera0.jpg".
std::optional<QString> pathOf(const QByteArray &target)
{
    const bool absolute = target.startsWith("http://");
    if (!absolute && !target.startsWith('/')) {
        return std::nullopt;
    }
    const QByteArray address = absolute ? target : "http://127.0.0.1" + target;
    const QUrl url = QUrl::fromEncoded(address, QUrl::StrictMode);
    if (!url.isValid()) {
        return std::nullopt;
    }
    return url.path().isEmpty() ? QStringLiteral("/") : url.path();
}

std::optional<qsizetype> hostCount(const QList<QByteArray> &lines)
{
    qsizetype count = 0;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray name = lines[i].left(std::max<qsizetype>(lines[i].indexOf(':'), 0));
        if (!isToken(name)) {
            return std::nullopt;
        }
        count += name.compare("host", Qt::CaseInsensitive) == 0 ? 1 : 0;
    }
    return count;
}

} // namespace

std::optional<qsizetype> headLength(const QByteArray &bytes)
{
    for (qsizetype end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n', end + 1)) {
        const bool carriageReturn = bytes.mid(end + 1, 1) == "\r";
        const qsizetype next = carriageReturn ? end + 2 : end + 1;
        if (bytes.mid(next, 1) == "\n") {
            return next + 1;
        }
    }
    return std::nullopt;
}

std::optional<RequestHead> parseRequestHead(const QByteArray &head)
{
    const QList<QByteArray> lines = linesOf(head);
    const QList<QByteArray> words = lines.value(0).split(' ');
    if (words.size() != 3 || !isToken(words[0])) {
        return std::nullopt;
    }
    const bool newer = words[2] == "HTTP/1.1";
    const std::optional<qsizetype> hosts = hostCount(lines);
    const std::optional<QString> path = pathOf(words[1]);
    if (!path || !hosts || *hosts > 1 || (newer && *hosts == 0)) {
        return std::nullopt;
    }
    if (!newer && words[2] != "HTTP/1.0") {
        return std::nullopt;
    }
    return RequestHead{.method = words[0], .path = *path};
}

} // namespace velmora::demo
