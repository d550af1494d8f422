#include "capture/PictureRemark.h"

#include "base/OneLine.h"
#include "base/PictureFormat.h"

#include <QRegularExpression>

namespace velmora {
namespace {

bool isBareHost(const QString &url)
{
    static const QRegularExpression host(QStringLiteral("^(https?://)?[^/?#]+/?$"),
                                         QRegularExpression::CaseInsensitiveOption);
    return host.match(url).hasMatch();
}

} // namespace

QString failureRemark(const QString &url, const QString &reason)
{
    return isBareHost(url) ? reason + QStringLiteral(" - an address usually names the picture "
                                                     "itself, like "
                                                     "http://192.168.1.20/snapshot.jpg")
                           : reason;
}

QString endlessPictureRemark()
{
    return QStringLiteral("the stream sends more than a picture can have");
}

QString contentRemark(const QString &url, QByteArrayView head, const QString &type)
{
    if (!pictureFormat(head).isEmpty()) {
        return {};
    }
    constexpr qsizetype kMostCharacters = 40;
    const QString kind = onOneLine(type.section(u';', 0, 0).trimmed().left(kMostCharacters));
    const QString remark = QStringLiteral("not a picture");
    return failureRemark(url,
                         kind.isEmpty() ? remark : QStringLiteral("%1 (%2)").arg(remark, kind));
}

QString webPageRemark(QByteArrayView head)
{
    constexpr qsizetype kMostTitle = 80;
    static const QRegularExpression page(QStringLiteral("^\\x{FEFF}?(\\s|<\\?[^>]*>|<!--.*?-->)*"
                                                        "<(!doctype html|html|head|body|script)"),
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression titled(QStringLiteral("<title[^>]*>(.*?)</title>"),
                                           QRegularExpression::CaseInsensitiveOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    const QString text = QString::fromUtf8(head);
    if (!page.match(text).hasMatch()) {
        return {};
    }
    const QString title = onOneLine(titled.match(text).captured(1)).simplified().left(kMostTitle);
    return title.isEmpty() ? QStringLiteral("not a picture: a web page")
                           : QStringLiteral("not a picture: a web page titled \"%1\"").arg(title);
}

QString dateRemark(const ImageDates &dates)
{
    return dates.modified ? QString()
                          : QStringLiteral("no date comes with its pictures (Last-Modified): one "
                                           "is stored, and another only once the folder is empty");
}

} // namespace velmora
