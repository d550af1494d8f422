#include "demo/Scene.h"

#include "demo/scenes/Scenes.h"

#include <QFont>
#include <QPainter>

#include <array>

namespace velmora::demo {
namespace {

constexpr QSize kSize(640, 480);
constexpr QRect kStrip(0, 444, 640, 36);
constexpr int kStripMargin = 14;
constexpr int kTextPixels = 18;

struct Scene
{
    QStringView name;
    void (*draw)(QPainter &painter, double seconds) = nullptr;
};

constexpr std::array<Scene, kSceneCount> kScenes = {{
    {.name = u"Street", .draw = &drawStreet},
    {.name = u"Harbour", .draw = &drawHarbour},
    {.name = u"Garden", .draw = &drawGarden},
    {.name = u"Sky", .draw = &drawSky},
    {.name = u"Parking lot", .draw = &drawParkingLot},
    {.name = u"Mountain", .draw = &drawMountain},
    {.name = u"Viaduct", .draw = &drawViaduct},
    {.name = u"Wind farm", .draw = &drawWindFarm},
}};

const Scene &sceneOf(int camera)
{
    return kScenes.at(static_cast<std::size_t>(camera));
}

void drawStrip(QPainter &painter, int camera, const QDateTime &time)
{
    QFont font(QStringLiteral("Sans Serif"));
    font.setPixelSize(kTextPixels);
    font.setBold(true);
    const QRect text = kStrip.adjusted(kStripMargin, 0, -kStripMargin, 0);
    const QString name = QStringLiteral("Camera %1 \u00b7 %2").arg(camera).arg(sceneName(camera));
    const QString moment = time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    painter.fillRect(kStrip, QColor(0x18, 0x20, 0x2c, 0xdc));
    painter.setFont(font);
    painter.setPen(QColor(0xffffff));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, name);
    painter.drawText(text, Qt::AlignRight | Qt::AlignVCenter, moment);
}

} // namespace

QImage drawScene(int camera, const QDateTime &time)
{
    QImage image(kSize, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.save();
    sceneOf(camera).draw(painter, static_cast<double>(time.toSecsSinceEpoch()));
    painter.restore();
    drawStrip(painter, camera, time);
    return image;
}

QString sceneName(int camera)
{
    return sceneOf(camera).name.toString();
}

} // namespace velmora::demo
