// A window of its own for one enlarged picture.
#pragma once

#include "ui/PictureView.h"

namespace velmora {

class Zoom : public QWidget
{
    Q_OBJECT

public:
    Zoom();

    /// Shows a picture in front of the other windows. path: native; if empty, there is nothing to
    /// show.
    void present(const QString &path);

private:
    void load();

    PictureView *iZoom;
    QString path_;
};

} // namespace velmora
