// The image browser's window: what its parts report, brought to its controls.
#include "ui/planche.h"

#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "ui/KillBox.h"
#include "ui/SheetLayout.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui/Twips.h"
#include "ui/WindowKeys.h"
#include "ui_planche.h"

#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kEvenCells = 12; // a side of this many pixels times n gives cells of equal size
constexpr int kFlatFrame = 3;  // pixels beyond the letters of a button at the foot

std::unique_ptr<Ui::planche> setUp(planche &window)
{
    auto ui = std::make_unique<Ui::planche>();
    ui->setupUi(&window);
    return ui;
}

} // namespace

planche::planche(const Uses &uses)
    : uses_(uses)
    , pressed_(uses.browser)
    , ui_(setUp(*this))
    , lists_({*ui_->lstGroupe, *ui_->lstCam, *ui_->LstDir, *ui_->LstDirCam}, uses.browser, pressed_)
    , search_(*ui_->lDate, *ui_->lTime, uses.browser)
    , mouse_(*ui_->contactSheet, *ui_->MousePos, uses.browser, pressed_, uses.table)
    , captions_(*ui_->contactSheet, uses.browser.shown(), uses.view.page().remarks())
    , status_({*ui_->ctrT, *ui_->NbCapt, *ui_->Capt, *ui_->txtLog}, uses.view.status())
{
    ui_->contactSheet->setControls(*ui_->controls);
    place_ = new FramePlace(*this);
    connect(place_, &FramePlace::framed, this, &planche::fitScreen);
    pictures_ = std::make_unique<SheetPictures>(*ui_->contactSheet, uses_.browser.shown().sheet,
                                                uses_.storage, uses.loader);
    uses_.browser.scanTimer().setParent(this);
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
    uses_.browser.scanTimer().setParent(nullptr);
}

void planche::bindShown()
{
    connect(&uses_.browser, &ImageBrowser::changed, this, &planche::showFace);
    connect(&uses_.browser.fileRows(), &QAbstractItemModel::modelReset, this, &planche::showCamera);
    connect(&uses_.browser.shown().sheet, &Sheet::imageChanged, this, [this] { captions_.show(); });
    connect(&uses_.browser.shown().sheet, &Sheet::zoomChanged, this, [this] { captions_.show(); });
    connect(&uses_.browser, &ImageBrowser::copyWanted, this, &planche::copyWanted);
    connect(&uses_.browser, &ImageBrowser::imageSpared, this, &planche::showSpared);
    connect(&uses_.browser, &ImageBrowser::openWanted, this, &planche::openWanted);
    connect(&uses_.view.page(), &CameraPage::addressStored, this, &planche::showCamera);
    connect(&uses_.view.page(), &CameraPage::addressStored, &uses_.browser,
            &ImageBrowser::followAddress);
    connect(&uses_.view.page().remarks(), &CameraRemarks::changed, this, &planche::showRemarks);
    connect(&lists_, &BrowserListBoxes::keyUsed, this, &planche::useKey);
}

void planche::bindModes()
{
    const auto bind = [this](QCheckBox *box, Mode mode) {
        connect(box, &QCheckBox::toggled, this,
                [this, mode](bool on) { uses_.browser.setMode(mode, on); });
        connect(box, &QCheckBox::pressed, this, [this, mode] {
            if (mode != Mode::Auto) {
                uses_.browser.hideZoom();
            }
        });
    };
    bind(ui_->cAuto, Mode::Auto);
    bind(ui_->cCamera, Mode::Camera);
    bind(ui_->cScan, Mode::Scan);
    connect(&uses_.browser, &ImageBrowser::searchTextsChanged, &search_, &SearchBoxes::setTexts);
    connect(&mouse_, &CellMouse::cellPressed, &search_, &SearchBoxes::leave);
    connect(&search_, &SearchBoxes::searched, &status_, &BrowserStatus::showSearch);
}

void planche::bindButtons()
{
    for (QToolButton *const flat : {ui_->bKeep, ui_->bCalendar, ui_->bHealth}) {
        const int needed = flat->fontMetrics().height() + kFlatFrame;
        flat->setMaximumHeight(std::max(flat->maximumHeight(), needed));
    }
    connect(ui_->bFilm, &QAbstractButton::pressed, &uses_.browser, &ImageBrowser::toggleFilm);
    connect(ui_->CmdAlarm, &QAbstractButton::clicked, this, &planche::alarmWanted);
    connect(ui_->bKeep, &QAbstractButton::clicked, this, &planche::keepWanted);
    connect(ui_->bCalendar, &QAbstractButton::clicked, this, &planche::calendarWanted);
    connect(ui_->bHealth, &QAbstractButton::clicked, this, &planche::healthWanted);
    connect(ui_->cSetUp, &QAbstractButton::pressed, this, &planche::setUpPressed);
    connect(ui_->cSetUp, &QAbstractButton::released, this, &planche::setUpReleased);
    connect(ui_->Mini, &QAbstractButton::clicked, this, &QWidget::showMinimized);
    connect(ui_->Quitter, &QAbstractButton::clicked, this, &QWidget::close);
    connect(ui_->ctrT, &ClickLabel::clicked, &uses_.browser, &ImageBrowser::ctrT_Click);
}

