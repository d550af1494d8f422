// The image browser's window: what its parts report, brought to its controls.
#include "ui/planche.h"

#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "ui/KillBox.h"
#include "ui/SheetLayout.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui/Twips.h"
#include "ui_planche.h"

#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kEvenCells = 12; // a side of this many pixels times n gives cells of equal size

std::unique_ptr<Ui::planche> setUp(planche &window)
{
    auto ui = std::make_unique<Ui::planche>();
    ui->setupUi(&window);
    return ui;
}

} // namespace

planche::planche(ImageBrowser &browser, CaptureEngine &engine, CaptureView &view,
                 PictureLoader &loader)
    : browser_(browser)
    , pressed_(browser)
    , engine_(engine)
    , view_(view)
    , ui_(setUp(*this))
    , lists_({*ui_->lstGroupe, *ui_->lstCam, *ui_->LstDir, *ui_->LstDirCam}, browser, pressed_)
    , search_(*ui_->lDate, *ui_->lTime, browser)
    , mouse_(*ui_->contactSheet, *ui_->MousePos, browser, pressed_, engine_.table())
    , captions_(*ui_->contactSheet, browser.shown(), view_.page().remarks())
    , status_({*ui_->ctrT, *ui_->NbCapt, *ui_->Capt, *ui_->txtLog}, view_.status())
{
    ui_->contactSheet->setControls(*ui_->controls);
    place_ = new FramePlace(*this);
    connect(place_, &FramePlace::framed, this, &planche::fitScreen);
    pictures_ = std::make_unique<SheetPictures>(*ui_->contactSheet, browser_.shown().sheet,
                                                engine_.storage(), loader);
    browser_.scanTimer().setParent(this);
    bindShown();
    bindModes();
    bindButtons();
    bindKeys();
    showFace();
    showCamera();
    resize(sizeHint());
    ui_->LstDir->setFocus();
}

planche::~planche()
{
    browser_.scanTimer().setParent(nullptr);
}

void planche::bindShown()
{
    connect(&browser_, &ImageBrowser::changed, this, &planche::showFace);
    connect(&browser_.fileRows(), &QAbstractItemModel::modelReset, this, &planche::showCamera);
    connect(&browser_.shown().sheet, &Sheet::imageChanged, this, [this] { captions_.show(); });
    connect(&browser_.shown().sheet, &Sheet::zoomChanged, this, [this] { captions_.show(); });
    connect(&browser_, &ImageBrowser::copyWanted, this, &planche::copyWanted);
    connect(&browser_, &ImageBrowser::imageSpared, this, &planche::tellSpared);
    connect(&browser_, &ImageBrowser::openWanted, this, &planche::openWanted);
    connect(&view_.page(), &CameraPage::addressStored, this, &planche::showCamera);
    connect(&view_.page(), &CameraPage::addressStored, &browser_, &ImageBrowser::followAddress);
    connect(&view_.page().remarks(), &CameraRemarks::changed, this, &planche::showRemarks);
    connect(&lists_, &BrowserListBoxes::keyUsed, this, &planche::useKey);
}

void planche::bindModes()
{
    const auto bind = [this](QCheckBox *box, Mode mode) {
        connect(box, &QCheckBox::toggled, this,
                [this, mode](bool on) { browser_.setMode(mode, on); });
        connect(box, &QCheckBox::pressed, this, [this, mode] {
            if (mode != Mode::Auto) {
                browser_.hideZoom();
            }
        });
    };
    bind(ui_->cAuto, Mode::Auto);
    bind(ui_->cCamera, Mode::Camera);
    bind(ui_->cScan, Mode::Scan);
    connect(&browser_, &ImageBrowser::searchTextsChanged, &search_, &SearchBoxes::setTexts);
    connect(&mouse_, &CellMouse::cellPressed, &search_, &SearchBoxes::leave);
    connect(&search_, &SearchBoxes::searched, &status_, &BrowserStatus::tellSearch);
}

void planche::bindButtons()
{
    connect(ui_->bFilm, &QAbstractButton::pressed, &browser_, &ImageBrowser::toggleFilm);
    connect(ui_->CmdAlarm, &QAbstractButton::clicked, this, &planche::alarmWanted);
    connect(ui_->bKeep, &QAbstractButton::clicked, this, &planche::keepWanted);
    connect(ui_->bCalendar, &QAbstractButton::clicked, this, &planche::calendarWanted);
    connect(ui_->bHealth, &QAbstractButton::clicked, this, &planche::healthWanted);
    connect(ui_->cSetUp, &QAbstractButton::pressed, this, &planche::setUpPressed);
    connect(ui_->cSetUp, &QAbstractButton::released, this, &planche::setUpReleased);
    connect(ui_->Mini, &QAbstractButton::clicked, this, &QWidget::showMinimized);
    connect(ui_->Quitter, &QAbstractButton::clicked, this, &QWidget::close);
    connect(ui_->ctrT, &ClickLabel::clicked, &browser_, &ImageBrowser::ctrT_Click);
}

void planche::bindKeys()
{
    const auto bind = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    bind(Qt::Key_F5, [this] {
        pictures_->refresh();
        browser_.refresh();
    });
    bind(Qt::Key_Escape, [this] { browser_.hideZoom(); });
}

