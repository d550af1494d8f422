#include "ui/CameraSheet.h"

#include "admin/Refusals.h"
#include "base/OneLine.h"
#include "pictures/TimelyPicture.h"
#include "ui/ScreenRoom.h"
#include "ui/ToFront.h"
#include "ui/WheelFocus.h"
#include "ui/WindowKeys.h"
#include "ui_CameraSheet.h"

#include <QCloseEvent>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kStartWidth = 780;
constexpr QSize kMostShown{1280, 960};
constexpr qsizetype kMostTold = 80; // characters of a header
constexpr int kUsualPercent = 5;    // until another is chosen

QString whyNotShown(const QByteArray &bytes, const TimelyPicture &picture)
{
    if (bytes.isEmpty()) {
        return CameraSheet::tr("no picture");
    }
    return picture.isTooLarge ? CameraSheet::tr("too large to show")
                              : CameraSheet::tr("cannot be shown");
}

// A server may send a text of any length.
QString toldBy(const QString &text)
{
    if (text.isEmpty()) {
        return CameraSheet::tr("none");
    }
    return onOneLine(text.left(kMostTold)) +
           (text.size() > kMostTold ? QStringLiteral("…") : QString());
}

QString factsOf(const TrialResult &result, const TimelyPicture &shown)
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
                         .arg(toldBy(result.contentType)));
        lines.append(CameraSheet::tr("Last-Modified: %1").arg(toldBy(result.lastModified)));
        lines.append(CameraSheet::tr("Date: %1").arg(toldBy(result.date)));
    }
    lines.append(CameraSheet::tr("%1 ms").arg(result.duration.count()));
    return lines.join(u'\n');
}

} // namespace

CameraSheet::CameraSheet(const SettingsFile &settings, CameraTrial &trial)
    : edit_(settings)
    , trial_(trial)
    , ui_(std::make_unique<Ui::CameraSheet>())
{
    ui_->setupUi(this);
    resizeOnScreen(*this, {std::max(kStartWidth, sizeHint().width()), sizeHint().height()});
    turnBoxesOnlyWithFocus(*this);
    ui_->sheetName->setMaxLength(kMaxNameLength);
    connect(ui_->sheetKeep, &QComboBox::currentIndexChanged, this, &CameraSheet::showPercent);
    connect(ui_->sheetTest, &QAbstractButton::clicked, this, &CameraSheet::test);
    connect(ui_->sheetSave, &QAbstractButton::clicked, this, &CameraSheet::save);
    connect(ui_->sheetCancel, &QAbstractButton::clicked, this, &QWidget::close);
    connect(&trial_, &CameraTrial::ended, this, &CameraSheet::showResult);
    closeOnEscape(*this);
    for (QLineEdit *const box :
         {ui_->sheetName, ui_->sheetAddress, ui_->sheetUser, ui_->sheetPassword}) {
        connect(box, &QLineEdit::returnPressed, this, &CameraSheet::save);
        connect(box, &QLineEdit::textEdited, ui_->sheetMessage, &QLabel::clear);
    }
}

CameraSheet::~CameraSheet() = default;

void CameraSheet::present(CameraAddress camera)
{
    const bool isChanged = isVisible() && edit_.isChanged(fields());
    if (!isChanged) {
        begin(camera);
    } else if (camera != edit_.camera()) {
        ui_->sheetMessage->setText(
            tr("Save or cancel this first; then open camera %1 again").arg(cameraText(camera)));
    }
    bringToFront(*this);
}

void CameraSheet::begin(CameraAddress camera)
{
    trial_.giveUp();
    fill(edit_.begin(camera));
    setWindowTitle(tr("Camera %1").arg(edit_.title()));
    edit_.setFilled(fields());
    ui_->sheetName->setFocus();
    const auto length = static_cast<int>(ui_->sheetName->text().size());
    ui_->sheetName->setSelection(length, -length); // a long name is seen from its start
}

CameraFields CameraSheet::fields() const
{
    return {ui_->sheetName->text(),
            ui_->sheetAddress->text().trimmed(),
            {ui_->sheetUser->text(), ui_->sheetPassword->text()},
            keep()};
}

void CameraSheet::fill(const CameraFields &stored)
{
    ui_->sheetName->setText(stored.name);
    ui_->sheetAddress->setText(stored.address);
    ui_->sheetAddress->setCursorPosition(0);
    ui_->sheetUser->setText(stored.login.user);
    ui_->sheetPassword->setText(stored.login.password);
    ui_->sheetKeep->setCurrentIndex(static_cast<int>(stored.keep.keep));
    ui_->sheetPercent->setValue(stored.keep.keep == Keep::Clearly ? stored.keep.percent
                                                                  : kUsualPercent);
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
    const CameraFields now = fields();
    trial_.begin({edit_.camera(), now.address, now.login, now.keep});
}

void CameraSheet::showResult(const TrialResult &result)
{
    const TimelyPicture shown = decodeInTime(result.picture, {kMostShown, Fit::KeepShape});
    ui_->sheetResult->setText(factsOf(result, shown));
    ui_->sheetDifference->setText(
        result.differencePercent ? tr("measured: %1 %").arg(*result.differencePercent, 0, 'f', 1)
                                 : QString());
    ui_->sheetPicture->setEmptyText(whyNotShown(result.picture, shown));
    ui_->sheetPicture->showPicture({}, shown.image);
}

// A value that cannot be stored stays in its field, and the sheet stays open.
void CameraSheet::save()
{
    const CameraFields now = fields();
    if (const auto refusal = edit_.refusal(now)) {
        ui_->sheetMessage->setText(*refusal);
        return;
    }
    giveAddress(now);
    if (edit_.store(now) == SettingsChange::Failed) {
        ui_->sheetMessage->setText(notStoredText());
        return;
    }
    Q_EMIT saved();
    close();
}

// Before anything else, since the row forgets what another address leaves behind, but the login in
// the sheet is meant for the one beside it.
void CameraSheet::giveAddress(const CameraFields &now)
{
    if (edit_.changesAddress(now)) {
        Q_EMIT addressChosen(edit_.camera(), now.address);
        edit_.followAddress();
    }
}

void CameraSheet::closeEvent(QCloseEvent *event)
{
    trial_.giveUp();
    QWidget::closeEvent(event);
}

} // namespace velmora
