// The main window: storage folder, options and camera table bound to their owners.
#include "ui/Interface.h"

#include "ui/AddressPaste.h"
#include "ui/LateColour.h"
#include "ui/LiveBox.h"
#include "ui/NoOpener.h"
#include "ui/ReasonLine.h"
#include "ui/ScreenRoom.h"
#include "ui/ShownSwitch.h"
#include "ui/StorageBox.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui_Interface.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSignalBlocker>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kStartWidth = 980;
constexpr int kMoreLetters = 30; // of an address, beyond those that are seen in the smallest window

// With some fonts, an empty label is lower than one with a text.
void holdLine(QLabel &label)
{
    label.setText(QStringLiteral("0"));
    label.setMinimumHeight(label.sizeHint().height());
    label.clear();
}

} // namespace

Interface::Interface(const Uses &uses)
    : uses_(uses)
    , ui_(std::make_unique<Ui::Interface>())
{
    ui_->setupUi(this);
    ui_->lVersion->setText(QStringLiteral("Vers. ") + QCoreApplication::applicationVersion());
    uses_.timer.setObjectName(QStringLiteral("Timer"));
    uses_.timer.setParent(this);
    makeTabs();
    makeRows();
    bindStorage();
    bindOptions();
    bindPage();
    bindLive(uses_.view.liveView());
    bindStatus();
    ui_->Selecteur->setFocus(); // with the focus in the storage box, nothing would be captured
    const int roomy = minimumSizeHint().width() + kMoreLetters * fontMetrics().averageCharWidth();
    resizeOnScreen(*this, {std::max(kStartWidth, roomy), sizeHint().height()});
}

Interface::~Interface()
{
    uses_.timer.setParent(nullptr);
}

void Interface::makeTabs()
{
    for (int group = 0; group < kGroups; ++group) {
        ui_->Selecteur->addTab(QString::number(group));
        ui_->Selecteur->setTabToolTip(group, tr("Cameras of group %1").arg(group));
    }
    ui_->Selecteur->setExpanding(false);
    ui_->Selecteur->setDrawBase(false);
}

void Interface::makeRows()
{
    QWidget *last = ui_->RAZ;
    for (int row = 0; row < kRows; ++row) {
        rows_.at(static_cast<std::size_t>(row)) =
            new CameraRowBoxes(row, *ui_->rows, uses_.view.page());
        last = rows_.at(static_cast<std::size_t>(row))->orderTabs(*last);
    }
    paste_ = new AddressPaste(rows_, uses_.view.page(), uses_.table, *this);
    connect(paste_, &AddressPaste::filled, ui_->Selecteur, qOverload<>(&QWidget::setFocus));
    for (CameraRowBoxes *const row : rows_) {
        bindRow(*row);
    }
    setTabOrder(last, ui_->BoutonLien);
    setTabOrder(ui_->BoutonLien, ui_->Cache);
}

// Windows that store addresses too begin with what is typed here.
void Interface::bindRow(CameraRowBoxes &row)
{
    connect(&row, &CameraRowBoxes::folderClicked, this, &Interface::openFolder);
    connect(&row, &CameraRowBoxes::linesPasted, paste_, &AddressPaste::offer);
    connect(&row, &CameraRowBoxes::sheetWanted, this, [this](int wanted) {
        endAddress();
        Q_EMIT sheetWanted({uses_.view.page().group(), wanted});
    });
    connect(&row, &CameraRowBoxes::listWanted, this, [this] {
        endAddress();
        Q_EMIT listWanted();
    });
}

void Interface::followLinks(mOuvreLien &links)
{
    ui_->BoutonLien->follow(links);
    ui_->BoutonLien->describe(tr("Read how to use this program"));
}

