#include "demo/Pages.h"

#include "demo/Picture.h"
#include "demo/Scene.h"

#include <QString>

namespace velmora::demo {
namespace {

constexpr int kCameraCount = 10;
constexpr int kPageLines = 60;

QString behaviour(int camera)
{
    switch (camera) {
    case 6:
        return QStringLiteral(", answers after 2 seconds");
    case 7:
        return QStringLiteral(", arrives drop by drop over 3 seconds");
    case 8:
        return QStringLiteral("missing: answers 404 with a long page");
    case 9:
        return QStringLiteral("dead: takes the connection and never answers");
    default:
        return {};
    }
}

QString listItem(int camera)
{
    const QString picture = camera < kSceneCount ? QStringLiteral("%1, new every %2 seconds")
                                                       .arg(sceneName(camera))
                                                       .arg(picturePeriod(camera).count())
                                                 : QString();
    return QStringLiteral("<li><a href=\"/camera%1.jpg\">Camera %1</a>: %2%3</li>\n")
        .arg(QString::number(camera), picture, behaviour(camera));
}

QString page(const QString &title, const QString &content)
{
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head><meta charset=\"utf-8\">"
                          "<title>%1</title></head>\n<body>\n<h1>%1</h1>\n%2</body>\n</html>\n")
        .arg(title, content);
}

} // namespace

QByteArray indexPage()
{
    QString items;
    for (int camera = 0; camera < kCameraCount; ++camera) {
        items += listItem(camera);
    }
    return page(QStringLiteral("Demonstration cameras"),
                QStringLiteral("<ul>\n%1</ul>\n").arg(items))
        .toUtf8();
}

QByteArray missingCameraPage()
{
    const QString line =
        QStringLiteral("<p>This camera has been taken down. There is no picture here.</p>\n");
    return page(QStringLiteral("Not found"), line.repeated(kPageLines)).toUtf8();
}

} // namespace velmora::demo
