// The scenes themselves, one file each. All draw on 640 x 480 pixels without an outline; what lies
// below y = 444 is hidden by the label strip.
#pragma once

class QPainter;

namespace velmora::demo {

// seconds: since the epoch; all moving parts are placed by it.
void drawStreet(QPainter &painter, double seconds);
void drawHarbour(QPainter &painter, double seconds);
void drawGarden(QPainter &painter, double seconds);
void drawSky(QPainter &painter, double seconds);
void drawParkingLot(QPainter &painter, double seconds);
void drawMountain(QPainter &painter, double seconds);
void drawViaduct(QPainter &painter, double seconds);
void drawWindFarm(QPainter &painter, double seconds);

} // namespace velmora::demo
