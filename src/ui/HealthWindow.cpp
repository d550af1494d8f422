#include "ui/HealthWindow.h"

#include "ui/HourBarsDelegate.h"
#include "ui/LampDelegate.h"
#include "ui/NumberBox.h"
#include "ui/ToFront.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace velmora {
namespace {

constexpr QSize kStartSize{1060, 480};
constexpr int kBarsWidth = 130;
constexpr int kCameraWidth = 220;
constexpr int kFailureWidth = 200;
constexpr QMargins kFrame{8, 0, 8, 40}; // about what a window manager puts around a window
constexpr int kLimitStep = 100;         // megabytes

} // namespace

HealthWindow::HealthWindow(HealthBook &book, HealthWatch &watch, const SettingsFile &settings)
    : book_(book)
    , watch_(watch)
    , options_(settings)
    , table_(book)
{
    setObjectName(QStringLiteral("health"));
    setWindowTitle(tr("Health"));
    resize(kStartSize);
    makeTable();
    makeChoices();
    makeNumbers();
    arrange();
    bind();
}

void HealthWindow::makeTable()
{
    filter_ = new QLineEdit;
    filter_->setObjectName(QStringLiteral("healthFilter"));
    filter_->setAccessibleName(tr("Show cameras that contain"));
    filter_->setPlaceholderText(tr("Type to filter"));
    filter_->setClearButtonEnabled(true);
    shown_ = new QSortFilterProxyModel(this);
    shown_->setSourceModel(&table_);
    shown_->setSortRole(HealthTable::kSortRole);
    shown_->setFilterKeyColumn(-1);
    shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    view_ = new QTableView;
    view_->setObjectName(QStringLiteral("healthTable"));
    view_->setAccessibleName(tr("Cameras and how they deliver"));
    view_->setToolTip(tr("Ctrl+S sorts by the column of the cursor, and back"));
    view_->setModel(shown_);
    view_->setItemDelegateForColumn(HealthTable::Lamp, new LampDelegate(view_));
    view_->setItemDelegateForColumn(HealthTable::Day, new HourBarsDelegate(view_));
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setTabKeyNavigation(false);
    view_->setWordWrap(false);
    view_->verticalHeader()->hide();
    view_->setSortingEnabled(true);
    view_->sortByColumn(HealthTable::Lamp, Qt::DescendingOrder);
    view_->setColumnWidth(HealthTable::Camera, kCameraWidth);
    view_->setColumnWidth(HealthTable::Day, kBarsWidth);
    view_->setColumnWidth(HealthTable::Failure, kFailureWidth);
}

QCheckBox *HealthWindow::choiceBox(const QString &text, const char *name, HealthChoice choice)
{
    auto *const box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(QString(text).remove(u'&'));
    connect(box, &QCheckBox::toggled, this, [this, choice](bool on) { options_.set(choice, on); });
    return box;
}

void HealthWindow::makeChoices()
{
    room_ = new QLabel;
    room_->setObjectName(QStringLiteral("healthRoom"));
    room_->setAccessibleName(tr("Room on the disk"));
    room_->setTextFormat(Qt::PlainText);
    notices_ = choiceBox(tr("&Notices on the desktop"), "healthNotices", HealthChoice::Notices);
    mail_ = choiceBox(tr("Notices by &mail, to the alarm's recipients"), "healthMail",
                      HealthChoice::Mail);
    deletion_ = choiceBox(tr("&Delete the oldest images when the disk is nearly full"),
                          "healthDelete", HealthChoice::DeleteOldest);
    deletion_->setToolTip(tr("Until no less is free than below, or half of the disk"));
    stop_ = choiceBox(tr("&Stop the capture before the disk is full"), "healthStop",
                      HealthChoice::StopWhenFull);
    never_ = new QCheckBox(tr("The selected camera is n&ever late"));
    never_->setObjectName(QStringLiteral("healthNever"));
    never_->setAccessibleName(tr("The selected camera is never late"));
}

