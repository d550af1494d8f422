// The import's window: its lists, its boxes and the progress of a run.
#include "ui/frmImport.h"

#include "ui/ClickLabel.h"
#include "ui/LentFocus.h"
#include "ui/ScreenRoom.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui/WheelFocus.h"
#include "ui/WindowKeys.h"
#include "ui_frmImport.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QMessageBox>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

constexpr QSize kStartSize{940, 620};
constexpr int kChoices = 10;
constexpr int kFilterLetters = 12;
constexpr int kSourcePlace = 0;
constexpr int kTargetPlace = 1;

} // namespace

frmImport::frmImport(Import &import, PictureLoader &loader)
    : import_(import)
    , loader_(loader)
    , ui_(std::make_unique<Ui::frmImport>())
{
    ui_->setupUi(this);
    turnBoxesOnlyWithFocus(*this);
    resizeOnScreen(*this, kStartSize);
    holdSize(*ui_->NbF, QStringLiteral(" 000000"));
    holdSize(*ui_->ctr, QStringLiteral("000000"));
    ui_->Filtre->setMinimumWidth(kFilterLetters * fontMetrics().averageCharWidth());
    ui_->iSource->setEmptyText(tr("no file"));
    ui_->iTarget->setEmptyText(tr("no stored image"));
    bindSource();
    bindTarget();
    bindButtons();
    connect(&import_, &Import::changed, this, &frmImport::showFace);
    connect(&import_, &Import::messageWanted, this, &frmImport::showMessage);
    connect(&loader_, &PictureLoader::loaded, this, &frmImport::showPicture);
}

frmImport::~frmImport() = default;

void frmImport::bindSource()
{
    ui_->Dir1->setModel(&import_.folders());
    ui_->File1->setModel(&import_.files());
    connect(ui_->Drive1, &QComboBox::currentIndexChanged, &import_, &Import::chooseDrive);
    connect(ui_->Dir1, &FileView::opened, &import_, [this](int row) {
        if (row >= 0) {
            import_.openFolder(row);
        }
    });
    connect(ui_->Dir1, &FileView::keyUsed, &import_, [this](ListKey key) {
        if (key == ListKey::Zoom) {
            import_.openFolder(ui_->Dir1->currentIndex().row());
        }
    });
    connect(&import_.folders(), &QAbstractItemModel::modelReset, this,
            [this] { ui_->Dir1->showRow(import_.folders().openRow()); });
    connect(ui_->Filtre, &QLineEdit::textChanged, &import_, &Import::setFilter);
    connect(ui_->File1, &FileView::chosen, &import_, &Import::chooseFile);
    connect(ui_->File1, &FileView::rowPressed, &import_.files(), &SourceList::press);
    connect(ui_->File1, &FileView::rowReleased, &import_, [this] {
        if (const int index = import_.files().pressedIndex(); index >= 0) {
            import_.chooseFile(index);
        }
    });
    connect(&import_.files(), &SourceList::selectionChanged, ui_->File1, &FileView::showRow);
    connect(ui_->iSource, &PictureView::resized, this, &frmImport::showPictures);
    connect(ui_->iTarget, &PictureView::resized, this, &frmImport::showPictures);
}

// Choosing the same one again counts too: it can enable the button again.
void frmImport::bindTarget()
{
    for (int choice = 0; choice < kChoices; ++choice) {
        ui_->Cam->addItem(QString::number(choice));
        ui_->Lien->addItem(QString::number(choice));
    }
    connect(ui_->Cam, &QComboBox::currentIndexChanged, &import_, &Import::chooseGroup);
    connect(ui_->Cam, &QComboBox::activated, &import_, &Import::chooseGroup);
    connect(ui_->Lien, &QComboBox::currentIndexChanged, &import_, &Import::chooseCamera);
    connect(ui_->Lien, &QComboBox::activated, &import_, &Import::chooseCamera);
}

void frmImport::bindButtons()
{
    connect(ui_->cmdGo, &QAbstractButton::pressed, &import_, &Import::press);
    connect(ui_->cmdGo, &QAbstractButton::clicked, &import_, &Import::go);
    connect(ui_->cmdQuit, &QAbstractButton::clicked, this, [this] {
        import_.traceQuit();
        close();
    });
    closeOnEscape(*this);
}

void frmImport::present()
{
    if (!std::exchange(loaded_, true)) {
        import_.load();
    }
    bringToFront(*this);
}

void frmImport::showFace()
{
    const ImportFace &face = import_.face();
    showChoices(face);
    showRun(face);
    showPictures();
}

