#include "ui/HealthWindow.h"

#include "ui/HourBarsDelegate.h"
#include "ui/LampDelegate.h"
#include "ui/ScreenRoom.h"
#include "ui/ShownSwitch.h"
#include "ui/ToFront.h"
#include "ui/ToolTips.h"
#include "ui/WindowKeys.h"
#include "ui_HealthWindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>

#include <utility>

namespace velmora {
namespace {

constexpr int kBarsWidth = 130;
constexpr int kStateWidth = 130;
constexpr int kCameraWidth = 220;
constexpr int kFailureWidth = 200;

} // namespace

HealthWindow::HealthWindow(HealthBook &book, HealthWatch &watch, const SettingsFile &settings)
    : book_(book)
    , watch_(watch)
    , options_(settings)
    , ui_(std::make_unique<Ui::HealthWindow>())
    , table_(book)
{
    ui_->setupUi(this);
    setUpTable();
    bindTable();
    bindKeys();
    bindChoices();
    bindNumbers();
    connect(&watch_, &HealthWatch::roomChanged, this, &HealthWindow::showRoom);
}

HealthWindow::~HealthWindow() = default;

void HealthWindow::setUpTable()
{
    shown_.setSourceModel(&table_);
    shown_.setSortRole(HealthTable::kSortRole);
    shown_.setFilterKeyColumn(-1);
    shown_.setFilterCaseSensitivity(Qt::CaseInsensitive);
    QTableView &view = *ui_->healthTable;
    view.setModel(&shown_);
    view.setItemDelegate(new ElidedTips(&view));
    view.setItemDelegateForColumn(HealthTable::Lamp, new LampDelegate(&view));
    view.setItemDelegateForColumn(HealthTable::Day, new HourBarsDelegate(&view));
    view.sortByColumn(HealthTable::Lamp, Qt::DescendingOrder);
    view.setColumnWidth(HealthTable::Lamp, kStateWidth);
    view.setColumnWidth(HealthTable::Camera, kCameraWidth);
    view.setColumnWidth(HealthTable::Day, kBarsWidth);
    view.setColumnWidth(HealthTable::Failure, kFailureWidth);
}

void HealthWindow::bindTable()
{
    ui_->healthTable->installEventFilter(this);
    connect(ui_->healthFilter, &QLineEdit::textChanged, &shown_,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(ui_->healthFilter, &QLineEdit::returnPressed, this, &HealthWindow::goToCamera);
    connect(ui_->healthTable, &QTableView::doubleClicked, this, &HealthWindow::goToCamera);
    connect(ui_->healthTable->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &HealthWindow::showNever);
    connect(&table_, &HealthTable::dataChanged, this, &HealthWindow::showNever);
}

void HealthWindow::bindKeys()
{
    const auto key = [this](const QKeySequence &keys, auto action) {
        QShortcut &shortcut = addKeys(*ui_->healthTable, keys);
        shortcut.setContext(Qt::WidgetShortcut);
        connect(&shortcut, &QShortcut::activated, this, action);
    };
    key(Qt::Key_Return, [this] { goToCamera(); });
    key(Qt::Key_Enter, [this] { goToCamera(); });
    key(QKeySequence::Copy, [this] { copy(); });
    key(Qt::CTRL | Qt::Key_S, [this] { sortByCursor(); });
    closeOnEscape(*this);
}

void HealthWindow::bindChoice(QCheckBox &box, HealthChoice choice)
{
    connect(&box, &QCheckBox::toggled, this, [this, choice](bool on) { options_.set(choice, on); });
}

void HealthWindow::bindChoices()
{
    bindChoice(*ui_->healthNotices, HealthChoice::Notices);
    bindChoice(*ui_->healthMail, HealthChoice::Mail);
    bindChoice(*ui_->healthDelete, HealthChoice::DeleteOldest);
    bindChoice(*ui_->healthStop, HealthChoice::StopWhenFull);
    connect(ui_->healthNever, &QCheckBox::pressed, this, [this] { pressedFor_ = chosen(); });
    connect(ui_->healthNever, &QCheckBox::toggled, this, &HealthWindow::setNever);
    connect(ui_->healthNever, &QCheckBox::released, this, [this] {
        pressedFor_.reset();
        showNever();
    });
}

void HealthWindow::bindNumbers()
{
    ui_->healthLateTimes->setRange(1, HealthOptions::kMostTimes);
    ui_->healthLimit->setRange(0, HealthOptions::kMostMegabytes);
    connect(ui_->healthLateTimes, &QSpinBox::valueChanged, this,
            [this](int times) { options_.setLateTimes(times); });
    connect(ui_->healthLimit, &QSpinBox::valueChanged, this,
            [this](int megabytes) { options_.setLimitMegabytes(megabytes); });
}

void HealthWindow::present()
{
    ui_->healthLateTimes->leave();
    ui_->healthLimit->leave();
    if (!isVisible()) {
        ui_->healthFilter->clear();
    }
    book_.followTable();
    table_.refresh();
    showChoices();
    showRoom();
    if (!ui_->healthTable->currentIndex().isValid()) {
        chooseFirst();
    }
    showNever();
    widenToTitles();
    placeFirst();
    bringToFront(*this);
    ui_->healthTable->setFocus();
}

// The toolkit's own selectRow() selects nothing in a mirrored table that is not laid out yet.
void HealthWindow::chooseFirst()
{
    ui_->healthTable->setCurrentIndex(shown_.index(0, HealthTable::Lamp));
}

// Titles are bold in some styles, and in large letters none of the usual widths would do.
void HealthWindow::widenToTitles()
{
    const QHeaderView &header = *ui_->healthTable->horizontalHeader();
    for (int column = 0; column < HealthTable::kColumns; ++column) {
        const int wanted = header.sectionSizeHint(column);
        if (ui_->healthTable->columnWidth(column) < wanted) {
            ui_->healthTable->setColumnWidth(column, wanted);
        }
    }
}

// The upper right corner: the browser has its buttons at its foot. Where the user moves it, it
// stays. A window that grew only when it is shown would be put there without its title bar.
void HealthWindow::placeFirst()
{
    if (std::exchange(isPlaced_, true)) {
        return;
    }
    const QRect room = screenRoom(*this);
    resize(size().boundedTo(room.size()).expandedTo(minimumSizeHint()));
    move(std::max(room.left(), room.right() - width() + 1), room.top());
}

void HealthWindow::showChoices()
{
    const QSignalBlocker noNotices(ui_->healthNotices);
    const QSignalBlocker noMail(ui_->healthMail);
    const QSignalBlocker noDeletion(ui_->healthDelete);
    const QSignalBlocker noStop(ui_->healthStop);
    const QSignalBlocker noTimes(ui_->healthLateTimes);
    const QSignalBlocker noLimit(ui_->healthLimit);
    ui_->healthNotices->setChecked(options_.isOn(HealthChoice::Notices));
    ui_->healthMail->setChecked(options_.isOn(HealthChoice::Mail));
    ui_->healthDelete->setChecked(options_.isOn(HealthChoice::DeleteOldest));
    ui_->healthStop->setChecked(options_.isOn(HealthChoice::StopWhenFull));
    ui_->healthLateTimes->setValue(options_.lateTimes());
    ui_->healthLimit->setValue(options_.limitMegabytes());
}

// Ages grow even while nothing happens: they are updated along with the room, every few seconds.
void HealthWindow::showRoom()
{
    const std::optional<DiskRoom> room = watch_.room();
    ui_->healthRoom->setText(room ? roomText(*room, book_.bytesADay())
                                  : tr("The free space on the disk is unknown."));
    if (isVisible()) {
        table_.refresh();
    }
}

// Typing over the table filters it.
bool HealthWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui_->healthTable && event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const QString text = key->text();
        const bool isTyped = !text.isEmpty() && text.front().isPrint() && text != u" " &&
                             !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        if (isTyped) {
            ui_->healthFilter->setFocus();
            ui_->healthFilter->insert(text);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

std::optional<CameraAddress> HealthWindow::current() const
{
    const QModelIndex index = shown_.mapToSource(ui_->healthTable->currentIndex());
    return index.isValid() ? std::optional(table_.address(index.row())) : std::nullopt;
}

std::optional<HealthWindow::Chosen> HealthWindow::chosen() const
{
    const auto camera = current();
    return camera ? std::optional(Chosen{*camera, book_.camera(*camera).folder}) : std::nullopt;
}

void HealthWindow::showNever()
{
    const auto camera = current();
    ui_->healthNever->setEnabled(camera.has_value());
    showSwitch(*ui_->healthNever, camera && options_.isNever(*camera));
}

// The row may have lost its camera, or got another one, since the press, or since the table was
// last looked at: the choice was made for the one shown.
void HealthWindow::setNever(bool never)
{
    const auto meant = pressedFor_ ? pressedFor_ : chosen();
    book_.followTable();
    if (meant && meant == chosen()) {
        options_.setNever(meant->camera, never);
    }
}

// As a click on the title of its column does.
void HealthWindow::sortByCursor()
{
    const int column = std::max(0, ui_->healthTable->currentIndex().column());
    const bool isAgain = shown_.sortColumn() == column;
    const bool isUp = isAgain ? shown_.sortOrder() == Qt::DescendingOrder : true;
    ui_->healthTable->sortByColumn(column, isUp ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void HealthWindow::goToCamera()
{
    if (!ui_->healthTable->currentIndex().isValid() && shown_.rowCount() > 0) {
        chooseFirst();
    }
    if (const auto camera = current()) {
        Q_EMIT cameraWanted(*camera);
    }
}

// Copies the selected rows, or all of them, as lines with tabs between the columns.
void HealthWindow::copy()
{
    QStringList lines;
    for (int row = 0; row < shown_.rowCount(); ++row) {
        const bool isAll = ui_->healthTable->selectionModel()->selectedRows().size() < 2;
        if (isAll || ui_->healthTable->selectionModel()->isRowSelected(row)) {
            QStringList cells;
            for (int column = 0; column < HealthTable::kColumns; ++column) {
                cells.append(shown_.index(row, column).data().toString());
            }
            lines.append(cells.join(u'\t'));
        }
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

} // namespace velmora