void planche::bindKeys()
{
    const auto bind = [this](const QKeySequence &keys, auto action) {
        connect(&addKeys(*this, keys), &QShortcut::activated, this, action);
    };
    bind(Qt::Key_F5, [this] {
        pictures_->refresh();
        uses_.browser.refresh();
    });
    bind(Qt::Key_Escape, [this] { uses_.browser.hideZoom(); });
}

// Passes what the parts below report to the controls.
void planche::showFace()
{
    const BrowserFace face = uses_.browser.face();
    const QSignalBlocker noAuto(ui_->cAuto);
    const QSignalBlocker noCamera(ui_->cCamera);
    const QSignalBlocker noScan(ui_->cScan);
    ui_->cAuto->setChecked(face.cAuto);
    ui_->cCamera->setChecked(face.cCamera);
    ui_->cScan->setChecked(face.cScan);
    lists_.show(face);
    search_.setEnabled(face.view == View::Camera && !face.cCamera);
    ui_->NbI->setText(face.NbI);
    ui_->bFilm->setEnabled(face.isFilmEnabled);
    if (cameraOnShow() != shownCamera_) {
        showCamera();
    } else {
        captions_.show(); // the view may have changed
    }
}

// While folders are left alone, the images of the camera chosen before stay on show.
CameraAddress planche::cameraOnShow() const
{
    const BrowserData &shown = uses_.browser.shown();
    const bool hasImages = shown.state.view() == View::Camera && shown.files.count() > 0;
    return hasImages ? shown.files.camera() : shown.state.camera();
}

void planche::showCamera()
{
    shownCamera_ = cameraOnShow();
    const SettingsSnapshot settings = uses_.table.settings().snapshot();
    const QString camera = shownCamera(settings, shownCamera_);
    captions_.takeNames(settings);
    lists_.showNames(settings);
    Q_EMIT cameraShown(uses_.browser.shown().files.camera());
    ui_->lCamera->setText(camera.isEmpty() ? tr("no camera") : camera);
    setPlainToolTip(*ui_->lCamera, camera);
    showRemarks();
}

// The reason why the camera on show gives no picture is shown in the line at the foot and in the
// cell where its next picture would be.
void planche::showRemarks()
{
    const SettingsSnapshot settings = uses_.table.settings().snapshot();
    const QString remark = uses_.view.page().remarks().of(shownCamera_);
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
    const FileList &files = uses_.browser.shown().files;
    const std::error_code error = files.names().readError();
    return error && files.camera() == shownCamera_ ? unreadFolderText(error) : QString();
}

void planche::useKey(ListKey key)
{
    switch (key) {
    case ListKey::Delete:
        askToKill();
        break;
    case ListKey::Zoom:
        uses_.browser.toggleZoom();
        break;
    case ListKey::Play:
        Q_EMIT playWanted();
        break;
    }
}

void planche::askToKill()
{
    if (const std::optional<KillQuestion> question = uses_.browser.killQuestion()) {
        velmora::askToKill(*this, uses_.browser, *question, uses_.table.settings().snapshot());
    } else {
        status_.showStandstill();
    }
}

// The question was asked over this window alone: the storage folder can be changed meanwhile.
void planche::showSpared(const ImageFile &image)
{
    status_.showMessage(
        uses_.storage.isBeingEdited()
            ? tr("%1 was not deleted: the storage folder is being changed").arg(image.name)
            : tr("%1 was not deleted: the storage folder has changed").arg(image.name));
}

void planche::moveTo(WindowPlace place)
{
    place_->moveTo({pixels(place.left), pixels(place.top)});
}

void planche::load()
{
    if (!loaded_) {
        loaded_ = true;
        uses_.browser.load();
    }
}

void planche::appear()
{
    load();
    show();
}

void planche::present()
{
    load();
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
    writePlace(uses_.table.settings(), kBrowserPlace,
               {twips(place_->corner().y()), twips(place_->corner().x())});
    uses_.log.trace(QStringLiteral("Planche Form_Unload"));
    uses_.browser.unload();
    hide();
}

void planche::showStored(CameraAddress camera)
{
    status_.showStored(camera);
}

void planche::showFailed(CameraAddress camera, const QString &reason)
{
    const SettingsSnapshot settings = uses_.table.settings().snapshot();
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
    status_.showNotice(text);
}

void planche::showMessage(const QString &text)
{
    status_.showMessage(text);
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
