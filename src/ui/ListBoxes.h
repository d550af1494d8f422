// The lists of the image browser, which report what the user chose and which keys were used.
#pragma once

#include "ui/ShownList.h"

#include <QElapsedTimer>
#include <QListView>
#include <QListWidget>

namespace velmora {

/// What a key does with the image selected in a list.
enum class ListKey { Delete, Zoom, Play };

/// A list of fixed choices, "0" to "9".
class ChoiceList : public ShownList<QListWidget>
{
    Q_OBJECT

public:
    explicit ChoiceList(QWidget *parent = nullptr);

    /// Gives an entry a tip, and a name by which typing finds it; both plain text, empty for none.
    void describe(int row, const QString &tip, const QString &name);

    /// Marks an entry red, with a line of its own in the tip, or removes the mark.
    void mark(int row, bool isLate);

    void keyboardSearch(const QString &search) override;

Q_SIGNALS:
    /// A row was clicked, or a key moved the selection to it.
    void chosen(int row);

    /// A key was used that moves nothing.
    void keyUsed();

protected:
    void rowWasPressed(int) override {}

    void rowWasClicked(int row) override { Q_EMIT chosen(row); }

    void rowWasKeyed(int row) override;

private:
    void showTip(int row);

    QString typed_; // letters typed in one search
    QElapsedTimer sinceTyped_;
};

/// A list over a model that may be very long and change at any time.
class FileView : public ShownList<QListView>
{
    Q_OBJECT

public:
    explicit FileView(QWidget *parent = nullptr);

    void reset() override;

Q_SIGNALS:
    /// The left button was pressed on a row.
    void rowPressed(int row);

    /// And was released there; the row may hold another entry by now.
    void rowReleased(int row);

    /// A key moved the selection to this row.
    void chosen(int row);

    /// One of the keys that act on the selected entry; once each time it is pressed.
    void keyUsed(velmora::ListKey key);

    /// A double click, on a row or below the rows (-1).
    void opened(int row);

protected:
    void rowWasPressed(int row) override { Q_EMIT rowPressed(row); }

    void rowWasClicked(int row) override { Q_EMIT rowReleased(row); }

    void rowWasKeyed(int row) override;

    void rowWasDoubleClicked(int row) override { Q_EMIT opened(row); }

    void keyPressEvent(QKeyEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    [[nodiscard]] static int rowsMoved(CursorAction action, int page, int last);

    bool layingOut_ = false; // the end of a long list is not laid out yet
};

} // namespace velmora
