#include "ui/CameraListWindow.h"

#include "admin/CameraCommands.h"
#include "admin/ListText.h"
#include "admin/Refusals.h"
#include "base/FileReader.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "ui/ScreenRoom.h"
#include "ui/ToFront.h"
#include "ui_CameraListWindow.h"

#include <QFileDialog>
#include <QShortcut>

#include <algorithm>

namespace velmora {
namespace {

constexpr QSize kStartSize{760, 560};
constexpr int kMostShown = 200; // of a list whose rest would be refused anyway

qsizetype countOf(const ListPlan &plan, Fate fate)
{
    return std::ranges::count_if(
        plan.cameras, [fate](const PlannedCamera &planned) { return planned.fate == fate; });
}

QString summary(const ListPlan &plan)
{
    if (!plan.fault.isEmpty()) {
        return plan.fault;
    }
    const qsizetype wrong = countOf(plan, Fate::Wrong);
    const QString counts = CameraListWindow::tr("%1 new, %2 double, %3 wrong")
                               .arg(countOf(plan, Fate::Added))
                               .arg(countOf(plan, Fate::Double))
                               .arg(wrong);
    return wrong > 0 ? counts + CameraListWindow::tr(". Nothing is stored while a line is wrong.")
                     : counts;
}

// The user corrects the file's own text. One that cannot be read, or is far too long, is not shown.
QString shownText(const QByteArray &bytes)
{
    return readCameraList(bytes).fault.isEmpty() ? listText(bytes).value_or(QString()) : QString();
}

QString readingFault(std::error_code error)
{
    return error == std::errc::file_too_large
               ? CameraListWindow::tr("it is far longer than a hundred cameras can be")
               : QString::fromStdString(error.message());
}

} // namespace

CameraListWindow::CameraListWindow(const SettingsFile &settings)
    : settings_(settings)
    , ui_(std::make_unique<Ui::CameraListWindow>())
{
    ui_->setupUi(this);
    ui_->listPreview->horizontalHeader()->setStretchLastSection(true);
    ui_->listPreview->verticalHeader()->hide();
    resizeOnScreen(*this, kStartSize);
    connect(ui_->listText, &QPlainTextEdit::textChanged, this,
            [this] { read(ui_->listText->toPlainText().toUtf8()); });
    connect(ui_->listOpen, &QAbstractButton::clicked, this, &CameraListWindow::chooseFile);
    connect(ui_->listExport, &QAbstractButton::clicked, this, &CameraListWindow::chooseTarget);
    connect(ui_->listStore, &QAbstractButton::clicked, this, &CameraListWindow::store);
    connect(ui_->listClose, &QAbstractButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

CameraListWindow::~CameraListWindow() = default;

void CameraListWindow::present()
{
    if (!isVisible()) {
        ui_->listText->clear();
        read({});
        ui_->listText->setFocus();
    }
    bringToFront(*this);
}

// Rows may have been taken meanwhile, in another window or by another program.
bool CameraListWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        const ListPlan plan = planList(readCameraList(list_), settings_.snapshot());
        if (plan != plan_) {
            show(plan);
        }
    }
    return QWidget::event(event);
}

void CameraListWindow::read(const QByteArray &bytes)
{
    list_ = bytes;
    show(planList(readCameraList(list_), settings_.snapshot()));
}

void CameraListWindow::show(const ListPlan &plan)
{
    plan_ = plan;
    const auto shown = static_cast<int>(std::min<std::size_t>(plan.cameras.size(), kMostShown));
    ui_->listPreview->setRowCount(shown);
    for (int line = 0; line < shown; ++line) {
        showLine(line, plan.cameras[static_cast<std::size_t>(line)]);
    }
    ui_->listPreview->resizeColumnsToContents();
    ui_->listMessage->setText(summary(plan));
    showStore(plan.isSound() && countOf(plan, Fate::Added) > 0);
}

// A button that is disabled gives the focus to the next one, which closes the window.
void CameraListWindow::showStore(bool mayStore)
{
    if (!mayStore && focusWidget() == ui_->listStore) {
        ui_->listPreview->setFocus();
    }
    ui_->listStore->setEnabled(mayStore);
}

void CameraListWindow::showLine(int line, const PlannedCamera &planned)
{
    const QStringList texts{planned.place ? cameraText(*planned.place) : QString(),
                            planned.camera.name.left(kMaxNameLength),
                            addressWithoutCredentials(planned.camera.address).left(255),
                            planned.remark};
    for (int column = 0; column < static_cast<int>(texts.size()); ++column) {
        ui_->listPreview->setItem(line, column, new QTableWidgetItem(texts.at(column)));
    }
}

void CameraListWindow::openFile(const QString &path)
{
    const WholeFile file = readWholeFile(path, kMostListFileBytes);
    const QByteArray bytes = file.bytes.value_or(QByteArray());
    ui_->listText->setPlainText(shownText(bytes));
    if (ui_->listText->document()->isEmpty()) {
        read(bytes); // which says why nothing is shown
    }
    if (!file.bytes) {
        ui_->listMessage->setText(unreadListText(path, readingFault(file.error)));
    }
}

// Cameras go where the preview shows them, or nowhere: the table may have changed since.
void CameraListWindow::store()
{
    Q_EMIT storing();
    bool isAsShown = false;
    const SettingsChange change = settings_.change([&](SettingsDraft &draft) {
        isAsShown = planList(readCameraList(list_), draft.snapshot()) == plan_;
        if (isAsShown) {
            applyPlan(plan_, draft);
        }
    });
    if (change == SettingsChange::Failed) {
        ui_->listMessage->setText(notStoredText());
        return;
    }
    if (isAsShown) {
        Q_EMIT stored();
    }
    read(list_);
    ui_->listMessage->setText(isAsShown ? tr("Stored.")
                                        : tr("The cameras have changed meanwhile. This is how the "
                                             "list would go in now."));
}

void CameraListWindow::chooseFile()
{
    auto *const dialog = new QFileDialog(this, tr("Open a list of cameras"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &CameraListWindow::openFile);
    dialog->open();
}

void CameraListWindow::chooseTarget()
{
    auto *const dialog = new QFileDialog(this, tr("Write the cameras as a list"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        const CommandResult result = exportList(settings_, {path});
        ui_->listMessage->setText(result.status == kDone ? tr("Written to %1").arg(path)
                                                         : result.error);
    });
    dialog->open();
}

} // namespace velmora
