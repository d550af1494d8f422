#include "ui/planche.h"

#include "browser/ImageCaption.h"
#include "cameras/CameraChoices.h"
#include "cameras/ShownAddress.h"
#include "ui/SheetLayout.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui/Twips.h"
#include "ui_planche.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kEvenCells = 12; // a side of so many pixels times n gives cells of one size

// The name of a camera, or its address as people read it.
QString placeOf(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString name = cameraName(settings, camera);
    return name.isEmpty() ? shownAddress(CameraTable::url(settings, camera)) : name;
}

std::unique_ptr<Ui::planche> setUp(planche &window)
{
    auto ui = std::make_unique<Ui::planche>();
    ui->setupUi(&window);
    return ui;
}

} // namespace

planche::planche(ImageBrowser &browser, const CaptureServices &services, PictureLoader &loader)
    : browser_(browser)
    , pressed_(browser)
    , services_(services)
    , ui_(setUp(*this))
    , search_(*ui_->lDate, *ui_->lTime, browser.grid())
    , statusLine_(*ui_->txtLog)
{
    ui_->contactSheet->setControls(*ui_->controls);
    place_ = new FramePlace(*this);
    connect(place_, &FramePlace::framed, this, &planche::fitScreen);
    pictures_ = std::make_unique<SheetPictures>(*ui_->contactSheet, browser_.lists().sheet(),
                                                services_.storage, loader);
    browser_.modes().timer().setParent(this);
    bindLists();
    bindCells();
    bindModes();
    bindSearch();
    bindButtons();
    bindKeys();
    showFace();
    showCamera();
    resize(sizeHint());
    ui_->LstDir->setFocus();
}

planche::~planche()
{
    browser_.modes().timer().setParent(nullptr);
}

void planche::bindLists()
{
    BrowserLists &lists = browser_.lists();
    ui_->LstDir->setModel(&lists.files());
    ui_->LstDirCam->setModel(&lists.cameraRows());
    connect(ui_->lstGroupe, &ChoiceList::chosen, &browser_, &ImageBrowser::chooseGroup);
    connect(ui_->lstCam, &ChoiceList::chosen, &browser_, &ImageBrowser::chooseCamera);
    connect(ui_->lstCam, &ChoiceList::keyUsed, &browser_, &ImageBrowser::chooseCameraAgain);
    connect(ui_->LstDir, &FileView::chosen, &browser_, &ImageBrowser::chooseFile);
    connect(ui_->LstDir, &FileView::rowPressed, this, [this](int row) { pressed_.pressFile(row); });
    connect(ui_->LstDir, &FileView::rowReleased, this, [this] { pressed_.releaseFile(); });
    connect(ui_->LstDirCam, &FileView::chosen, &browser_, &ImageBrowser::chooseCameraRow);
    connect(ui_->LstDirCam, &FileView::rowPressed, this,
            [this](int row) { pressed_.pressCameraRow(row); });
    connect(ui_->LstDirCam, &FileView::rowReleased, this, [this] { pressed_.releaseCameraRow(); });
    connect(ui_->LstDir, &FileView::keyUsed, this, &planche::useKey);
    connect(ui_->LstDirCam, &FileView::keyUsed, this, &planche::useKey);
    connect(ui_->LstDir, &FileView::opened, &browser_.grid(), &GridActions::LstDir_DblClick);
    connect(&lists.files(), &FileList::selectionChanged, ui_->LstDir, &FileView::showRow);
    connect(&lists.files(), &QAbstractItemModel::modelReset, this, &planche::showCamera);
    connect(&lists, &BrowserLists::changed, this, &planche::showFace);
    connect(&services_.page, &CameraPage::addressStored, this, &planche::showCamera);
    connect(&services_.page.remarks(), &CameraRemarks::changed, this, &planche::showRemarks);
    connect(&lists, &BrowserLists::filesWanted, this, [this] {
        for (FileView *const list : {ui_->LstDir, ui_->LstDirCam}) {
            if (list->isVisible()) {
                list->setFocus();
            }
        }
    });
    connect(&lists, &BrowserLists::camerasWanted, ui_->lstCam, qOverload<>(&QWidget::setFocus));
}

