#include "ui/ListBoxes.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <optional>

namespace velmora {
namespace {

constexpr int kChoices = 10;
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
    : QListWidget(parent)
{
    for (int choice = 0; choice < kChoices; ++choice) {
        auto *const item = new QListWidgetItem(QString::number(choice), this);
        item->setTextAlignment(Qt::AlignCenter);
    }
    setUniformItemSizes(true);
    verticalScrollBar()->setContextMenuPolicy(
        Qt::NoContextMenu); // its menu would hold up the window
}

void ChoiceList::showRow(int row)
{
    setCurrentRow(row);
}

void ChoiceList::mouseReleaseEvent(QMouseEvent *event)
{
    QListWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && currentRow() >= 0) {
        Q_EMIT chosen(currentRow());
    }
}

void ChoiceList::keyPressEvent(QKeyEvent *event)
{
    QListWidget::keyPressEvent(event);
    if (currentRow() >= 0) {
        Q_EMIT chosen(currentRow());
    }
}

FileView::FileView(QWidget *parent)
    : QListView(parent)
{
    setUniformItemSizes(true);
    verticalScrollBar()->setContextMenuPolicy(
        Qt::NoContextMenu); // its menu would hold up the window
    setLayoutMode(Batched);
    setBatchSize(kLaidOutAtOnce);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
}

void FileView::showRow(int row)
{
    const QModelIndex index = row < 0 ? QModelIndex() : model()->index(row, 0);
    if (currentIndex() != index) {
        setCurrentIndex(index);
    }
}

void FileView::reset()
{
    layingOut_ = true;
    QListView::reset();
}

// The list is laid out a part at a time; the selected entry comes into view as soon as it has its
// place.
void FileView::timerEvent(QTimerEvent *event)
{
    QListView::timerEvent(event);
    if (layingOut_ && model() != nullptr) {
        scrollTo(currentIndex());
        layingOut_ = !visualRect(model()->index(model()->rowCount() - 1, 0)).isValid();
    }
}

void FileView::mouseReleaseEvent(QMouseEvent *event)
{
    QListView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && currentIndex().isValid()) {
        Q_EMIT chosen(currentIndex().row());
    }
}

void FileView::keyPressEvent(QKeyEvent *event)
{
    if (const auto key = listKey(event->key())) {
        Q_EMIT keyUsed(*key);
        return;
    }
    const QModelIndex before = currentIndex();
    QListView::keyPressEvent(event);
    if (currentIndex().isValid() && currentIndex() != before) {
        Q_EMIT chosen(currentIndex().row());
    }
}

} // namespace velmora