void HealthWindow::makeNumbers()
{
    const auto box = [](const char *name, const QString &accessibleName, const QString &tip) {
        auto *const number = new NumberBox;
        number->setObjectName(QString::fromLatin1(name));
        number->setAccessibleName(accessibleName);
        number->setToolTip(tip);
        number->setGroupSeparatorShown(true);
        return number;
    };
    lateTimes_ = box("healthLateTimes", tr("A camera is late after, times its usual interval"),
                     tr("A camera from which nothing new came for so many times its usual "
                        "interval, but at least 15 minutes, counts as late"));
    lateTimes_->setRange(1, HealthOptions::kMostTimes);
    lateTimes_->setSuffix(tr(" times its usual interval"));
    limit_ = box("healthLimit", tr("The disk is nearly full below, megabytes"),
                 tr("Below this free space the disk counts as nearly full; 0: 1 GB or 2 % of "
                    "the disk, whichever is less"));
    limit_->setRange(0, HealthOptions::kMostMegabytes);
    limit_->setSingleStep(kLimitStep);
    limit_->setSuffix(tr(" MB"));
    limit_->setSpecialValueText(tr("1 GB or 2 %"));
    connect(lateTimes_, &QSpinBox::valueChanged, this,
            [this](int times) { options_.setLateTimes(times); });
    connect(limit_, &QSpinBox::valueChanged, this,
            [this](int megabytes) { options_.setLimitMegabytes(megabytes); });
}

void HealthWindow::arrange()
{
    auto *const choices = new QGridLayout;
    choices->addWidget(notices_, 0, 0);
    choices->addWidget(mail_, 1, 0);
    choices->addWidget(deletion_, 0, 1);
    choices->addWidget(stop_, 1, 1);
    choices->addWidget(never_, 2, 0);
    const auto numberLine = [choices](const QString &text, NumberBox *number, int line,
                                      int column) {
        auto *const caption = new QLabel(text);
        caption->setBuddy(number);
        auto *const pair = new QHBoxLayout;
        pair->addWidget(caption);
        pair->addWidget(number, 1);
        choices->addLayout(pair, line, column);
    };
    numberLine(tr("A camera is &late after"), lateTimes_, 3, 0);
    numberLine(tr("The disk is nearly full &below"), limit_, 2, 1);
    auto *const lines = new QVBoxLayout(this);
    lines->addWidget(filter_);
    lines->addWidget(view_, 1);
    lines->addWidget(room_);
    lines->addLayout(choices);
}