void planche::bindCells()
{
    for (int cell = 0; cell < kCells; ++cell) {
        PictureView *const view = &ui_->contactSheet->cell(cell);
        connect(view, &PictureView::pressed, this,
                [this, cell](auto button, auto modifiers) { pressCell(cell, button, modifiers); });
        connect(view, &PictureView::released, &browser_.grid(), &GridActions::releaseCell);
        connect(view, &PictureView::clicked, this, [this] { pressed_.releaseCell(); });
        connect(view, &PictureView::doubleClicked, this,
                [this, cell] { browser_.doubleClickCell(cell); });
        connect(view, &PictureView::pointerMoved, this,
                [this, cell](QPoint position) { showPointer(cell, position); });
    }
    connect(&ui_->contactSheet->zoom(), &PictureView::clicked, &browser_.grid(),
            &GridActions::ZoomImage_Click);
    connect(&browser_.lists().sheet(), &Sheet::imageChanged, this, &planche::showCaptions);
    connect(&browser_.lists().sheet(), &Sheet::zoomChanged, this, &planche::showCaptions);
    connect(&browser_.grid(), &GridActions::copyWanted, this, &planche::copyWanted);
    connect(&browser_.grid(), &GridActions::openWanted, this, &planche::openWanted);
}

void planche::bindModes()
{
    const auto bind = [this](QCheckBox *box, Mode mode) {
        connect(box, &QCheckBox::toggled, this,
                [this, mode](bool on) { browser_.setMode(mode, on); });
        connect(box, &QCheckBox::pressed, this, [this, mode] {
            if (mode != Mode::Auto) {
                browser_.lists().sheet().hideZoom();
            }
        });
    };
    bind(ui_->cAuto, Mode::Auto);
    bind(ui_->cCamera, Mode::Camera);
    bind(ui_->cScan, Mode::Scan);
    connect(&browser_.modes(), &BrowserModes::changed, this, &planche::showFace);
}

void planche::bindSearch()
{
    connect(&browser_.modes(), &BrowserModes::searchTextsChanged, &search_, &SearchBoxes::setTexts);
    connect(&search_, &SearchBoxes::searched, this, &planche::showSearch);
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
    holdSize(*ui_->ctrT, QStringLiteral("00"));
    holdSize(*ui_->NbCapt, QStringLiteral("000000"));
    holdSize(*ui_->Capt, QStringLiteral("0:0"));
    connect(&services_.status, &CaptureStatus::changed, this,
            [this](Caption caption, const QString &text) {
                if (caption == Caption::NextCycle) {
                    ui_->ctrT->setText(text);
                } else if (caption == Caption::Standstill) {
                    statusLine_.halt(text);
                }
            });
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
    bind(Qt::Key_Escape, [this] { browser_.grid().ZoomImage_Click(); });
}

// What the parts below say, brought to the controls.
void planche::showFace()
{
    const BrowserState &state = browser_.lists().state();
    const bool groupView = state.view == View::Group;
    const QSignalBlocker noAuto(ui_->cAuto);
    const QSignalBlocker noCamera(ui_->cCamera);
    const QSignalBlocker noScan(ui_->cScan);
    ui_->cAuto->setChecked(browser_.modes().isOn(Mode::Auto));
    ui_->cCamera->setChecked(browser_.modes().isOn(Mode::Camera));
    ui_->cScan->setChecked(browser_.modes().isOn(Mode::Scan));
    ui_->lstGroupe->showRow(browser_.choice().group);
    ui_->lstCam->showRow(browser_.choice().row);
    showViewsList();
    ui_->LstDirCam->showRow(browser_.lists().cameraIndex());
    search_.setEnabled(!groupView);
    ui_->NbI->setText(browser_.lists().NbI());
    ui_->bFilm->setEnabled(browser_.lists().isFilmEnabled());
    if (state.camera != shownCamera_) {
        showCamera();
    } else {
        showCaptions(); // the view may be the other one
    }
    showMarks();
}

