#include "ui/CameraRowBoxes.h"

#include "ui/LateColour.h"
#include "ui/ShownSwitch.h"
#include "ui/ToolTips.h"

#include <QAction>
#include <QEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

// Of an address: the window fits on small screens in large letters.
constexpr int kLeastLetters = 15;

} // namespace

CameraRowBoxes::CameraRowBoxes(int row, QGridLayout &grid, CameraPage &page)
    : QObject(grid.parentWidget())
    , row_(row)
    , page_(page)
    , n(new ClickLabel)
    , SB(new Lamp)
    , Source(new AddressEdit)
    , AutoDelay(new QCheckBox)
    , BestTime(new ClickLabel)
    , TimeLoad(new QLabel)
    , lNew(new QLabel)
    , EffM(new QCheckBox)
{
    place(grid);
    setNames();
    setTips();
    bind();
    offerSheet();
}

std::array<QWidget *, 8> CameraRowBoxes::boxes() const
{
    return {n, SB, Source, AutoDelay, BestTime, TimeLoad, lNew, EffM};
}

void CameraRowBoxes::place(QGridLayout &grid)
{
    const int line = row_ + 1; // below the headings
    int column = 0;
    for (QWidget *const box : boxes()) {
        const bool fills = box == Source;
        grid.addWidget(box, line, column++, fills ? Qt::Alignment() : Qt::AlignCenter);
    }
    n->setText(QString::number(row_));
    n->setAlignment(Qt::AlignCenter);
    n->setMinimumWidth(n->fontMetrics().averageCharWidth() * 3);
    n->setForegroundRole(QPalette::Link);
    EffM->setText(QStringLiteral("EffM"));
    Source->setMinimumWidth(Source->fontMetrics().averageCharWidth() * kLeastLetters);
    for (QLabel *const counter : {TimeLoad, lNew}) {
        counter->setAlignment(Qt::AlignCenter);
        holdSize(*counter, QStringLiteral("000000"));
    }
    BestTime->setAlignment(Qt::AlignCenter);
    holdSize(*BestTime, QStringLiteral("00:00:00"));
}

void CameraRowBoxes::setNames()
{
    const auto name = [this](QWidget *box, QStringView word, const QString &meaning) {
        box->setObjectName(word.toString() + QString::number(row_));
        box->setAccessibleName(meaning.arg(row_));
    };
    name(n, u"n", tr("Folder of camera %1"));
    name(SB, u"SB", tr("State of camera %1"));
    name(Source, u"Source", tr("Address of camera %1"));
    name(AutoDelay, u"AutoDelay", tr("Automatic period of camera %1"));
    name(BestTime, u"BestTime", tr("Refresh time of camera %1"));
    name(TimeLoad, u"TimeLoad", tr("Seconds that the last download of camera %1 took"));
    name(lNew, u"lNew", tr("New images of camera %1"));
    name(EffM, u"EffM", tr("Delete images of camera %1 after one month"));
}

void CameraRowBoxes::setTips()
{
    n->setToolTip(QStringLiteral("Click to open Dir"));
    Source->setToolTip(QStringLiteral("Enter link"));
    AutoDelay->setToolTip(QStringLiteral("Auto delay"));
    BestTime->setToolTip(QStringLiteral("Refresh time. Click to set 0"));
    TimeLoad->setToolTip(row_ == kRows - 1 ? QStringLiteral("Time loading")
                                           : QStringLiteral("Time of loading"));
    lNew->setToolTip(QStringLiteral("New loading since the last reset"));
}

void CameraRowBoxes::bind()
{
    for (QWidget *const box : boxes()) {
        box->installEventFilter(this);
    }
    connect(n, &ClickLabel::clicked, this, [this] { Q_EMIT folderClicked(row_); });
    connect(Source, &BoxEdit::textChanged, this, &CameraRowBoxes::changeAddress);
    connect(Source, &BoxEdit::clicked, this, [this] { page_.clickSource(row_, Source->text()); });
    connect(Source, &BoxEdit::enterPressed, this,
            [this] { page_.clickSource(row_, Source->text()); });
    connect(Source, &BoxEdit::left, this, &CameraRowBoxes::storeAddress);
    connect(Source, &AddressEdit::linesPasted, this,
            [this](const QStringList &addresses) { Q_EMIT linesPasted(row_, addresses); });
    connect(BestTime, &ClickLabel::pressed, this, [this] { resetFor_ = page_.shownCamera(row_); });
    connect(BestTime, &ClickLabel::clicked, this, &CameraRowBoxes::resetBestTime);
    bindSwitch(*AutoDelay, &CameraPage::setAutomatic);
    bindSwitch(*EffM, &CameraPage::setDeleteOld);
}

// A press is meant for the camera that the row showed then: another's images must not be deleted
// for it.
void CameraRowBoxes::bindSwitch(QCheckBox &box, void (CameraPage::*set)(int row, bool on))
{
    connect(&box, &QCheckBox::pressed, this, [this] { pressedFor_ = page_.shownCamera(row_); });
    connect(&box, &QCheckBox::toggled, this, [this, set](bool on) {
        if (page_.isStillThere(pressedFor_.value_or(page_.shownCamera(row_)))) {
            (page_.*set)(row_, on);
        }
    });
    connect(&box, &QCheckBox::released, this, [this] {
        pressedFor_.reset();
        showSwitches();
    });
}