void HealthWindow::bind()
{
    view_->installEventFilter(this);
    connect(filter_, &QLineEdit::textChanged, shown_, &QSortFilterProxyModel::setFilterFixedString);
    connect(filter_, &QLineEdit::returnPressed, this, &HealthWindow::goToCamera);
    connect(view_, &QTableView::doubleClicked, this, &HealthWindow::goToCamera);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &HealthWindow::showNever);
    connect(&table_, &HealthTable::dataChanged, this, &HealthWindow::showNever);
    connect(never_, &QCheckBox::toggled, this, &HealthWindow::setNever);
    connect(&watch_, &HealthWatch::roomChanged, this, &HealthWindow::showRoom);
    const auto key = [this](const QKeySequence &keys, auto action) {
        auto *const shortcut = new QShortcut(keys, view_);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    key(Qt::Key_Return, [this] { goToCamera(); });
    key(Qt::Key_Enter, [this] { goToCamera(); });
    key(QKeySequence::Copy, [this] { copy(); });
    key(Qt::CTRL | Qt::Key_S, [this] { sortByCursor(); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void HealthWindow::present()
{
    lateTimes_->leave();
    limit_->leave();
    if (!isVisible()) {
        filter_->clear();
    }
    book_.followTable();
    table_.refresh();
    showChoices();
    showRoom();
    if (!view_->currentIndex().isValid()) {
        view_->selectRow(0);
    }
    showNever();
    widenToTitles();
    placeFirst();
    bringToFront(*this);
    view_->setFocus();
}

// Titles are bold in some styles, and in large letters none of the usual widths would do.
void HealthWindow::widenToTitles()
{
    const QHeaderView &header = *view_->horizontalHeader();
    for (int column = 0; column < HealthTable::kColumns; ++column) {
        const int wanted = header.sectionSizeHint(column);
        if (view_->columnWidth(column) < wanted) {
            view_->setColumnWidth(column, wanted);
        }
    }
}

// The upper right corner: the browser has its buttons at its foot. Where the user moves it, it
// stays.
void HealthWindow::placeFirst()
{
    if (std::exchange(isPlaced_, true)) {
        return;
    }
    const QRect room = screen()->availableGeometry().marginsRemoved(kFrame);
    resize(size().boundedTo(room.size()));
    move(room.right() - width() + 1, room.top());
}

void HealthWindow::showChoices()
{
    const QSignalBlocker noNotices(notices_);
    const QSignalBlocker noMail(mail_);
    const QSignalBlocker noDeletion(deletion_);
    const QSignalBlocker noStop(stop_);
    const QSignalBlocker noTimes(lateTimes_);
    const QSignalBlocker noLimit(limit_);
    notices_->setChecked(options_.isOn(HealthChoice::Notices));
    mail_->setChecked(options_.isOn(HealthChoice::Mail));
    deletion_->setChecked(options_.isOn(HealthChoice::DeleteOldest));
    stop_->setChecked(options_.isOn(HealthChoice::StopWhenFull));
    lateTimes_->setValue(options_.lateTimes());
    limit_->setValue(options_.limitMegabytes());
}

// Ages grow even while nothing happens: they are updated along with the room, every few seconds.
void HealthWindow::showRoom()
{
    const std::optional<DiskRoom> room = watch_.room();
    room_->setText(room ? roomText(*room, book_.bytesADay())
                        : tr("The free space on the disk is unknown."));
    if (isVisible()) {
        table_.refresh();
    }
}

// Typing over the table filters it.
bool HealthWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == view_ && event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const QString text = key->text();
        const bool isTyped = !text.isEmpty() && text.front().isPrint() && text != u" " &&
                             !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        if (isTyped) {
            filter_->setFocus();
            filter_->insert(text);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

std::optional<CameraAddress> HealthWindow::current() const
{
    const QModelIndex index = shown_->mapToSource(view_->currentIndex());
    return index.isValid() ? std::optional(table_.address(index.row())) : std::nullopt;
}

void HealthWindow::showNever()
{
    const auto camera = current();
    const QSignalBlocker noChange(never_);
    never_->setEnabled(camera.has_value());
    never_->setChecked(camera && options_.isNever(*camera));
}

void HealthWindow::setNever(bool never)
{
    if (const auto camera = current()) {
        options_.setNever(*camera, never);
    }
}

// As a click on the title of its column does.
void HealthWindow::sortByCursor()
{
    const int column = std::max(0, view_->currentIndex().column());
    const bool isAgain = shown_->sortColumn() == column;
    const bool isUp = isAgain ? shown_->sortOrder() == Qt::DescendingOrder : true;
    view_->sortByColumn(column, isUp ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void HealthWindow::goToCamera()
{
    if (!view_->currentIndex().isValid() && shown_->rowCount() > 0) {
        view_->selectRow(0);
    }
    if (const auto camera = current()) {
        Q_EMIT cameraWanted(*camera);
    }
}

// Copies the selected rows, or all of them, as lines with tabs between the columns.
void HealthWindow::copy()
{
    QStringList lines;
    for (int row = 0; row < shown_->rowCount(); ++row) {
        const bool isAll = view_->selectionModel()->selectedRows().size() < 2;
        if (isAll || view_->selectionModel()->isRowSelected(row)) {
            QStringList cells;
            for (int column = 0; column < HealthTable::kColumns; ++column) {
                cells.append(shown_->index(row, column).data().toString());
            }
            lines.append(cells.join(u'\t'));
        }
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

} // namespace velmora