// The keyboard stays with the list, whichever of the two it is.
void planche::showViewsList()
{
    const bool groupView = browser_.lists().state().view == View::Group;
    FileView *const list = groupView ? ui_->LstDirCam : ui_->LstDir;
    FileView *const other = groupView ? ui_->LstDir : ui_->LstDirCam;
    const bool hadFocus = focusWidget() == other;
    list->show();
    if (hadFocus) {
        list->setFocus();
    }
    other->hide();
}

void planche::showCamera()
{
    shownCamera_ = browser_.lists().state().camera;
    const SettingsSnapshot settings = services_.table.settings().snapshot();
    const QString camera = shownCamera(settings, shownCamera_);
    showNames(settings);
    Q_EMIT cameraShown(shownCamera_);
    ui_->lCamera->setText(camera.isEmpty() ? tr("no camera") : camera);
    setPlainToolTip(*ui_->lCamera, camera);
    showRemarks();
}

// Why the camera on show gives no picture stands in the line at the foot and in the cell in which
// its next picture would be.
void planche::showRemarks()
{
    const SettingsSnapshot settings = services_.table.settings().snapshot();
    const QString remark = services_.page.remarks().of(shownCamera_);
    statusLine_.keep(remark.isEmpty()
                         ? QString()
                         : tr("Camera %1: %2").arg(cameraTitle(settings, shownCamera_), remark));
    showCaptions();
}

// In camera view one cell has a word on the camera, the first that is empty.
QString planche::remarkIn(int cell) const
{
    const BrowserState &state = browser_.lists().state();
    const Sheet &sheet = browser_.lists().sheet();
    if (state.view == View::Group) {
        return services_.page.remarks().of({state.camera.group, cell});
    }
    const bool isFirst = cell == 0 || !sheet.image(cell - 1).isNone();
    return isFirst && sheet.image(cell).isNone() ? services_.page.remarks().of(state.camera)
                                                 : QString();
}

QString planche::captionOf(int cell) const
{
    const QString caption = imageCaption(browser_.lists().sheet().image(cell).name);
    if (browser_.lists().state().view == View::Camera || caption.isEmpty()) {
        return caption;
    }
    const QString remark = remarkIn(cell);
    const QString &name = names_.at(static_cast<std::size_t>(cell));
    const QString numbered = QStringLiteral("%1 · %2").arg(cell).arg(
        name.isEmpty() ? caption : name + QStringLiteral(" · ") + caption);
    return remark.isEmpty() ? numbered : QStringLiteral("%1 · %2").arg(numbered, remark);
}

void planche::showNames(const SettingsSnapshot &settings)
{
    for (int row = 0; row < kRows; ++row) {
        const CameraAddress camera{shownCamera_.group, row};
        names_.at(static_cast<std::size_t>(row)) = cameraName(settings, camera);
        ui_->lstCam->describe(row, shownCamera(settings, camera), cameraName(settings, camera));
    }
}

void planche::rename()
{
    showCamera();
    showCaptions();
}

void planche::showCaptions()
{
    for (int cell = 0; cell < kCells; ++cell) {
        ui_->contactSheet->cell(cell).setCaption(captionOf(cell));
        ui_->contactSheet->cell(cell).setEmptyText(remarkIn(cell));
    }
    ui_->contactSheet->zoom().setCaption(imageCaption(browser_.lists().sheet().zoomed().name));
}

void planche::pressCell(int cell, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    pressed_.pressCell(cell);
    search_.leave();
    if (button == Qt::LeftButton && ui_->contactSheet->cell(cell).holdsPicture()) {
        pressed_.frameCell();
    } else if (button == Qt::RightButton && modifiers == Qt::NoModifier) {
        pressed_.zoomCell();
    }
}

