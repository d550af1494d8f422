#include "ui/CameraSheet.h"

#include "admin/Refusals.h"
#include "base/PictureFormat.h"
#include "cameras/AddressRule.h"
#include "pictures/JpegScans.h"
#include "pictures/PictureReader.h"
#include "ui/ToFront.h"
#include "ui_CameraSheet.h"

#include <QBuffer>
#include <QCloseEvent>
#include <QImageReader>
#include <QShortcut>

namespace velmora {
namespace {

constexpr QSize kMostShown{1280, 960};

// Decoded in one go, during which the whole program waits. JPEG can be decoded at a smaller size,
// but each of its scans goes through the whole picture.
constexpr qint64 kMostPixels = 10'000'000;
constexpr qint64 kMostJpegPixels = 100'000'000;

struct Shown
{
    QImage image; // no larger than the sheet needs
    QSize size;   // of the picture itself
    QString why;  // there is no image
};

QSize storedSize(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.size();
}

bool takesTooLong(const QByteArray &bytes, QSize size)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    return pictureFormat(bytes) == kJpegFormat ? pixels * countJpegScans(bytes) > kMostJpegPixels
                                               : pixels > kMostPixels;
}

Shown shownPicture(const QByteArray &bytes)
{
    if (bytes.isEmpty()) {
        return {{}, {}, CameraSheet::tr("no picture")};
    }
    const QSize size = storedSize(bytes);
    if (takesTooLong(bytes, size)) {
        return {{}, size, CameraSheet::tr("too large to show")};
    }
    return {decodePicture(bytes, {kMostShown, Fit::KeepShape}), size,
            CameraSheet::tr("cannot be shown")};
}

QString orNone(const QString &text)
{
    return text.isEmpty() ? CameraSheet::tr("none") : text;
}

QString factsOf(const TrialResult &result, const Shown &shown)
{
    QStringList lines{result.verdict};
    if (!result.picture.isEmpty()) {
        const QString size = shown.size.isValid() ? CameraSheet::tr("%1 × %2 pixels, ")
                                                        .arg(shown.size.width())
                                                        .arg(shown.size.height())
                                                  : QString();
        lines.append(CameraSheet::tr("%1%2 bytes, type %3")
                         .arg(size)
                         .arg(result.picture.size())
                         .arg(orNone(result.contentType)));
        lines.append(CameraSheet::tr("Last-Modified: %1").arg(orNone(result.lastModified)));
        lines.append(CameraSheet::tr("Date: %1").arg(orNone(result.date)));
    }
    lines.append(CameraSheet::tr("%1 ms").arg(result.duration.count()));
    return lines.join(u'\n');
}

} // namespace

CameraSheet::CameraSheet(const SettingsFile &settings, CameraTrial &trial)
    : settings_(settings)
    , trial_(trial)
    , ui_(std::make_unique<Ui::CameraSheet>())
{
    ui_->setupUi(this);
    ui_->sheetName->setMaxLength(kMaxNameLength);
    connect(ui_->sheetKeep, &QComboBox::currentIndexChanged, this, &CameraSheet::showPercent);
    connect(ui_->sheetTest, &QAbstractButton::clicked, this, &CameraSheet::test);
    connect(ui_->sheetSave, &QAbstractButton::clicked, this, &CameraSheet::save);
    connect(ui_->sheetCancel, &QAbstractButton::clicked, this, &QWidget::close);
    connect(&trial_, &CameraTrial::ended, this, &CameraSheet::showResult);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    for (QLineEdit *const box :
         {ui_->sheetName, ui_->sheetAddress, ui_->sheetUser, ui_->sheetPassword}) {
        connect(box, &QLineEdit::returnPressed, this, &CameraSheet::save);
        connect(box, &QLineEdit::textEdited, ui_->sheetMessage, &QLabel::clear);
    }
}

CameraSheet::~CameraSheet() = default;

void CameraSheet::present(CameraAddress camera)
{
    const bool isChanged = isVisible() && fields() != filled_;
    if (!isChanged) {
        begin(camera);
    } else if (camera != camera_) {
        ui_->sheetMessage->setText(
            tr("Save or cancel this first; then open camera %1 again").arg(cameraText(camera)));
    }
    bringToFront(*this);
}

void CameraSheet::begin(CameraAddress camera)
{
    camera_ = camera;
    trial_.giveUp();
    fill();
    filled_ = fields();
    ui_->sheetName->setFocus();
    const auto length = static_cast<int>(ui_->sheetName->text().size());
    ui_->sheetName->setSelection(length, -length); // a long name is seen from its start
}

CameraSheet::Fields CameraSheet::fields() const
{
    return {ui_->sheetName->text(),
            ui_->sheetAddress->text().trimmed(),
            {ui_->sheetUser->text(), ui_->sheetPassword->text()},
            keep()};
}