void frmImport::showChoices(const ImportFace &face)
{
    const QSignalBlocker noDrive(ui_->Drive1);
    const QSignalBlocker noFilter(ui_->Filtre);
    const QSignalBlocker noGroup(ui_->Cam);
    const QSignalBlocker noCamera(ui_->Lien);
    if (std::exchange(drives_, face.drives) != face.drives) {
        showDrives();
    }
    ui_->Drive1->setCurrentIndex(face.drive);
    if (ui_->Filtre->text() != face.Filtre) {
        ui_->Filtre->setText(face.Filtre);
    }
    ui_->Cam->setCurrentIndex(face.Cam);
    ui_->Lien->setCurrentIndex(face.Lien);
    ui_->nRep->setText(face.nRep);
    setPlainToolTip(*ui_->nRep, face.nRep);
    ui_->NbF->setText(face.NbF);
    ui_->ctr->setText(face.ctr);
}

// A mount point may be too long for the box.
void frmImport::showDrives()
{
    ui_->Drive1->clear();
    for (const QString &drive : drives_) {
        ui_->Drive1->addItem(drive);
        ui_->Drive1->setItemData(ui_->Drive1->count() - 1, plainTip(drive), Qt::ToolTipRole);
    }
}

// A run keeps the choices with which it started; they can be changed after it.
void frmImport::showRun(const ImportFace &face)
{
    for (QWidget *const control : std::initializer_list<QWidget *>{
             ui_->Drive1, ui_->Dir1, ui_->Filtre, ui_->Cam, ui_->Lien}) {
        control->setEnabled(!face.running);
    }
    enableGo(face);
    setPlainToolTip(*ui_->cmdGo, face.cmdGo ? tr("Copy files") : face.whyNot);
    showStatus(face);
    ui_->Progress->setRange(0, std::max(1, face.progress.files));
    ui_->Progress->setValue(face.progress.copied);
}

void frmImport::enableGo(const ImportFace &face)
{
    if (face.running) {
        disableButton(*ui_->cmdGo, *ui_->Progress);
        return;
    }
    ui_->cmdGo->setEnabled(face.cmdGo);
    returnFocus(*ui_->Progress, *ui_->cmdGo);
}

// While files are copied, the bar is the status.
void frmImport::showStatus(const ImportFace &face)
{
    const QString why = face.running            ? QString()
                        : face.whyNot.isEmpty() ? face.unread
                                                : face.whyNot;
    const QString failure =
        face.failure.isEmpty() ? QString() : tr("Copy aborted: %1").arg(face.failure);
    ui_->lStatus->setText(failure.isEmpty() ? why : failure);
    setPlainToolTip(*ui_->lStatus, ui_->lStatus->text());
}

PictureView &frmImport::view(int place) const
{
    return place == kSourcePlace ? *ui_->iSource : *ui_->iTarget;
}

QList<PictureOrder> frmImport::wantedPictures() const
{
    const ImportFace &face = import_.face();
    QList<PictureOrder> wanted;
    for (const auto &[place, path] :
         {std::pair(kSourcePlace, face.iSource), std::pair(kTargetPlace, face.iTarget)}) {
        if (!path.isEmpty()) {
            wanted.append({place, path, {view(place).pixels(), Fit::AtLeast}});
        }
    }
    return wanted;
}

void frmImport::showPictures()
{
    const QList<PictureOrder> wanted = wantedPictures();
    const int looks = import_.face().looks;
    if ((wanted == pictures_ && looks == looks_) || !loaded_) {
        return;
    }
    pictures_ = wanted;
    looks_ = looks;
    for (const int place : {kSourcePlace, kTargetPlace}) {
        if (std::ranges::count(wanted, place, &PictureOrder::place) == 0) {
            view(place).clear();
        }
    }
    loader_.load(wanted);
}

void frmImport::showPicture(const PictureOrder &order, const QImage &image)
{
    if (pictures_.contains(order)) {
        view(order.place).showPicture(order.path, image);
    }
}

void frmImport::showMessage(const QString &text)
{
    auto *const box = new QMessageBox(QMessageBox::Information, QCoreApplication::applicationName(),
                                      text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}

void frmImport::closeEvent(QCloseEvent *event)
{
    if (std::exchange(loaded_, false)) {
        import_.close();
        pictures_.clear();
        ui_->iSource->clear();
        ui_->iTarget->clear();
    }
    event->accept();
}

} // namespace velmora
