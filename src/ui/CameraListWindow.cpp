#include "ui/CameraListWindow.h"

#include "admin/CameraCommands.h"
#include "admin/Refusals.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "ui/FileBox.h"
#include "ui/ScreenRoom.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui/WindowKeys.h"
#include "ui_CameraListWindow.h"

#include <QFileDialog>

#include <algorithm>

namespace velmora {
namespace {

constexpr QSize kStartSize{760, 560};
constexpr int kRowColumn = 0;
constexpr int kNameColumn = 1;
constexpr int kAddressColumn = 2;
constexpr int kRemarkColumn = 3;
constexpr int kMostShown = 200; // of a list whose rest would be refused anyway

} // namespace

CameraListWindow::CameraListWindow(const SettingsFile &settings)
    : settings_(settings)
    , edit_(settings)
    , ui_(std::make_unique<Ui::CameraListWindow>())
{
    ui_->setupUi(this);
    ui_->listPreview->horizontalHeader()->setStretchLastSection(true);
    ui_->listPreview->verticalHeader()->hide();
    ui_->listPreview->setItemDelegate(new ElidedTips(ui_->listPreview));
    resizeOnScreen(*this, kStartSize);
    connect(ui_->listText, &QPlainTextEdit::textChanged, this,
            [this] { read(ui_->listText->toPlainText().toUtf8()); });
    connect(ui_->listOpen, &QAbstractButton::clicked, this, &CameraListWindow::chooseFile);
    connect(ui_->listExport, &QAbstractButton::clicked, this, &CameraListWindow::chooseTarget);
    connect(ui_->listStore, &QAbstractButton::clicked, this, &CameraListWindow::store);
    connect(ui_->listClose, &QAbstractButton::clicked, this, &QWidget::close);
    closeOnEscape(*this);
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

bool CameraListWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && edit_.planAgain()) {
        showPlan();
    }
    return QWidget::event(event);
}

void CameraListWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitColumns();
}

void CameraListWindow::read(const QByteArray &bytes)
{
    edit_.read(bytes);
    showPlan();
}

void CameraListWindow::showPlan()
{
    const std::vector<PlannedCamera> &cameras = edit_.plan().cameras;
    const auto shown = static_cast<int>(std::min<std::size_t>(cameras.size(), kMostShown));
    ui_->listPreview->setRowCount(shown);
    for (int line = 0; line < shown; ++line) {
        showLine(line, cameras[static_cast<std::size_t>(line)]);
    }
    fitColumns();
    ui_->listMessage->setText(edit_.summary());
    showStore(edit_.mayStore());
}

// The remarks say what is wrong, and are the last column.
void CameraListWindow::fitColumns()
{
    QTableWidget &table = *ui_->listPreview;
    const QAbstractItemView &view = table; // whose sizes are public
    table.resizeColumnsToContents();
    const int room = table.viewport()->width() - table.columnWidth(kRowColumn);
    const int both = room - std::min(view.sizeHintForColumn(kRemarkColumn), room / 3);
    const int leftForName = std::max(room / 4, both - table.columnWidth(kAddressColumn));
    const int name = std::min(table.columnWidth(kNameColumn), leftForName);
    table.setColumnWidth(kNameColumn, name);
    table.setColumnWidth(kAddressColumn, std::min(table.columnWidth(kAddressColumn), both - name));
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
    const ListFile file = readListFile(path);
    ui_->listText->setPlainText(file.text);
    if (ui_->listText->document()->isEmpty()) {
        read(file.bytes); // which says why nothing is shown
    }
    if (!file.fault.isEmpty()) {
        ui_->listMessage->setText(file.fault);
    }
}

void CameraListWindow::store()
{
    Q_EMIT storing();
    const ListStoring outcome = edit_.store();
    if (outcome == ListStoring::Failed) {
        ui_->listMessage->setText(notStoredText());
        return;
    }
    if (outcome == ListStoring::Stored) {
        Q_EMIT stored();
    }
    showPlan();
    ui_->listMessage->setText(outcome == ListStoring::Stored
                                  ? tr("Stored.")
                                  : tr("The cameras have changed meanwhile. This is how the list "
                                       "would go in now."));
}

void CameraListWindow::chooseFile()
{
    auto *const box = newFileBox(*this, tr("Open a list of cameras"));
    box->setFileMode(QFileDialog::ExistingFile);
    connect(box, &QFileDialog::fileSelected, this, &CameraListWindow::openFile);
    box->open();
}

void CameraListWindow::chooseTarget()
{
    auto *const box = newFileBox(*this, tr("Write the cameras as a list"));
    box->setAcceptMode(QFileDialog::AcceptSave);
    box->setDefaultSuffix(QStringLiteral("csv"));
    connect(box, &QFileDialog::fileSelected, this, [this](const QString &path) {
        const CommandResult result = exportList(settings_, {path});
        ui_->listMessage->setText(result.status == kDone ? tr("Written to %1").arg(path)
                                                         : result.error);
    });
    box->open();
}

} // namespace velmora
