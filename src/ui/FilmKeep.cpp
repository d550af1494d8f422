#include "ui/FilmKeep.h"

#include "pictures/PictureReader.h"
#include "ui/BoxEdit.h"
#include "ui/PictureView.h"
#include "ui/ToFront.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace velmora {
namespace {

constexpr int kPreviewSeconds = 3;
constexpr int kMsInSecond = 1000;
constexpr int kMostNumber = 100'000;
constexpr int kMostRate = 60;
constexpr int kUsualRate = 25;
constexpr QSize kPreviewSize{320, 240};

// A control with its object name and its accessible name.
template <typename Control>
Control *named(Control *control, const char *name, const QString &says)
{
    control->setObjectName(QString::fromLatin1(name));
    control->setAccessibleName(says);
    control->setToolTip(says);
    return control;
}

QSpinBox *numberBox(const char *name, const QString &says, int least, int most, int value)
{
    QSpinBox *const box = named(new QSpinBox, name, says);
    box->setRange(least, most);
    box->setValue(value);
    return box;
}

} // namespace

FilmKeep::FilmKeep(FilmMaker &maker, Slideshow &film)
    : maker_(maker)
    , film_(film)
{
    setObjectName(QStringLiteral("filmExport"));
    setWindowTitle(tr("Keep as a film"));
    auto *const form = new QFormLayout;
    makeRange(*form);
    makeChoices(*form);
    makeButtons();
    arrange(form);
    bind();
    bindButtons();
    setBusy(false);
}

// A focused box reports the end of its edit as the window is destroyed: while all of it still
// exists.
FilmKeep::~FilmKeep()
{
    hide();
}

void FilmKeep::makeRange(QFormLayout &form)
{
    from_ = named(new BoxEdit, "filmFrom", tr("First day or time, as 2006-03-07 14:30"));
    to_ = named(new BoxEdit, "filmTo", tr("Last day or time, as 2006-03-07 14:30"));
    hoursFrom_ = numberBox("filmHoursFrom", tr("First hour of the day"), 0, 23, 0);
    hoursTo_ = numberBox("filmHoursTo", tr("End hour of the day"), 0, 24, 24);
    form.addRow(tr("&From"), from_);
    form.addRow(tr("&To"), to_);
    form.addRow(tr("From &hour"), hoursFrom_);
    form.addRow(tr("To ho&ur"), hoursTo_);
}

void FilmKeep::makeChoices(QFormLayout &form)
{
    thinning_ = named(new QComboBox, "filmThinning", tr("Which of the images"));
    thinning_->addItems({tr("All images"), tr("Every n-th image"), tr("Seconds in all")});
    thinningNumber_ = numberBox("filmThinningNumber", tr("Every nth image, or length in seconds"),
                                1, kMostNumber, 30);
    size_ = named(new QComboBox, "filmSize", tr("Size of the film"));
    size_->addItem(tr("As the first image"), QSize());
    for (const QSize size : {QSize(640, 360), QSize(1280, 720), QSize(1920, 1080)}) {
        size_->addItem(QStringLiteral("%1 × %2").arg(size.width()).arg(size.height()), size);
    }
    rate_ = numberBox("filmRate", tr("Images a second"), 1, kMostRate, kUsualRate);
    form_ = named(new QComboBox, "filmForm", tr("Film format"));
    for (const FilmForm kind : kFilmForms) {
        form_->addItem(filmFormText(kind), static_cast<int>(kind));
    }
    stamp_ = named(new QCheckBox(tr("Write &date and camera into the pictures")), "filmStamp",
                   tr("Write date and camera into the pictures"));
    form.addRow(tr("&Images"), thinning_);
    form.addRow(tr("&Number"), thinningNumber_);
    form.addRow(tr("&Size"), size_);
    form.addRow(tr("Images a s&econd"), rate_);
    form.addRow(tr("Fo&rm"), form_);
    form.addRow(stamp_);
}