void Interface::bindStorage()
{
    storageBox_ = new StorageBox({*ui_->LampSA, *ui_->StRep, *ui_->Browse, *ui_->MakeDir,
                                  *ui_->Import, *ui_->Cache, *ui_->Selecteur},
                                 uses_.storage, *this);
    connect(&uses_.storage, &StorageFolder::checked, this, &Interface::showStorageHint);
    connect(&uses_.storage, &StorageFolder::told, this, &Interface::showMessage);
    connect(ui_->Cache, &QAbstractButton::clicked, this, &Interface::Cache_Click);
    connect(ui_->Import, &QAbstractButton::clicked, this, &Interface::Import_Click);
}

// The line at the foot says what to do, unless it shows something else.
void Interface::showStorageHint(const StorageState &state)
{
    if (state.check == StorageCheck::Missing) {
        tell(Message::StorageHint,
             tr("The storage folder does not exist. Type another, or press \"Create folder\"."));
    } else if (message_ == Message::StorageHint) {
        showMessage({});
    }
}

void Interface::bindOptions()
{
    CaptureOptions &options = uses_.options;
    const auto show = [](QLineEdit *box, const QString &text) {
        if (box->text() != text) {
            const QSignalBlocker blocker(box);
            box->setText(text);
        }
    };
    show(ui_->tempo, options.tempo());
    show(ui_->TIO, options.timeout());
    connect(&options, &CaptureOptions::tempoChanged, this,
            [this, show](auto &text) { show(ui_->tempo, text); });
    connect(&options, &CaptureOptions::timeoutChanged, this,
            [this, show](auto &text) { show(ui_->TIO, text); });
    bindEdit(*ui_->tempo, &CaptureOptions::beginTempoEdit, &CaptureOptions::endTempoEdit);
    bindEdit(*ui_->TIO, &CaptureOptions::beginTimeoutEdit, &CaptureOptions::endTimeoutEdit);
    connect(ui_->tempo, &QLineEdit::textChanged, &options, &CaptureOptions::setTempo);
    connect(ui_->TIO, &QLineEdit::textChanged, &options, &CaptureOptions::setTimeout);
    connect(ui_->cDebug, &QCheckBox::toggled, this, [this](bool on) { uses_.debugSwitch.set(on); });
    connect(ui_->cmdDebug, &QAbstractButton::pressed, this, &Interface::cmdDebug_MouseDown);
}

// Enter ends the edit, just like leaving the box.
void Interface::bindEdit(BoxEdit &box, void (CaptureOptions::*begin)(),
                         void (CaptureOptions::*end)())
{
    connect(&box, &BoxEdit::entered, &uses_.options, begin);
    connect(&box, &BoxEdit::left, &uses_.options, end);
    connect(&box, &BoxEdit::enterPressed, &box, &BoxEdit::leave);
}

void Interface::bindPage()
{
    connect(ui_->Selecteur, &QTabBar::currentChanged, this, &Interface::selectGroup);
    connect(ui_->Selecteur, &GroupTabs::currentClicked, this, &Interface::selectGroup);
    connect(ui_->ActLst, &QCheckBox::pressed, this,
            [this] { pressedGroup_ = uses_.view.page().group(); });
    connect(ui_->ActLst, &QCheckBox::toggled, this, &Interface::switchGroup);
    connect(ui_->ActLst, &QCheckBox::released, this, [this] { pressedGroup_.reset(); });
    for (const QCheckBox *const box : {ui_->ActLst, ui_->cDebug}) {
        connect(box, &QCheckBox::released, this, &Interface::showSwitches);
    }
    connect(ui_->RAZ, &QAbstractButton::pressed, this,
            [this] { resetGroup_ = uses_.view.page().group(); });
    connect(ui_->RAZ, &QAbstractButton::clicked, this, &Interface::resetGroup);
    connect(&uses_.view.page(), &CameraPage::pageLoaded, this, &Interface::showPage);
    connect(&uses_.view.page(), &CameraPage::pageReread, this, &Interface::refreshPage);
    connect(&uses_.view.page(), &CameraPage::rowReread, this,
            [this](int row) { rows_.at(static_cast<std::size_t>(row))->refreshRow(); });
    connect(&uses_.view.page(), &CameraPage::rowChanged, this,
            [this](int row) { rows_.at(static_cast<std::size_t>(row))->showCounters(); });
    showPage();
}

