#include "ui/LiveBox.h"

#include "pictures/PictureReader.h"

namespace velmora {

LiveBox::LiveBox(const LiveControls &controls, LiveView &live, QWidget &window)
    : QObject(&window)
    , controls_(controls)
    , live_(live)
{
    connect(&live_, &LiveView::captionsChanged, this, &LiveBox::showCaptions);
    connect(&live_, &LiveView::statusCleared, &controls_.lTmp, &QLabel::clear);
    connect(&live_, &LiveView::targetChanged, this,
            [this](const QString &path) { load(controls_.iTarget, path); });
    connect(&live_, &LiveView::webChanged, this, &LiveBox::showLive);
    connect(&controls_.iTarget, &PictureView::resized, this, [this] { reload(controls_.iTarget); });
    connect(&controls_.iWeb, &PictureView::resized, this, [this] {
        if (live_.isLivePictureThere()) {
            reload(controls_.iWeb);
        }
    });
    connect(&live_, &LiveView::zoomWanted, this, &LiveBox::zoomWanted);
    connect(&controls_.iWeb, &PictureView::clicked, &live_, &LiveView::iWeb_Click);
    showCaptions();
}

void LiveBox::load(PictureView &view, const QString &path)
{
    if (path.isEmpty()) {
        view.clear();
    } else {
        view.showPicture(path, readPicture(path, {view.pixels(), Fit::AtLeast}));
    }
}

void LiveBox::reload(PictureView &view)
{
    const QString path = view.path();
    load(view, path);
}

void LiveBox::showLive(const QString &path)
{
    load(controls_.iWeb, path);
    if (!path.isEmpty() && !controls_.iWeb.holdsPicture()) {
        live_.tellUnreadable();
    }
}

void LiveBox::showCaptions()
{
    controls_.Locale.setText(live_.captions().local);
    controls_.lWeb.setText(live_.captions().web);
}

} // namespace velmora