// Passes what the parts below report to the controls.
void planche::showFace()
{
    const BrowserFace face = browser_.face();
    const QSignalBlocker noAuto(ui_->cAuto);
    const QSignalBlocker noCamera(ui_->cCamera);
    const QSignalBlocker noScan(ui_->cScan);
    ui_->cAuto->setChecked(face.cAuto);
    ui_->cCamera->setChecked(face.cCamera);
    ui_->cScan->setChecked(face.cScan);
    lists_.show(face);
    search_.setEnabled(face.view == View::Camera);
    ui_->NbI->setText(face.NbI);
    ui_->bFilm->setEnabled(face.isFilmEnabled);
    if (browser_.shown().state.camera() != shownCamera_) {
        showCamera();
    } else {
        captions_.show(); // the view may have changed
    }
}

void planche::showCamera()
{
    shownCamera_ = browser_.shown().state.camera();
    const SettingsSnapshot settings = engine_.settings().snapshot();
    const QString camera = shownCamera(settings, shownCamera_);
    captions_.takeNames(settings);
    lists_.showNames(settings);
    Q_EMIT cameraShown(browser_.shown().files.camera());
    ui_->lCamera->setText(camera.isEmpty() ? tr("no camera") : camera);
    setPlainToolTip(*ui_->lCamera, camera);
    showRemarks();
}

// The reason why the camera on show gives no picture is shown in the line at the foot and in the
// cell where its next picture would be.
void planche::showRemarks()
{
    const SettingsSnapshot settings = engine_.settings().snapshot();
    const QString remark = view_.page().remarks().of(shownCamera_);
    const QString unread = unreadFolder();
    const QString most = unread.isEmpty() ? remark : unread;
    status_.keep(most.isEmpty()
                     ? QString()
                     : tr("Camera %1: %2").arg(cameraTitle(settings, shownCamera_), most));
    captions_.show();
}

// Why the list lacks images of the camera on show; empty when it has all of them.
QString planche::unreadFolder() const
{
    const FileList &files = browser_.shown().files;
    const std::error_code error = files.names().readError();
    return error && files.camera() == shownCamera_ ? unreadFolderText(error) : QString();
}

void planche::rename()
{
    showCamera();
    captions_.show();
}

void planche::useKey(ListKey key)
{
    switch (key) {
    case ListKey::Delete:
        askToKill();
        break;
    case ListKey::Zoom:
        browser_.toggleZoom();
        break;
    case ListKey::Play:
        Q_EMIT playWanted();
        break;
    }
}

void planche::askToKill()
{
    if (const std::optional<KillQuestion> question = browser_.killQuestion()) {
        velmora::askToKill(*this, browser_, *question, engine_.settings().snapshot());
    } else {
        status_.showStandstill();
    }
}

// The question was asked over this window alone: the storage folder can be changed meanwhile.
void planche::tellSpared(const ImageFile &image)
{
    status_.tell(engine_.storage().isBeingEdited()
                     ? tr("%1 was not deleted: the storage folder is being changed").arg(image.name)
                     : tr("%1 was not deleted: the storage folder has changed").arg(image.name));
}

void planche::moveTo(WindowPlace place)
{
    place_->moveTo({pixels(place.left), pixels(place.top)});
}

void planche::present()
{
    if (!loaded_) {
        loaded_ = true;
        browser_.load();
    }
    bringToFront(*this);
}

// A screen too low for the sheet gets a smaller one, in proportion.
void planche::fitScreen(const QRect &frame)
{
    const QRect room = screen()->availableGeometry();
    const int excess = std::max({0, frame.bottom() - room.bottom(), frame.right() - room.right()});
    const QSize sheet = ui_->contactSheet->size();
    const int side = std::min(sheet.width(), sheet.height()) - excess;
    if (side < SheetLayout::kUsual.width() && !isMaximized()) {
        const int even = side / kEvenCells * kEvenCells;
        resize(size() - sheet + QSize(even, even));
    }
}

void planche::unload()
{
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    writePlace(engine_.settings(), kBrowserPlace,
               {twips(place_->corner().y()), twips(place_->corner().x())});
    engine_.log().trace(QStringLiteral("Planche Form_Unload"));
    browser_.unload();
    hide();
}

void planche::showStored(CameraAddress camera)
{
    status_.showStored(camera);
}

void planche::showFailed(CameraAddress camera, const QString &reason)
{
    const SettingsSnapshot settings = engine_.settings().snapshot();
    status_.showFailed(cameraTitle(settings, camera), reason);
}

void planche::showRoom(const QString &text)
{
    ui_->diskRoom->setText(text);
    setPlainToolTip(*ui_->diskRoom, text);
}

void planche::showLate(const std::vector<CameraAddress> &late)
{
    lists_.showLate(late);
}

void planche::showNotice(const QString &text)
{
    status_.tellNotice(text);
}

void planche::showMessage(const QString &text)
{
    status_.tell(text);
}

void planche::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayClose_);
    if (mayClose_) {
        unload();
    } else {
        Q_EMIT closeWanted();
    }
}

} // namespace velmora
