#include "ui/ListBoxes.h"

#include "ui/LateColour.h"
#include "ui/ToolTips.h"

#include <QKeyEvent>

#include <algorithm>
#include <optional>

namespace velmora {
namespace {

constexpr int kChoices = 10;
constexpr int kNameRole = Qt::UserRole;
constexpr int kTipRole = Qt::UserRole + 1;
constexpr int kLateRole = Qt::UserRole + 2;
constexpr qint64 kTypingMs = 1000;    // between the letters of one search
constexpr int kLaidOutAtOnce = 20000; // half a millisecond's work

std::optional<ListKey> listKey(int key)
{
    switch (key) {
    case Qt::Key_Delete:
        return ListKey::Delete;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return ListKey::Zoom;
    case Qt::Key_Space:
        return ListKey::Play;
    default:
        return std::nullopt;
    }
}

} // namespace

ChoiceList::ChoiceList(QWidget *parent)
    : ShownList(parent)
{
    for (int choice = 0; choice < kChoices; ++choice) {
        auto *const item = new QListWidgetItem(QString::number(choice), this);
        item->setTextAlignment(Qt::AlignCenter);
    }
}

void ChoiceList::describe(int row, const QString &tip, const QString &name)
{
    item(row)->setData(kTipRole, tip);
    item(row)->setData(kNameRole, name);
    showTip(row);
}

// The selected row has the selection's colour; its bold number still shows it.
void ChoiceList::mark(int row, bool isLate)
{
    QFont font = item(row)->font();
    font.setBold(isLate);
    item(row)->setFont(font);
    item(row)->setForeground(isLate ? QBrush(lateColour(palette())) : QBrush());
    item(row)->setData(kLateRole, isLate);
    showTip(row);
}

void ChoiceList::showTip(int row)
{
    QStringList lines{item(row)->data(kTipRole).toString()};
    if (item(row)->data(kLateRole).toBool()) {
        lines.append(lateText());
    }
    lines.removeAll(QString());
    const QString tip = lines.join(u'\n');
    item(row)->setData(Qt::AccessibleDescriptionRole, tip);
    item(row)->setToolTip(plainTip(tip));
}

// A digit chooses that number; other letters begin a name, or a word in it.
void ChoiceList::keyboardSearch(const QString &search)
{
    typed_ = sinceTyped_.isValid() && sinceTyped_.elapsed() < kTypingMs ? typed_ + search : search;
    sinceTyped_.start();
    const auto starts = [this](int row) {
        const QString name = item(row)->data(kNameRole).toString();
        return name.startsWith(typed_, Qt::CaseInsensitive) ||
               name.contains(u' ' + typed_, Qt::CaseInsensitive);
    };
    const bool isNumber = typed_.size() == 1 && typed_.front().isDigit();
    for (int row = 0; row < count() && !isNumber; ++row) {
        if (starts(row)) {
            setCurrentRow(row);
            return;
        }
    }
    QListWidget::keyboardSearch(search);
}

void ChoiceList::rowWasKeyed(int row)
{
    if (row == shownRow()) {
        Q_EMIT keyUsed();
    } else {
        Q_EMIT chosen(row);
    }
}

FileView::FileView(QWidget *parent)
    : ShownList(parent)
{
    setLayoutMode(Batched);
    setBatchSize(kLaidOutAtOnce);
    setItemDelegate(new ElidedTips(this));
}

void FileView::reset()
{
    layingOut_ = true;
    QListView::reset();
}

// The list is laid out a part at a time; the selected entry is scrolled to as soon as it is laid
// out.
void FileView::timerEvent(QTimerEvent *event)
{
    QListView::timerEvent(event);
    if (layingOut_ && model() != nullptr) {
        scrollTo(currentIndex());
        layingOut_ = !visualRect(model()->index(model()->rowCount() - 1, 0)).isValid();
    }
}

int FileView::rowsMoved(CursorAction action, int page, int last)
{
    switch (action) {
    case MoveUp:
    case MovePrevious:
        return -1;
    case MoveDown:
    case MoveNext:
        return 1;
    case MovePageUp:
        return -page;
    case MovePageDown:
        return page;
    case MoveHome:
        return -last;
    case MoveEnd:
        return last;
    case MoveLeft:
    case MoveRight:
        break;
    }
    return 0;
}

// From a row that is not laid out yet, the toolkit lets every key lead to the first one.
QModelIndex FileView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex current = currentIndex();
    if (!layingOut_ || !current.isValid()) {
        return QListView::moveCursor(action, modifiers);
    }
    const int last = model()->rowCount() - 1;
    const int height = std::max(1, sizeHintForRow(current.row()));
    const int page = std::max(1, viewport()->height() / height - 1); // one row stays in sight
    const int row = current.row() + rowsMoved(action, page, last);
    return model()->index(std::clamp(row, 0, last), 0);
}

void FileView::keyPressEvent(QKeyEvent *event)
{
    if (const auto key = listKey(event->key())) {
        if (!event->isAutoRepeat()) {
            Q_EMIT keyUsed(*key);
        }
    } else {
        ShownList::keyPressEvent(event);
    }
}

void FileView::rowWasKeyed(int row)
{
    if (row >= 0 && row != shownRow()) {
        Q_EMIT chosen(row);
    }
}

} // namespace velmora
