// The slideshow's window: its place, its sliders, and staying above the browser.
#include "ui/fCine.h"

#include "pictures/PictureReader.h"
#include "ui/ScreenRoom.h"
#include "ui/Twips.h"
#include "ui/WindowKeys.h"
#include "ui_fCine.h"

#include <QApplication>
#include <QCloseEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <QWindow>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kInFront = 1s;
// The types that window managers keep above the window they belong to.
constexpr Qt::WindowFlags kKind =
    Qt::Dialog | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
constexpr int kFastBelowMs = 100; // then painting must not take longer than decoding
constexpr QSize kStartSize{660, 606};
constexpr int kDayDigits = 11; // wide enough for 2006-03-07 in large letters

} // namespace

fCine::fCine(Slideshow &film, const SettingsFile &settings, const StorageFolder &storage)
    : QWidget(nullptr, kKind)
    , film_(film)
    , settings_(settings)
    , storage_(storage)
    , ui_(std::make_unique<Ui::fCine>())
    , place_(new FramePlace(*this))
{
    ui_->setupUi(this);
    resizeOnScreen(*this, kStartSize);
    film_.timer().setParent(this);
    Timer1.setParent(this);
    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setInterval(kInFront);
    bindFilm();
    bindControls();
}

fCine::~fCine()
{
    film_.timer().setParent(nullptr);
    Timer1.setParent(nullptr);
}

void fCine::bindFilm()
{
    connect(&film_, &Slideshow::opened, this, &fCine::open);
    connect(&film_, &Slideshow::changed, this, &fCine::showFace);
    connect(&film_, &Slideshow::closing, this, &fCine::storePlace);
    connect(&film_, &Slideshow::closed, this, [this] {
        Timer1.stop();
        hide();
        shown_.clear();
        ui_->iCine->clear();
    });
    connect(&Timer1, &QTimer::timeout, this, &fCine::keepAboveBrowser);
}

void fCine::bindControls()
{
    connect(ui_->PauseCine, &QAbstractButton::pressed, &film_, &Slideshow::PauseCine_MouseDown);
    connect(ui_->sDebut, &QSlider::valueChanged, &film_, &Slideshow::sDebut_Change);
    connect(ui_->sFin, &QSlider::valueChanged, &film_, &Slideshow::sFin_Change);
    connect(ui_->vitesse, &QSlider::valueChanged, &film_, &Slideshow::vitesse_Change);
    connect(ui_->bKeepFilm, &QAbstractButton::clicked, this, &fCine::keepWanted);
    connect(ui_->iCine, &PictureView::clicked, &film_, &Slideshow::iCine_Click);
    connect(ui_->iCine, &PictureView::resized, this, &fCine::showPicture);
    for (QLineEdit *const box : {ui_->tDebut, ui_->tFin}) {
        const int day = kDayDigits * box->fontMetrics().horizontalAdvance(u'0');
        box->setMaximumWidth(std::max(box->maximumWidth(), day));
        connect(box, &QLineEdit::returnPressed, this, [this, box] {
            box->setModified(false); // it is not being typed any more
            film_.find(box->text());
        });
    }
    connect(&addKeys(*this, Qt::Key_Space), &QShortcut::activated, &film_,
            &Slideshow::PauseCine_MouseDown);
    closeOnEscape(*this);
}

void fCine::moveTo(WindowPlace place)
{
    place_->moveTo({pixels(place.left), pixels(place.top)});
}

void fCine::nameCamera(const QString &camera)
{
    if (title_.isEmpty()) {
        title_ = windowTitle();
    }
    setWindowTitle(camera.isEmpty() ? title_ : title_ + QStringLiteral(" - ") + camera);
}

void fCine::open()
{
    takeStoredPlace();
    followBrowser();
    Timer1.start();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
}

// Without a stored place the window stays where it is.
void fCine::takeStoredPlace()
{
    const QPoint now = place_->corner();
    const QPoint stored(storedPixels(kSlideshowPlace.left, now.x()),
                        storedPixels(kSlideshowPlace.top, now.y()));
    if (stored != now) {
        place_->moveTo(stored);
    }
}

int fCine::storedPixels(const Int16Key &key, int now) const
{
    const std::optional<int> stored = storedTwips(settings_, key);
    return stored ? pixels(*stored) : now;
}

void fCine::storePlace()
{
    const QPoint corner = place_->corner();
    writePlace(settings_, kSlideshowPlace, {twips(corner.y()), twips(corner.x())});
}

void fCine::showFace()
{
    const FilmFace &face = film_.face();
    ui_->PauseCine->setText(face.PauseCine);
    ui_->Compte->setText(face.Compte);
    ui_->Compte0->setText(face.Compte0);
    ui_->nFich->setText(face.nFich);
    ui_->speedText->setText(tr("%1 ms").arg(face.vitesse));
    ui_->Barre->setRange(0, std::max(1, face.range.end - face.range.start + 1));
    ui_->Barre->setValue(face.progress);
    showDay(*ui_->tDebut, face.tDebut);
    showDay(*ui_->tFin, face.tFin);
    showSliders(face);
    showPicture();
}

// What is being typed stays, even while another window is active.
void fCine::showDay(QLineEdit &box, const QString &day) const
{
    if (focusWidget() != &box || !box.isModified()) {
        box.setText(day);
    }
}

void fCine::showSliders(const FilmFace &face)
{
    const QSignalBlocker noStart(ui_->sDebut);
    const QSignalBlocker noEnd(ui_->sFin);
    const QSignalBlocker noSpeed(ui_->vitesse);
    const int last = std::max(1, face.count);
    ui_->sDebut->setRange(1, last);
    ui_->sFin->setRange(1, last);
    ui_->sDebut->setEnabled(face.count > 1);
    ui_->sFin->setEnabled(face.count > 1);
    ui_->sDebut->setValue(face.range.start);
    ui_->sFin->setValue(face.range.end);
    ui_->vitesse->setValue(face.vitesse);
}

void fCine::showPicture()
{
    const QString path = nativePath(storage_, film_.face().image);
    const QSize size = ui_->iCine->pixels();
    if (path == shown_ && size == shownPixels_) {
        return;
    }
    shown_ = path;
    shownPixels_ = size;
    ui_->iCine->setScaling(film_.isRunning() && film_.face().vitesse < kFastBelowMs
                               ? PictureView::Scaling::Fast
                               : PictureView::Scaling::Smooth);
    if (path.isEmpty()) {
        ui_->iCine->clear();
    } else {
        ui_->iCine->showPicture(path, readPicture(path, {size, Fit::AtLeast}));
    }
}

void fCine::followBrowser()
{
    if (browser_ == nullptr) {
        return;
    }
    browser_->winId(); // creates it
    winId();
    windowHandle()->setTransientParent(browser_->windowHandle());
}

// A window manager does this on its own, since the film belongs to the browser. Without one
// (windows have no frames then), the film comes back over a browser that was activated, but not
// over a third window.
void fCine::keepAboveBrowser()
{
    if (!film_.isOpen() || !windowHandle()->frameMargins().isNull()) {
        return;
    }
    const QWidget *const active = QApplication::activeWindow();
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool isAlone = std::ranges::none_of(windows, [this](const QWidget *window) {
        return window->isVisible() && window != this && window != browser_;
    });
    if (isAlone && active != nullptr) {
        raise();
    }
}

void fCine::closeEvent(QCloseEvent *event)
{
    film_.close();
    event->accept();
}

} // namespace velmora