void planche::showPointer(int cell, QPoint position)
{
    const BrowserState &state = browser_.lists().state();
    if (state.DirCamEnCours) {
        return;
    }
    ui_->MousePos->setText(QStringLiteral("%1:%2").arg(position.x()).arg(position.y()));
    const bool groupView = state.view == View::Group;
    setPlainToolTip(
        ui_->contactSheet->cell(cell),
        groupView ? shownCamera(services_.table.settings().snapshot(), {state.camera.group, cell})
                  : QString());
}

// Only a message of an earlier search gives way to none.
void planche::showSearch(const QString &message)
{
    const bool isTold = !searchMessage_.isEmpty() && ui_->txtLog->text() == searchMessage_;
    searchMessage_ = message;
    if (isTold || !message.isEmpty()) {
        showMessage(message);
    }
}

void planche::useKey(ListKey key)
{
    switch (key) {
    case ListKey::Delete:
        askToKill();
        break;
    case ListKey::Zoom:
        browser_.grid().toggleZoom();
        break;
    case ListKey::Play:
        Q_EMIT playWanted();
        break;
    }
}

void planche::askToKill()
{
    const auto question = browser_.lists().state().view == View::Camera
                              ? browser_.files().LstDir_KeyDown()
                              : browser_.files().LstDirCam_KeyDown();
    if (!question) {
        statusLine_.halt(services_.status.text(Caption::Standstill));
        return;
    }
    auto *const box = new QMessageBox(QMessageBox::Critical, QStringLiteral("Del "), question->text,
                                      QMessageBox::Yes | QMessageBox::No, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(
        tr("Camera %1: %2")
            .arg(cameraText(question->camera),
                 placeOf(services_.table.settings().snapshot(), question->camera)));
    box->setDefaultButton(QMessageBox::No);
    connect(box, &QMessageBox::finished, this, [this, target = question->target](int answer) {
        if (answer == QMessageBox::Yes) {
            browser_.kill(target);
        }
    });
    box->open();
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

// A screen too low for the sheet gets a smaller one, in its proportions.
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
    writePlace(services_.table.settings(), kBrowserPlace,
               {twips(place_->corner().y()), twips(place_->corner().x())});
    services_.log.trace(QStringLiteral("Planche Form_Unload"));
    browser_.unload();
    hide();
}

void planche::showStored(CameraAddress camera)
{
    ++stored_;
    ui_->NbCapt->setText(QString::number(stored_));
    ui_->Capt->setText(cameraText(camera));
    statusLine_.tellEvent(tr("Image stored"));
}

void planche::showFailed(CameraAddress camera, const QString &reason)
{
    const SettingsSnapshot settings = services_.table.settings().snapshot();
    statusLine_.tellEvent(tr("Camera %1: %2").arg(cameraTitle(settings, camera), reason));
}

void planche::showRoom(const QString &text)
{
    ui_->bHealth->setToolTip(text.isEmpty() ? tr("Which cameras deliver (Ctrl+H)")
                                            : tr("Which cameras deliver (Ctrl+H); %1").arg(text));
}

void planche::showLate(const std::vector<CameraAddress> &late)
{
    late_ = late;
    showMarks();
}

// Red where something is late; the lists' texts stay.
void planche::showMarks()
{
    const auto mark = [](QListWidgetItem &item, bool isLate) {
        item.setForeground(isLate ? QBrush(Qt::red) : QBrush());
        item.setToolTip(isLate ? tr("late: nothing new came for long") : QString());
    };
    const int shown = browser_.choice().group;
    for (int i = 0; i < kRows; ++i) {
        const auto isOf = [i](CameraAddress camera) { return camera.group == i; };
        mark(*ui_->lstGroupe->item(i), std::ranges::any_of(late_, isOf));
        mark(*ui_->lstCam->item(i),
             std::ranges::find(late_, CameraAddress{shown, i}) != late_.end());
    }
}

void planche::showMessage(const QString &text)
{
    statusLine_.tell(text);
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
