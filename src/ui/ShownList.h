// A list in a window that shows which entry is selected, but never selects one itself: it reports
// which row the user means, and the owner of the selection decides what is selected then.
#pragma once

#include "ui/HeatColour.h"

#include <QApplication>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <utility>

namespace velmora {

/// A row is chosen by a plain click of the left button, pressed and released on it, by a key that
/// moves the selection, or by a screen reader. Nothing else moves the highlight: no other button,
/// no Ctrl, no dragging, no click below the rows, no gaining of the focus. The list that has the
/// focus is outlined.
template <typename View>
class ShownList : public View
{
public:
    explicit ShownList(QWidget *parent)
        : View(parent)
    {
        View::setUniformItemSizes(true);
        View::setSelectionMode(QAbstractItemView::SingleSelection);
        View::setEditTriggers(QAbstractItemView::NoEditTriggers);
        View::setFocusPolicy(Qt::TabFocus); // a press takes the focus later, see below
        View::verticalScrollBar()->setContextMenuPolicy(
            Qt::NoContextMenu); // its menu would hold up the window
    }

    /// Highlights the selected entry; -1 for none.
    void showRow(int row)
    {
        shown_ = row;
        const QModelIndex index = row < 0 ? QModelIndex() : View::model()->index(row, 0);
        if (View::currentIndex() != index) {
            View::setCurrentIndex(index);
        }
    }

protected:
    /// The left button was pressed on a row: from now on the entry in it is meant.
    virtual void rowWasPressed(int row) = 0;

    /// The button was released where it was pressed, on that row; it may hold another entry by now.
    virtual void rowWasClicked(int row) = 0;

    /// A key was used that means this row, which may be the selected one, or a screen reader chose
    /// it; -1 in an empty list.
    virtual void rowWasKeyed(int row) = 0;

    /// A double click of the left button, on a row or below the rows (-1).
    virtual void rowWasDoubleClicked(int row) { Q_UNUSED(row); }

    /// Makes the current press mean nothing.
    void forgetPress() { pressed_ = -1; }

    [[nodiscard]] int shownRow() const { return shown_; }

    void mousePressEvent(QMouseEvent *event) override
    {
        pressed_ = -1;
        const QModelIndex index = View::indexAt(event->position().toPoint());
        if (event->button() == Qt::LeftButton && index.isValid() &&
            !event->modifiers().testFlag(Qt::ControlModifier)) {
            pressed_ = index.row();
            pressedAt_ = event->position().toPoint();
            pressedPlace_ = View::visualRect(index);
            rowWasPressed(pressed_);
        }
        // Last, because a box that loses the focus may bring other entries under the pointer.
        View::setFocus(Qt::MouseFocusReason);
    }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (event->buttons() == Qt::NoButton) {
            View::mouseMoveEvent(event);
        }
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::LeftButton || pressed_ < 0) {
            return;
        }
        const QPoint at = event->position().toPoint();
        const bool isThere = pressedPlace_.contains(at) || (at - pressedAt_).manhattanLength() <
                                                               QApplication::startDragDistance();
        const int row = std::exchange(pressed_, -1);
        if (isThere) {
            rowWasClicked(row);
        }
    }

    void mouseDoubleClickEvent(QMouseEvent *event) override
    {
        mousePressEvent(event);
        if (event->button() == Qt::LeftButton) {
            rowWasDoubleClicked(pressed_);
        }
    }

    // The toolkit moves its highlight; whether it stays there is not for it to decide.
    void keyPressEvent(QKeyEvent *event) override
    {
        View::keyPressEvent(event);
        rowWasKeyed(View::currentIndex().row());
        showRow(shown_);
    }

    void focusInEvent(QFocusEvent *event) override
    {
        View::focusInEvent(event);
        showRow(shown_);
        View::update();
    }

    void focusOutEvent(QFocusEvent *event) override
    {
        View::focusOutEvent(event);
        View::update();
    }

    // The toolkit shows the focus in rows that are not selected only.
    bool event(QEvent *event) override
    {
        const bool isDone = View::event(event);
        if (event->type() == QEvent::Paint && View::hasFocus()) {
            QPainter painter(this);
            for (const QRect side : QRegion(View::rect()) - View::rect().adjusted(1, 1, -1, -1)) {
                painter.fillRect(side, focusColour(View::palette()));
            }
        }
        return isDone;
    }

    // Later, when whatever moves both the selection and the current row has moved both.
    void selectionChanged(const QItemSelection &selected, const QItemSelection &before) override
    {
        View::selectionChanged(selected, before);
        QMetaObject::invokeMethod(this, [this] { takeSelection(); }, Qt::QueuedConnection);
    }

    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &,
                                                         const QEvent *) const override
    {
        return QItemSelectionModel::ClearAndSelect;
    }

private:
    // A screen reader changes the selection without moving the current row.
    void takeSelection()
    {
        const QModelIndex selected = View::selectionModel()->selectedIndexes().value(0);
        if (selected == View::currentIndex()) {
            return;
        }
        if (selected.isValid() && View::isEnabled()) {
            rowWasKeyed(selected.row());
        }
        View::selectionModel()->select(View::currentIndex(), QItemSelectionModel::ClearAndSelect);
    }

    int shown_ = -1;
    int pressed_ = -1;
    QPoint pressedAt_;
    QRect pressedPlace_;
};

} // namespace velmora
