// A picture that acts when it is clicked, with the mouse or the keyboard.
#pragma once

#include "ui/PictureView.h"

namespace velmora {

class ClickPicture : public PictureView
{
    Q_OBJECT

public:
    explicit ClickPicture(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace velmora
