// One picture, enlarged, in a window of its own.
#pragma once

#include "ui/PictureView.h"

namespace velmora {

class Zoom : public QWidget
{
    Q_OBJECT

public:
    Zoom();

    /// Shows a picture in front of the other windows. path: native; an empty one is nothing to
    /// show.
    void present(const QString &path);

private:
    void load();

    PictureView *iZoom;
    QString path_;
};

} // namespace velmora