void CameraRowBoxes::resetBestTime()
{
    if (page_.isStillThere(resetFor_)) {
        page_.resetBestTime(row_);
    }
}

QAction *CameraRowBoxes::action(const QString &text, Qt::Key key)
{
    auto *const made = new QAction(text, this);
    made->setShortcut(key);
    made->setShortcutContext(Qt::WidgetShortcut);
    return made;
}

// Opens further windows: from the row's menu, or by a key in its boxes.
void CameraRowBoxes::offerSheet()
{
    const QList<QAction *> offered{action(tr("Camera's sheet…"), Qt::Key_F4),
                                   action(tr("Many cameras…"), Qt::Key_F6)};
    connect(offered[0], &QAction::triggered, this, [this] { Q_EMIT sheetWanted(row_); });
    connect(offered[1], &QAction::triggered, this, &CameraRowBoxes::listWanted);
    for (QWidget *const box :
         std::initializer_list<QWidget *>{Source, AutoDelay, BestTime, EffM, n}) {
        box->addActions(offered);
    }
    for (QWidget *const label : std::initializer_list<QWidget *>{n, SB, TimeLoad, lNew}) {
        label->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(label, &QWidget::customContextMenuRequested, this,
                [label, offered](const QPoint &place) {
                    auto *const menu = new QMenu(label);
                    menu->setAttribute(Qt::WA_DeleteOnClose);
                    menu->addActions(offered);
                    menu->popup(label->mapToGlobal(place));
                });
    }
}

void CameraRowBoxes::showRow()
{
    showAddress(page_.row(row_).url);
    page_.restoreSource(row_);
    showChoices();
}

void CameraRowBoxes::refreshRow()
{
    const bool isEdited = Source->isInHand() && isTyped_;
    if (isEdited || Source->text() == page_.row(row_).url) {
        showChoices();
    } else {
        showRow();
    }
}

void CameraRowBoxes::showChoices()
{
    showSwitches();
    showName();
    showCounters();
}

void CameraRowBoxes::showSwitches()
{
    showSwitch(*AutoDelay, page_.row(row_).automatic);
    showSwitch(*EffM, page_.row(row_).deleteOld);
}

// A name goes below a box's own tip; without one the tips are as usual.
void CameraRowBoxes::showName()
{
    const QString name = page_.title(row_);
    const QString tip = QStringLiteral("Enter link");
    setPlainToolTip(*Source, name.isEmpty() ? tip : tip + u'\n' + name);
    showReason();
}

void CameraRowBoxes::showReason()
{
    QStringList tip{page_.title(row_), page_.reason(row_)};
    tip.removeAll(QString());
    setPlainToolTip(*SB, tip.join(u'\n'));
}

// Like the folder's link but red, and in words for those who see no colours.
void CameraRowBoxes::showLate(bool late)
{
    QPalette colours = QGuiApplication::palette();
    if (late) {
        colours.setColor(QPalette::Link, lateColour(colours));
    }
    n->setPalette(colours);
    n->setAccessibleDescription(late ? lateText() : QString());
}

void CameraRowBoxes::showCounters()
{
    const CameraRow &row = page_.row(row_);
    SB->setColour(row.lamp);
    showReason();
    BestTime->setText(row.bestTime.text());
    TimeLoad->setText(QString::number(row.loadSeconds));
    lNew->setText(QString::number(row.newImages));
}

bool CameraRowBoxes::hasFocus() const
{
    return std::ranges::any_of(boxes(), [](const QWidget *box) { return box->hasFocus(); });
}

bool CameraRowBoxes::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress) {
        Q_EMIT taken(row_);
    }
    return QObject::eventFilter(watched, event);
}

QWidget *CameraRowBoxes::orderTabs(QWidget &before)
{
    QWidget *last = &before;
    for (QWidget *const box :
         std::initializer_list<QWidget *>{Source, AutoDelay, BestTime, EffM, n}) {
        QWidget::setTabOrder(last, box);
        last = box;
    }
    return last;
}

void CameraRowBoxes::showAddress(const QString &address)
{
    const QSignalBlocker noSource(Source);
    Source->setText(address);
    Source->setCursorPosition(0);
    isTyped_ = false;
}

// Text may also be dropped into the box: it is stored when the box is left, as any other.
void CameraRowBoxes::changeAddress(const QString &text)
{
    Source->beginEdit();
    isTyped_ = true;
    page_.changeSource(row_, text);
}

// The stored address may lack surrounding blanks.
void CameraRowBoxes::storeAddress()
{
    page_.leaveSource(row_, Source->text());
    if (Source->text() != page_.row(row_).url) {
        showAddress(page_.row(row_).url);
    }
    showName(); // which goes with a camera that is taken away
    isTyped_ = false;
}

void CameraRowBoxes::fill(const QString &address)
{
    showAddress(address);
    page_.fillSource(row_, address);
    if (Source->isInHand()) {
        Source->leave();
    } else {
        storeAddress();
    }
}

} // namespace velmora
