#include "demo/Picture.h"

#include "demo/Scene.h"

#include <QBuffer>
#include <QImage>
#include <QLocale>

#include <array>

namespace velmora::demo {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kJpegQuality = 88;
constexpr std::array<seconds, kSceneCount> kPeriods = {seconds{5},  seconds{7},  seconds{10},
                                                       seconds{15}, seconds{20}, seconds{30},
                                                       seconds{10}, seconds{12}};

// Periods are counted from the epoch, so restarting the program does not shift them.
QDateTime beginOfPeriod(int camera, const QDateTime &now)
{
    const qint64 period = milliseconds(picturePeriod(camera)).count();
    return now.addMSecs(-(now.toMSecsSinceEpoch() % period));
}

QByteArray httpDate(const QDateTime &time)
{
    return QLocale::c()
        .toString(time.toUTC(), QStringLiteral("ddd, dd MMM yyyy HH:mm:ss 'GMT'"))
        .toLatin1();
}

QByteArray encoded(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", kJpegQuality);
    return bytes;
}

} // namespace

seconds picturePeriod(int camera)
{
    return kPeriods.at(static_cast<std::size_t>(camera));
}

Picture takePicture(int camera, const QDateTime &now)
{
    const QDateTime taken = beginOfPeriod(camera, now);
    return {.jpeg = encoded(drawScene(camera, taken)), .lastModified = httpDate(taken)};
}

} // namespace velmora::demo
