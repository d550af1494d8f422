// Binds the two pictures of the main window: the stored image and the live picture of the camera
// selected last.
#pragma once

#include "ui/PictureView.h"
#include "view/LiveView.h"

#include <QLabel>

namespace velmora {

struct LiveControls
{
    QLabel &Locale;
    PictureView &iTarget;
    QLabel &lWeb;
    PictureView &iWeb;
    QLabel &lTmp;
};

class LiveBox : public QObject
{
    Q_OBJECT

public:
    /// The controls outlive this object, which belongs to their window.
    LiveBox(const LiveControls &controls, LiveView &live, QWidget &window);

Q_SIGNALS:
    /// A picture was clicked. path: native.
    void zoomWanted(const QString &path);

private:
    static void load(PictureView &view, const QString &path);
    static void reload(PictureView &view);
    void showLive(const QString &path);
    void showCaptions();

    LiveControls controls_;
    LiveView &live_;
};

} // namespace velmora
