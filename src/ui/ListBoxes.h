// The lists of the image browser, telling what the user chose and which keys were used.
#pragma once

#include <QElapsedTimer>
#include <QListView>
#include <QListWidget>

namespace velmora {

/// What a user asks of the image selected in a list.
enum class ListKey { Delete, Zoom, Play };

/// A list of fixed choices, "0" to "9".
class ChoiceList : public QListWidget
{
    Q_OBJECT

public:
    explicit ChoiceList(QWidget *parent = nullptr);

    /// Selects an entry without telling.
    void showRow(int row);

    /// Gives an entry a tip, and a name by which typing finds it; both plain text, empty for none.
    void describe(int row, const QString &tip, const QString &name);

    void keyboardSearch(const QString &search) override;

Q_SIGNALS:
    /// The mouse button was released, or a key was used: this entry is selected now.
    void chosen(int row);

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString typed_; // letters of one search
    QElapsedTimer sinceTyped_;
};

/// A list over a model that may be very long.
class FileView : public QListView
{
    Q_OBJECT

public:
    explicit FileView(QWidget *parent = nullptr);

    /// Selects an entry without telling; -1 none.
    void showRow(int row);

    void reset() override;

Q_SIGNALS:
    /// The user selected an entry, with the mouse button released again or by a key.
    void chosen(int row);
    void keyUsed(velmora::ListKey key);

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    bool layingOut_ = false; // the end of a long list has no place yet
};

} // namespace velmora
