#include "capture/CameraUrl.h"

#include "base/AnsiText.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace velmora {
namespace {

bool isPrintable(char byte)
{
    constexpr char kFirstPrintable = 0x21;
    constexpr char kLastPrintable = 0x7E;
    return byte >= kFirstPrintable && byte <= kLastPrintable;
}

// Blanks, control characters and bytes beyond ASCII may not appear in a request. also: one more
// character that is to be taken literally.
QByteArray percentEncoded(const QByteArray &bytes, char also = ' ')
{
    QByteArray encoded;
    for (const char byte : bytes) {
        if (isPrintable(byte) && byte != also) {
            encoded += byte;
        } else {
            encoded += '%' + QByteArray(1, byte).toHex().toUpper();
        }
    }
    return encoded;
}

QByteArray percentEncoded(const QString &url)
{
    return percentEncoded(url.toUtf8());
}

// The path of an old address, to its end: a "#" does not end it, and the bytes are those of the
// code page in which the address is stored.
QByteArray oldPath(const QString &path)
{
    return percentEncoded(fitsAnsi(path) ? toAnsi(path) : path.toUtf8(), '#');
}

bool isJpg(const QString &url)
{
    return url.endsWith(QLatin1String(".jpg"), Qt::CaseInsensitive);
}

QString withoutSchemes(QString url)
{
    for (const QLatin1String scheme : {QLatin1String("http://"), QLatin1String("https://"),
                                       QLatin1String("HTTP://"), QLatin1String("HTTPS://")}) {
        url.remove(scheme);
    }
    return url;
}

// Host and path, without any scheme.
QByteArray http10Url(const QString &address)
{
    const QString url = withoutSchemes(address);
    const qsizetype path = url.indexOf(u'/');
    if (path <= 0) {
        return {};
    }
    const QString tail = url.sliced(path);
    return "http://" + percentEncoded(url.first(path)) +
           (isJpg(address) ? oldPath(tail) : percentEncoded(tail));
}

// Turns "h" and "h?a" into "h/" and "h/?a".
QString withPath(QString url)
{
    static const QRegularExpression endOfHost(QStringLiteral("[/?#]"));
    const qsizetype found = url.indexOf(endOfHost);
    const qsizetype end = found < 0 ? url.size() : found;
    if (end > 0 && (end == url.size() || url[end] != u'/')) {
        url.insert(end, u'/');
    }
    return url;
}

bool hasScheme(const QString &url, QLatin1String scheme)
{
    return url.startsWith(scheme, Qt::CaseInsensitive);
}

int usualPort(const QString &scheme)
{
    static const QHash<QString, int> ports{{QStringLiteral("https"), 443},
                                           {QStringLiteral("rtsp"), 554},
                                           {QStringLiteral("rtsps"), 322}};
    return ports.value(scheme, 80);
}

// "http://host:80" of the request that an address leads to.
QString serverOf(const QString &address)
{
    static const QRegularExpression beginOfHost(QStringLiteral("^([a-z][a-z0-9+.-]*):[/\\\\]+"));
    static const QRegularExpression endOfHost(QStringLiteral("[/\\\\?#]"));
    static const QRegularExpression port(QStringLiteral(":([0-9]*)$"));
    const HttpRequest request = requestFor(expandTemplate(address), {});
    const QString url = QString::fromUtf8(request.url).toLower();
    const QRegularExpressionMatch begin = beginOfHost.match(url);
    const QString scheme = begin.hasMatch() ? begin.captured(1) : QStringLiteral("http");
    const QString place =
        url.sliced(std::max<qsizetype>(0, begin.capturedEnd())).section(endOfHost, 0, 0);
    const QString host = place.section(u'@', -1);
    const QRegularExpressionMatch named = port.match(host);
    const int number = named.captured(1).toInt();
    return QStringLiteral("%1://%2:%3")
        .arg(scheme, named.hasMatch() ? host.first(named.capturedStart()) : host)
        .arg(number > 0 ? number : usualPort(scheme));
}

} // namespace

bool isRtsp(const QString &url)
{
    return hasScheme(url, QLatin1String("rtsp://")) || hasScheme(url, QLatin1String("rtsps://"));
}

QString expandTemplate(const QString &url)
{
    const qsizetype open = url.indexOf(u'<');
    const qsizetype close = url.indexOf(u'>', open + 1);
    if (open < 0 || close < 0) {
        return url;
    }
    const QString alternatives = url.sliced(open + 1, close - open - 1);
    return url.first(open) + alternatives.section(u':', -1) + url.sliced(close + 1);
}

HttpRequest requestFor(const QString &url, std::chrono::milliseconds limit)
{
    const bool http10 = isJpg(url) && url.contains(u'/') && !isRtsp(url);
    return {http10 ? http10Url(url) : percentEncoded(url),
            http10 ? HttpForm::Http10 : HttpForm::AsWritten, limit};
}

bool isSameServer(const QString &one, const QString &other)
{
    return serverOf(one) == serverOf(other);
}

HttpRequest liveRequestFor(const QString &url, std::chrono::milliseconds limit)
{
    constexpr QLatin1String kHttp("http://");
    if (isRtsp(url) || (!isJpg(url) && hasScheme(url, QLatin1String("https://")))) {
        return {percentEncoded(url), HttpForm::AsWritten, limit};
    }
    const bool foreignCase = !isJpg(url) && hasScheme(url, kHttp);
    const QString address = withoutSchemes(foreignCase ? url.sliced(kHttp.size()) : url);
    return {http10Url(withPath(address)), HttpForm::Http10, limit};
}

} // namespace velmora