void Interface::bindLive(LiveView &live)
{
    for (QLabel *const label : {ui_->Locale, ui_->lWeb, static_cast<QLabel *>(ui_->lReason)}) {
        holdLine(*label);
    }
    auto *const box =
        new LiveBox({*ui_->Locale, *ui_->iTarget, *ui_->lWeb, *ui_->iWeb, *ui_->lTmp}, live, *this);
    ui_->iTarget->setEmptyText(tr("stored image"));
    ui_->iWeb->setEmptyText(tr("live picture"));
    connect(ui_->iTarget, &PictureView::clicked, this, [this] {
        const CameraPage &page = uses_.view.page();
        uses_.view.liveView().iTarget_Click({page.group(), page.currentRow()});
    });
    new ReasonLine(*ui_->lReason, rows_, uses_.view.page(), live);
    connect(box, &LiveBox::zoomWanted, this, &Interface::zoomWanted);
    connect(&uses_.view.page(), &CameraPage::liveViewWanted, &live, &LiveView::Affiche);
}

void Interface::fillAddress(CameraAddress camera, const QString &address)
{
    if (camera.group == uses_.view.page().group()) {
        rows_.at(static_cast<std::size_t>(camera.row))->fill(address);
    } else {
        uses_.view.page().storeElsewhere(camera, address);
    }
}

void Interface::holdButtons()
{
    storageBox_->holdButtons();
}

void Interface::releaseButtons()
{
    storageBox_->releaseButtons();
}

void Interface::showWork(const QString &text)
{
    ui_->lTmp->setText(text);
}

void Interface::bindStatus()
{
    holdSize(*ui_->lErr, QStringLiteral("Load 0:0"));
    holdSize(*ui_->lHeure, QStringLiteral("00:00:00"));
    holdSize(*ui_->lCompte, QStringLiteral("00"));
    connect(&uses_.view.status(), &CaptureStatus::changed, this, &Interface::showCaption);
}

// The tab stays; changes made by another program are shown.
void Interface::refreshPage()
{
    showSwitches();
    for (CameraRowBoxes *const row : rows_) {
        row->refreshRow();
    }
}

void Interface::showSwitches()
{
    showSwitch(*ui_->ActLst, uses_.view.page().isGroupActive());
    showSwitch(*ui_->cDebug, uses_.debugSwitch.isOn());
}

// A tab may be selected between press and release.
void Interface::switchGroup(bool on)
{
    const int group = uses_.view.page().group();
    if (pressedGroup_.value_or(group) == group) {
        uses_.view.page().setGroupActive(on);
    }
}

void Interface::resetGroup()
{
    if (resetGroup_ == uses_.view.page().group()) {
        uses_.view.page().RAZ();
    }
}

void Interface::showPage()
{
    const QSignalBlocker noSelecteur(ui_->Selecteur);
    ui_->Selecteur->setCurrentIndex(uses_.view.page().group());
    showSwitches();
    for (CameraRowBoxes *const row : rows_) {
        row->showRow();
    }
    showMarks();
}

void Interface::showCaption(Caption caption, const QString &text)
{
    switch (caption) {
    case Caption::Step:
        ui_->lErr->setText(text);
        break;
    case Caption::Activity:
        ui_->lTest->setText(text);
        break;
    case Caption::LastStore:
        ui_->lHeure->setText(text);
        break;
    case Caption::Countdown:
        ui_->lCompte->setText(text);
        break;
    case Caption::NextCycle: // shown by the browser
        break;
    case Caption::Standstill:
        showStandstill(text);
        break;
    case Caption::Trouble:
        showTrouble(text);
        break;
    }
}

// The storage folder's own lamp and hint already say so.
void Interface::showStandstill(const QString &text)
{
    setPlainToolTip(*ui_->lErr, text);
    if (!text.isEmpty() && uses_.storage.isUsable()) {
        tell(Message::Standstill, text);
    } else if (message_ == Message::Standstill) {
        showMessage({});
    }
}

