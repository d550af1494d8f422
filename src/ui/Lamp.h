// A round signal lamp.
#pragma once

#include "cameras/LampColour.h"

#include <QWidget>

class QPainter;

namespace velmora {

/// Paints a lamp that fills a square.
void paintLamp(QPainter &painter, const QRectF &circle, const QColor &colour);

/// Shows a BGR colour, and tells its meaning to those who cannot see it.
class Lamp : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int FillColor READ FillColor WRITE setFillColor)

public:
    explicit Lamp(QWidget *parent = nullptr);

    /// Colour of the lamp, a BGR integer, 0x00BBGGRR.
    [[nodiscard]] int FillColor() const { return bgr_; }

    void setFillColor(int bgr);

    void setColour(LampColour colour) { setFillColor(static_cast<int>(colour)); }

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int bgr_ = 0;
};

} // namespace velmora
