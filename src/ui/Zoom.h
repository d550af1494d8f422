// A window of its own for one enlarged picture.
#pragma once

#include "base/FileStamp.h"
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
    void reload();

    PictureView *iZoom;
    QString path_;
    std::optional<FileStamp> stamp_; // of the file on show
};

} // namespace velmora
