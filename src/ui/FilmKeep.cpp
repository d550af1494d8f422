#include "ui/FilmKeep.h"

#include "base/DateText.h"
#include "base/ImagesText.h"
#include "pictures/PictureReader.h"
#include "ui/BoxEdit.h"
#include "ui/FileBox.h"
#include "ui/LentFocus.h"
#include "ui/PictureView.h"
#include "ui/ToFront.h"
#include "ui/WheelFocus.h"
#include "ui/WindowKeys.h"
#include "ui_FilmKeep.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QScopedValueRollback>

#include <array>
#include <utility>

namespace velmora {
namespace {

constexpr int kPreviewSeconds = 3;
constexpr int kMsInSecond = 1000;
constexpr std::array kSizes{QSize(640, 360), QSize(1280, 720), QSize(1920, 1080)};

} // namespace

FilmKeep::FilmKeep(FilmMaker &maker, Slideshow &film)
    : maker_(maker)
    , film_(film)
    , ui_(std::make_unique<Ui::FilmKeep>())
{
    ui_->setupUi(this);
    turnBoxesOnlyWithFocus(*this);
    ui_->filmPreview->setShape(PictureView::Shape::Kept);
    previewTimer_.setParent(this);
    previewTimer_.setObjectName(QStringLiteral("filmPreviewTimer"));
    fillChoices();
    bindRange();
    bindFilm();
    bindButtons();
    setBusy(false);
}

// A focused box reports the end of its edit as the window is destroyed: while all of it still
// exists.
FilmKeep::~FilmKeep()
{
    hide();
}

void FilmKeep::fillChoices()
{
    ui_->filmSize->addItem(tr("As the first image"), QSize());
    for (const QSize size : kSizes) {
        ui_->filmSize->addItem(QStringLiteral("%1 × %2").arg(size.width()).arg(size.height()),
                               size);
    }
    for (const FilmForm kind : kFilmForms) {
        ui_->filmForm->addItem(filmFormText(kind), static_cast<int>(kind));
    }
}

void FilmKeep::bindRange()
{
    for (BoxEdit *const box : {ui_->filmFrom, ui_->filmTo}) {
        connect(box, &BoxEdit::textChanged, this, &FilmKeep::showForecast);
        connect(box, &BoxEdit::left, this, &FilmKeep::takeTyped);
        connect(box, &BoxEdit::enterPressed, this, &FilmKeep::takeTyped);
    }
    for (QSpinBox *const box :
         {ui_->filmHoursFrom, ui_->filmHoursTo, ui_->filmThinningNumber, ui_->filmRate}) {
        connect(box, &QSpinBox::valueChanged, this, &FilmKeep::showForecast);
    }
    for (QComboBox *const box : {ui_->filmThinning, ui_->filmSize, ui_->filmForm}) {
        connect(box, &QComboBox::currentIndexChanged, this, &FilmKeep::showForecast);
    }
}

void FilmKeep::bindFilm()
{
    connect(&film_, &Slideshow::begun, this, &FilmKeep::keepRange);
    connect(&film_, &Slideshow::changed, this, &FilmKeep::takeFilmRange);
    connect(&film_, &Slideshow::closed, this, &FilmKeep::leaveFilm);
    connect(&maker_, &FilmMaker::imagesChanged, this, &FilmKeep::followImages);
    connect(&maker_, &FilmMaker::advanced, this, &FilmKeep::showProgress);
    connect(&maker_, &FilmMaker::ended, this, &FilmKeep::showEnd);
    connect(&previewTimer_, &QTimer::timeout, this, &FilmKeep::showNextPicture);
    closeOnEscape(*this);
}

void FilmKeep::bindButtons()
{
    connect(ui_->filmMake, &QAbstractButton::clicked, this, &FilmKeep::chooseTarget);
    connect(ui_->filmCopy, &QAbstractButton::clicked, this, &FilmKeep::chooseFolder);
    connect(ui_->filmCancel, &QAbstractButton::clicked, &maker_, &FilmMaker::cancel);
    connect(ui_->filmOpen, &QAbstractButton::clicked, this,
            [this] { Q_EMIT openWanted(maker_.result()); });
    connect(ui_->filmShowFolder, &QAbstractButton::clicked, this, [this] {
        const QFileInfo made(maker_.result());
        Q_EMIT openWanted(made.isDir() ? made.filePath() : made.path());
    });
}

FilmWish FilmKeep::wish() const
{
    FilmWish wish;
    wish.from = ui_->filmFrom->text();
    wish.to = ui_->filmTo->text();
    wish.hours = {ui_->filmHoursFrom->value(), ui_->filmHoursTo->value()};
    wish.thinning =
        static_cast<FilmThinning>(ui_->filmThinning->currentIndex()); // listed in its order
    wish.thinningNumber = ui_->filmThinningNumber->value();
    wish.size = ui_->filmSize->currentData().toSize();
    wish.picturesPerSecond = ui_->filmRate->value();
    wish.isStamped = ui_->filmStamp->isChecked();
    wish.form = static_cast<FilmForm>(ui_->filmForm->currentData().toInt());
    return wish;
}

void FilmKeep::showRange(const FilmWish &wish, RangeOf whose)
{
    rangeOf_ = whose;
    settled_ = wish;
    const bool hasOtherBegin = ui_->filmFrom->text() != wish.from;
    ui_->filmFrom->setText(wish.from);
    ui_->filmTo->setText(wish.to);
    if (hasOtherBegin) { // else it would not get beyond it while images are stored
        restartPreview();
    }
}

// Text in a box that was not left yet, whichever window is active.
bool FilmKeep::isTyping() const
{
    return (ui_->filmFrom->isInHand() && ui_->filmFrom->text() != settled_.from) ||
           (ui_->filmTo->isInHand() && ui_->filmTo->text() != settled_.to);
}

void FilmKeep::takeTyped()
{
    if (ui_->filmFrom->text() != settled_.from || ui_->filmTo->text() != settled_.to) {
        rangeOf_ = RangeOf::TheUser;
    }
    restartPreview();
    play(wish());
}

// The boxes keep the words in which the range was given.
void FilmKeep::play(const FilmWish &wish)
{
    const QScopedValueRollback setting(isSettingFilm_, true);
    settled_ = wish;
    maker_.play(wish);
}

// A film that is restarted, for which a stored image is enough, begins with the range given here.
void FilmKeep::keepRange()
{
    if (isVisible() && rangeOf_ == RangeOf::TheUser && maker_.isOfShownCamera()) {
        play(settled_);
        seenRange_ = film_.face().range;
    }
}

// The film's sliders were moved, or it has begun.
void FilmKeep::takeFilmRange()
{
    const PlayRange range = film_.face().range;
    if (isVisible() && film_.isOfList() && range != seenRange_ && !maker_.isBusy() && !isAsking() &&
        maker_.isOfShownCamera()) {
        seenRange_ = range;
        if (!isTyping() && !isSettingFilm_) {
            showRange(maker_.usualWish(), RangeOf::TheFilm);
        }
    }
}

// A film that played all images leaves them all as the range, as if there had been none.
void FilmKeep::leaveFilm()
{
    const FilmWish all = maker_.usualWish();
    if (rangeOf_ == RangeOf::TheFilm && settled_.from == all.from && settled_.to == all.to) {
        rangeOf_ = RangeOf::AllImages;
    }
}

// Without a film, all images are the range until one is given.
void FilmKeep::showAll()
{
    showRange(maker_.usualWish(), film_.isOfList() ? RangeOf::TheFilm : RangeOf::AllImages);
}

void FilmKeep::followImages()
{
    const bool isFree = isVisible() && !maker_.isBusy() && !isAsking() && !isTyping();
    if (isFree && rangeOf_ == RangeOf::TheUser) {
        play(settled_);
    } else if (isFree && (rangeOf_ == RangeOf::AllImages || film_.isOfList())) {
        showAll();
    }
    showForecast();
}

// What was agreed has stayed until a target was chosen, and while the film was made.
void FilmKeep::catchUp()
{
    takeFilmRange();
    followImages();
}

bool FilmKeep::isAsking() const
{
    return findChild<QFileDialog *>() != nullptr;
}

void FilmKeep::takeDays(const DayRange &days)
{
    if (isVisible() && !maker_.isBusy() && maker_.isOfShownCamera()) {
        showDays(days);
    }
}

void FilmKeep::showDays(const DayRange &days)
{
    FilmWish wished = wish();
    wished.from = isoDayText(std::chrono::local_days{days.first});
    wished.to = isoDayText(std::chrono::local_days{days.last});
    showRange(wished, RangeOf::TheUser);
    play(wished);
}

void FilmKeep::present(const std::optional<DayRange> &days)
{
    if (!maker_.isBusy() && !isAsking()) {
        begin(days);
    }
    bringToFront(*this);
}

void FilmKeep::begin(const std::optional<DayRange> &days)
{
    const bool isTyped = ui_->filmFrom->isModified() || ui_->filmTo->isModified();
    const bool keepsRange = isVisible() && isTyped && maker_.isOfShownCamera();
    maker_.take();
    seenRange_ = film_.face().range;
    setWindowTitle(tr("Keep as a film: %1").arg(maker_.camera()));
    if (!std::exchange(isEndNews_, false)) {
        maker_.forgetResult();
        ui_->filmTimeLeft->clear();
        ui_->filmProgress->reset();
    }
    setBusy(false);
    if (!keepsRange && days) {
        showDays(*days);
    } else if (!keepsRange) {
        showAll();
    }
    showForecast();
}

QString FilmKeep::forecastText(const FilmForecast &found) const
{
    if (!maker_.hasImages()) {
        return tr("There are no images.");
    }
    return found.isRangeGood
               ? tr("%1, %2 seconds, about %3")
                     .arg(imagesText(found.images))
                     .arg(found.seconds, 0, 'f', 1)
                     .arg(QLocale().formattedDataSize(found.bytes))
               : tr("From and to are days or times, as 2006-03-07 or 2006-03-07 14:30.");
}

void FilmKeep::showForecast()
{
    const FilmForecast found = maker_.forecast(wish());
    ui_->filmThinningNumber->setEnabled(ui_->filmThinning->currentIndex() > 0);
    ui_->filmForecast->setText(forecastText(found));
    if (!maker_.isBusy()) {
        ui_->filmMake->setEnabled(found.images > 0);
        ui_->filmCopy->setEnabled(found.images > 0);
    }
}

// Nothing wakes the program for a window that is closed.
void FilmKeep::showEvent(QShowEvent *event)
{
    previewTimer_.start();
    QWidget::showEvent(event);
}

void FilmKeep::hideEvent(QHideEvent *event)
{
    previewTimer_.stop();
    QWidget::hideEvent(event);
}

void FilmKeep::restartPreview()
{
    previewAt_ = 0;
    showNextPicture();
}

// Plays the first seconds over and over while nothing is being made.
void FilmKeep::showNextPicture()
{
    if (!isVisible() || maker_.isBusy()) {
        return;
    }
    previewTimer_.setInterval(kMsInSecond / ui_->filmRate->value());
    QString path = maker_.picture(wish(), previewAt_);
    if (path.isEmpty() || previewAt_ >= qsizetype{kPreviewSeconds} * ui_->filmRate->value()) {
        previewAt_ = 0;
        path = maker_.picture(wish(), 0);
    }
    ++previewAt_;
    if (path.isEmpty()) {
        ui_->filmPreview->clear();
    } else if (path != ui_->filmPreview->path()) {
        ui_->filmPreview->showPicture(
            path, readPicture(path, {ui_->filmPreview->pixels(), Fit::AtLeast}));
    }
}

void FilmKeep::chooseTarget()
{
    auto *const box = newFileBox(*this, tr("Make a film"));
    box->setAcceptMode(QFileDialog::AcceptSave);
    const QString extension = filmExtension(wish().form);
    box->setDefaultSuffix(extension);
    box->setNameFilter(QStringLiteral("*.") + extension);
    connect(box, &QFileDialog::fileSelected, this, [this](const QString &path) {
        setBusy(true);
        maker_.makeFilm(wish(), path);
    });
    ask(*box);
}

void FilmKeep::chooseFolder()
{
    auto *const box = newFileBox(*this, tr("Copy the images to"));
    box->setFileMode(QFileDialog::Directory);
    connect(box, &QFileDialog::fileSelected, this, [this](const QString &path) {
        setBusy(true);
        maker_.copyImages(wish(), path);
    });
    ask(*box);
}

// Queued, since a box ends before it tells what was chosen.
void FilmKeep::ask(QFileDialog &box) const
{
    connect(&box, &QDialog::finished, this, &FilmKeep::catchUp, Qt::QueuedConnection);
    box.open();
}

void FilmKeep::setBusy(bool busy)
{
    for (QWidget *const button : {ui_->filmMake, ui_->filmCopy, ui_->filmCancel}) {
        if (busy == (button == ui_->filmCancel)) {
            button->setEnabled(true);
        } else {
            disableButton(*button, *ui_->filmProgress);
        }
    }
    ui_->filmOpen->setEnabled(!busy && !maker_.result().isEmpty());
    ui_->filmShowFolder->setEnabled(ui_->filmOpen->isEnabled());
}

void FilmKeep::showProgress()
{
    constexpr int kThousand = 1000; // a bar counts no further than an int
    ui_->filmProgress->setRange(0, kThousand);
    ui_->filmProgress->setValue(
        static_cast<int>(maker_.done() * kThousand / std::max<qint64>(1, maker_.all())));
    const auto left = maker_.timeLeftMs();
    ui_->filmTimeLeft->setText(left ? tr("%1 of %2 images, %3 s left")
                                          .arg(maker_.done())
                                          .arg(maker_.all())
                                          .arg(*left / kMsInSecond + 1)
                                    : tr("%1 of %2 images").arg(maker_.done()).arg(maker_.all()));
}

void FilmKeep::showEnd(const QString &text)
{
    isEndNews_ = !isVisible();
    setBusy(false);
    catchUp();
    ui_->filmTimeLeft->setText(text);
    returnFocus(*ui_->filmProgress, ui_->filmOpen->isEnabled() ? *ui_->filmOpen : *ui_->filmMake);
}

} // namespace velmora