// A standstill outlasts any trouble.
void Interface::showTrouble(const QString &text)
{
    if (!text.isEmpty()) {
        showMessage(text);
    } else if (message_ == Message::Other) {
        showMessage({});
        showStandstill(uses_.view.status().text(Caption::Standstill));
    }
}

void Interface::showLate(const std::vector<CameraAddress> &late)
{
    late_ = late;
    showMarks();
}

void Interface::showMarks()
{
    for (int group = 0; group < kGroups; ++group) {
        const auto isOf = [group](CameraAddress camera) { return camera.group == group; };
        const bool isLate = std::ranges::any_of(late_, isOf);
        ui_->Selecteur->setTabTextColor(group, isLate ? lateColour(palette()) : QColor());
    }
    for (int row = 0; row < kRows; ++row) {
        const CameraAddress camera{uses_.view.page().group(), row};
        rows_.at(static_cast<std::size_t>(row))
            ->showLate(std::ranges::find(late_, camera) != late_.end());
    }
}

void Interface::showMessage(const QString &text)
{
    tell(Message::Other, text);
}

void Interface::tell(Message kind, const QString &text)
{
    message_ = kind;
    ui_->lMessage->setText(text);
    setPlainToolTip(*ui_->lMessage, text);
}

void Interface::endAddress()
{
    for (CameraRowBoxes *const row : rows_) {
        row->leave();
    }
}

// Loading the rows would otherwise discard what is being typed into one of them.
void Interface::leaveAddress()
{
    if (std::ranges::any_of(rows_, &CameraRowBoxes::isAddressInHand)) {
        endAddress();
        ui_->Selecteur->setFocus();
    }
}

void Interface::selectGroup(int group)
{
    leaveAddress();
    uses_.view.page().Selecteur_Click(group,
                                      isVisible() ? WindowState::Visible : WindowState::Hidden);
}

void Interface::bringUp()
{
    bringToFront(*this);
    selectGroup(ui_->Selecteur->currentIndex());
}

void Interface::Cache_Click()
{
    uses_.log.trace(QStringLiteral("Interface Cache_Click"));
    if (uses_.storage.lastCheck() == StorageCheck::Missing) {
        Q_EMIT endWanted();
        return;
    }
    ui_->Selecteur->setFocus(); // leaves a box that is being edited
    storageBox_->leave();
    hide();
    Q_EMIT hiddenByUser();
}

void Interface::Import_Click()
{
    uses_.log.trace(QStringLiteral("Interface Import_Click"));
    Q_EMIT importWanted();
}

void Interface::cmdDebug_MouseDown()
{
    const bool wantsSettings = QGuiApplication::keyboardModifiers().testFlags(Qt::ShiftModifier) &&
                               QGuiApplication::keyboardModifiers().testFlags(Qt::ControlModifier);
    if (wantsSettings) {
        openIfThere(uses_.table.settings().path(), tr("There is no settings file yet"));
    } else {
        openIfThere(uses_.log.path(),
                    tr("There is no log file yet: tick \"Debug\" and it is written"));
    }
}

void Interface::openIfThere(const QString &path, const QString &otherwise)
{
    if (QFileInfo::exists(path)) {
        open(path);
    } else {
        showMessage(otherwise);
    }
}

void Interface::openFolder(int row)
{
    const QString why = uses_.view.page().whyNothingToOpen(row);
    if (why.isEmpty()) {
        open(uses_.view.page().folderToOpen(row));
    } else {
        showMessage(why);
    }
}

void Interface::open(const QString &path)
{
    if (uses_.opener.open(path) == OpenOutcome::NoOpener) {
        showMessage(noOpenerText(path));
    }
}

void Interface::closeEvent(QCloseEvent *event)
{
    endAddress();
    event->setAccepted(mayClose_);
    if (mayClose_) {
        storageBox_->setAside();
    } else {
        Q_EMIT endWanted();
    }
}

} // namespace velmora