void CameraSheet::fill()
{
    const SettingsSnapshot settings = settings_.snapshot();
    stored_ = CameraTable::url(settings, camera_);
    const CameraLogin login = cameraLogin(settings, camera_);
    const KeepChoice choice = cameraKeep(settings, camera_);
    setWindowTitle(tr("Camera %1").arg(cameraTitle(settings, camera_)));
    ui_->sheetName->setText(cameraName(settings, camera_));
    ui_->sheetAddress->setText(stored_);
    ui_->sheetAddress->setCursorPosition(0);
    ui_->sheetUser->setText(login.user);
    ui_->sheetPassword->setText(login.password);
    ui_->sheetKeep->setCurrentIndex(static_cast<int>(choice.keep));
    if (choice.keep == Keep::Clearly) {
        ui_->sheetPercent->setValue(choice.percent);
    }
    ui_->sheetMessage->clear();
    ui_->sheetResult->clear();
    ui_->sheetDifference->clear();
    ui_->sheetPicture->setEmptyText(tr("no picture yet"));
    ui_->sheetPicture->clear();
    showPercent();
}

void CameraSheet::showPercent()
{
    ui_->sheetPercent->setEnabled(keep().keep == Keep::Clearly);
}

KeepChoice CameraSheet::keep() const
{
    const auto choice = static_cast<Keep>(ui_->sheetKeep->currentIndex());
    return {choice, choice == Keep::Clearly ? ui_->sheetPercent->value() : 0};
}

// A disabled button passes the focus on, and a second press of its key would fall on the next one,
// which stores. So it stays enabled, and begins the test again.
void CameraSheet::test()
{
    ui_->sheetResult->setText(tr("Fetching…"));
    trial_.begin({camera_,
                  ui_->sheetAddress->text().trimmed(),
                  {ui_->sheetUser->text(), ui_->sheetPassword->text()},
                  keep()});
}

void CameraSheet::showResult(const TrialResult &result)
{
    const Shown shown = shownPicture(result.picture);
    ui_->sheetResult->setText(factsOf(result, shown));
    ui_->sheetDifference->setText(
        result.differencePercent ? tr("measured: %1 %").arg(*result.differencePercent, 0, 'f', 1)
                                 : QString());
    ui_->sheetPicture->setEmptyText(shown.why);
    ui_->sheetPicture->showPicture({}, shown.image);
}

// A value that cannot be stored stays in its field, and the sheet stays open.
void CameraSheet::save()
{
    const Fields now = fields();
    for (const auto &refusal : {addressRefusal(now.address, camera_.row), nameRefusal(now.name),
                                loginRefusal(now.login)}) {
        if (refusal) {
            ui_->sheetMessage->setText(*refusal);
            return;
        }
    }
    if (!isOfSameCamera()) {
        ui_->sheetMessage->setText(tr("The row has got another address meanwhile: nothing was "
                                      "stored. Cancel, and open the sheet again"));
        return;
    }
    giveAddress(now.address);
    if (store(now) == SettingsChange::Failed) {
        ui_->sheetMessage->setText(notStoredText());
        return;
    }
    Q_EMIT saved();
    close();
}

// What is in the sheet, the login above all, is not meant for a camera that was put into the row
// since the sheet was filled.
bool CameraSheet::isOfSameCamera() const
{
    return CameraTable::url(settings_.snapshot(), camera_) == stored_;
}

// Before anything else, since the row forgets what another address leaves behind, but the login in
// the sheet is meant for the one beside it.
void CameraSheet::giveAddress(const QString &address)
{
    if (address != filled_.address) {
        Q_EMIT addressChosen(camera_, address);
        stored_ = CameraTable::url(settings_.snapshot(), camera_);
    }
}

// The other fields may have been changed elsewhere since the sheet was filled. Nothing is chosen
// for a row that was emptied.
SettingsChange CameraSheet::store(const Fields &now) const
{
    const bool isEmptied = now.address.isEmpty() && !filled_.address.isEmpty();
    if (isEmptied) {
        return SettingsChange::Made;
    }
    return settings_.change([&](SettingsDraft &draft) {
        if (now.name != filled_.name) {
            setCameraName(draft, camera_, now.name);
        }
        if (now.keep != filled_.keep) {
            setCameraKeep(draft, camera_, now.keep);
        }
        if (now.login != filled_.login || now.address != filled_.address) {
            setCameraLogin(draft, camera_, now.login);
        }
    });
}

void CameraSheet::closeEvent(QCloseEvent *event)
{
    trial_.giveUp();
    QWidget::closeEvent(event);
}

} // namespace velmora
