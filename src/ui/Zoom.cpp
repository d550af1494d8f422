// The enlarging window: one picture, as large as fits.
#include "ui/Zoom.h"

#include "pictures/PictureReader.h"
#include "ui/ToFront.h"
#include "ui/WindowKeys.h"

#include <QFileInfo>
#include <QScreen>
#include <QVBoxLayout>

namespace velmora {
namespace {

constexpr QSize kStartSize{960, 720};
constexpr double kShareOfScreen = 0.85; // of a small screen, with room for a frame

} // namespace

Zoom::Zoom()
    : iZoom(new PictureView(this))
{
    setObjectName(QStringLiteral("Zoom"));
    iZoom->setObjectName(QStringLiteral("iZoom"));
    iZoom->setAccessibleName(tr("Enlarged picture"));
    iZoom->setToolTip(tr("Click to close"));
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(iZoom);
    resize(kStartSize.boundedTo(screen()->availableSize() * kShareOfScreen));
    connect(iZoom, &PictureView::clicked, this, &QWidget::close);
    connect(iZoom, &PictureView::resized, this, &Zoom::reload);
    closeOnEscape(*this);
}

void Zoom::present(const QString &path)
{
    if (path.isEmpty()) {
        return;
    }
    path_ = path;
    stamp_ = fileStamp(path);
    setWindowTitle(QFileInfo(path).fileName());
    bringToFront(*this);
    load(); // the picture has its place and size only now
}

// Another file may have taken that name, as that of each live picture does.
void Zoom::reload()
{
    if (!path_.isEmpty() && fileStamp(path_) == stamp_) {
        load();
    }
}

void Zoom::load()
{
    iZoom->showPicture(path_, readPicture(path_, {iZoom->pixels(), Fit::AtLeast}));
}

} // namespace velmora