void FilmKeep::makeButtons()
{
    preview_ = named(new PictureView, "filmPreview", tr("Preview of the film"));
    preview_->setMinimumSize(kPreviewSize);
    preview_->setShape(PictureView::Shape::Kept);
    forecast_ = named(new QLabel, "filmForecast", tr("What the film will be"));
    timeLeft_ = named(new QLabel, "filmTimeLeft", tr("Time left, or how it ended"));
    for (QLabel *const label : {forecast_, timeLeft_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    progress_ = named(new QProgressBar, "filmProgress", tr("Images done"));
    make_ = named(new QPushButton(tr("&Make film…")), "filmMake", tr("Make the film"));
    copy_ = named(new QPushButton(tr("&Copy images…")), "filmCopy",
                  tr("Copy these images to a folder"));
    cancel_ = named(new QPushButton(tr("C&ancel")), "filmCancel", tr("Cancel"));
    open_ = named(new QPushButton(tr("&Open")), "filmOpen", tr("Open what was made"));
    showFolder_ =
        named(new QPushButton(tr("Sho&w in folder")), "filmShowFolder", tr("Open its folder"));
}

void FilmKeep::arrange(QFormLayout *form)
{
    auto *const upper = new QHBoxLayout;
    upper->addWidget(preview_, 1);
    upper->addLayout(form);
    auto *const buttons = new QHBoxLayout;
    for (QPushButton *const button : {make_, copy_, cancel_, open_, showFolder_}) {
        buttons->addWidget(button);
    }
    auto *const lines = new QVBoxLayout(this);
    lines->addLayout(upper, 1);
    lines->addWidget(forecast_);
    lines->addWidget(progress_);
    lines->addWidget(timeLeft_);
    lines->addLayout(buttons);
}

void FilmKeep::bind()
{
    for (BoxEdit *const box : {from_, to_}) {
        connect(box, &BoxEdit::textChanged, this, &FilmKeep::showForecast);
        connect(box, &BoxEdit::left, this, &FilmKeep::takeTyped);
        connect(box, &BoxEdit::enterPressed, this, &FilmKeep::takeTyped);
    }
    for (QSpinBox *const box : {hoursFrom_, hoursTo_, thinningNumber_, rate_}) {
        connect(box, &QSpinBox::valueChanged, this, &FilmKeep::showForecast);
    }
    for (QComboBox *const box : {thinning_, size_, form_}) {
        connect(box, &QComboBox::currentIndexChanged, this, &FilmKeep::showForecast);
    }
    connect(&film_, &Slideshow::changed, this, &FilmKeep::takeFilmRange);
    connect(&maker_, &FilmMaker::imagesChanged, this, &FilmKeep::showForecast);
    connect(&maker_, &FilmMaker::advanced, this, &FilmKeep::showProgress);
    connect(&maker_, &FilmMaker::ended, this, &FilmKeep::showEnd);
    connect(&previewTimer_, &QTimer::timeout, this, &FilmKeep::showNextPicture);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void FilmKeep::bindButtons()
{
    connect(make_, &QAbstractButton::clicked, this, &FilmKeep::chooseTarget);
    connect(copy_, &QAbstractButton::clicked, this, &FilmKeep::chooseFolder);
    connect(cancel_, &QAbstractButton::clicked, &maker_, &FilmMaker::cancel);
    connect(open_, &QAbstractButton::clicked, this, [this] { Q_EMIT openWanted(maker_.result()); });
    connect(showFolder_, &QAbstractButton::clicked, this, [this] {
        const QFileInfo made(maker_.result());
        Q_EMIT openWanted(made.isDir() ? made.filePath() : made.path());
    });
}

FilmWish FilmKeep::wish() const
{
    FilmWish wish;
    wish.from = from_->text();
    wish.to = to_->text();
    wish.hours = {hoursFrom_->value(), hoursTo_->value()};
    wish.thinning = static_cast<FilmThinning>(thinning_->currentIndex());
    wish.thinningNumber = thinningNumber_->value();
    wish.size = size_->currentData().toSize();
    wish.picturesPerSecond = rate_->value();
    wish.isStamped = stamp_->isChecked();
    wish.form = static_cast<FilmForm>(form_->currentData().toInt());
    return wish;
}

void FilmKeep::showWish(const FilmWish &wish)
{
    settled_ = wish;
    from_->setText(wish.from);
    to_->setText(wish.to);
    restartPreview();
}

// Text in a box that was not left yet, whichever window is active.
bool FilmKeep::isTyping() const
{
    return (from_->isInHand() && from_->text() != settled_.from) ||
           (to_->isInHand() && to_->text() != settled_.to);
}

void FilmKeep::takeTyped()
{
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

// The film's sliders were moved, or its list has grown.
void FilmKeep::takeFilmRange()
{
    const PlayRange range = film_.face().range;
    if (isVisible() && film_.isOpen() && range != seenRange_ && !maker_.isBusy() &&
        maker_.isOfShownCamera()) {
        seenRange_ = range;
        if (!isTyping() && !isSettingFilm_) {
            showWish(maker_.usualWish());
        }
    }
}

void FilmKeep::takeDays(const DayRange &days)
{
    if (isVisible() && !maker_.isBusy() && maker_.isOfShownCamera()) {
        showDays(days);
    }
}

void FilmKeep::showDays(const DayRange &days)
{
    const auto text = [](std::chrono::year_month_day day) {
        return QString::fromLatin1(dayKey(day).insert(6, '-').insert(4, '-'));
    };
    FilmWish wished = wish();
    wished.from = text(days.first);
    wished.to = text(days.last);
    showWish(wished);
    play(wished);
}

void FilmKeep::present(const std::optional<DayRange> &days)
{
    if (!maker_.isBusy()) {
        begin(days);
    }
    bringToFront(*this);
}

void FilmKeep::begin(const std::optional<DayRange> &days)
{
    const bool isTyped = from_->isModified() || to_->isModified();
    const bool keepsRange = isVisible() && isTyped && maker_.isOfShownCamera();
    maker_.take();
    seenRange_ = film_.face().range;
    setWindowTitle(tr("Keep as a film: %1").arg(maker_.camera()));
    setBusy(false);
    timeLeft_->clear();
    progress_->reset();
    if (!keepsRange && days) {
        showDays(*days);
    } else if (!keepsRange) {
        showWish(maker_.usualWish());
    }
    showForecast();
}

QString FilmKeep::forecastText(const FilmForecast &found) const
{
    if (!maker_.hasImages()) {
        return tr("There are no images.");
    }
    return found.isRangeGood
               ? tr("%1 images, %2 seconds, about %3")
                     .arg(found.images)
                     .arg(found.seconds, 0, 'f', 1)
                     .arg(QLocale().formattedDataSize(found.bytes))
               : tr("From and to are days or times, as 2006-03-07 or 2006-03-07 14:30.");
}

void FilmKeep::showForecast()
{
    const FilmForecast found = maker_.forecast(wish());
    thinningNumber_->setEnabled(thinning_->currentIndex() > 0);
    forecast_->setText(forecastText(found));
    if (!maker_.isBusy()) {
        make_->setEnabled(found.images > 0);
        copy_->setEnabled(found.images > 0);
    }
}

void FilmKeep::restartPreview()
{
    previewAt_ = 0;
    previewTimer_.start(kMsInSecond / rate_->value());
    showNextPicture();
}

// Plays the first seconds over and over while nothing is being made.
void FilmKeep::showNextPicture()
{
    if (!isVisible() || maker_.isBusy()) {
        return;
    }
    previewTimer_.setInterval(kMsInSecond / rate_->value());
    QString path = maker_.picture(wish(), previewAt_);
    if (path.isEmpty() || previewAt_ >= qsizetype{kPreviewSeconds} * rate_->value()) {
        previewAt_ = 0;
        path = maker_.picture(wish(), 0);
    }
    ++previewAt_;
    if (path.isEmpty()) {
        preview_->clear();
    } else if (path != preview_->path()) {
        preview_->showPicture(path, readPicture(path, {preview_->pixels(), Fit::AtLeast}));
    }
}

void FilmKeep::chooseTarget()
{
    auto *const box = new QFileDialog(this, tr("Make a film"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAcceptMode(QFileDialog::AcceptSave);
    const QString extension = filmExtension(wish().form);
    box->setDefaultSuffix(extension);
    box->setNameFilter(QStringLiteral("*.") + extension);
    connect(box, &QFileDialog::fileSelected, this, [this](const QString &path) {
        setBusy(true);
        maker_.makeFilm(wish(), path);
    });
    box->open();
}

void FilmKeep::chooseFolder()
{
    auto *const box = new QFileDialog(this, tr("Copy the images to"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setFileMode(QFileDialog::Directory);
    connect(box, &QFileDialog::fileSelected, this, [this](const QString &path) {
        setBusy(true);
        maker_.copyImages(wish(), path);
    });
    box->open();
}

void FilmKeep::setBusy(bool busy)
{
    make_->setEnabled(!busy);
    copy_->setEnabled(!busy);
    cancel_->setEnabled(busy);
    open_->setEnabled(!busy && !maker_.result().isEmpty());
    showFolder_->setEnabled(open_->isEnabled());
}

void FilmKeep::showProgress()
{
    constexpr int kThousand = 1000; // a bar counts no further than an int
    progress_->setRange(0, kThousand);
    progress_->setValue(
        static_cast<int>(maker_.done() * kThousand / std::max<qint64>(1, maker_.all())));
    const auto left = maker_.timeLeftMs();
    timeLeft_->setText(left ? tr("%1 of %2 images, %3 s left")
                                  .arg(maker_.done())
                                  .arg(maker_.all())
                                  .arg(*left / kMsInSecond + 1)
                            : tr("%1 of %2 images").arg(maker_.done()).arg(maker_.all()));
}

void FilmKeep::showEnd(const QString &text)
{
    setBusy(false);
    showForecast();
    timeLeft_->setText(text);
    (open_->isEnabled() ? open_ : make_)->setFocus();
}

} // namespace velmora
