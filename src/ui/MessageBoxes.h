// Plain messages about problems, in one box at a time.
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QStringList>

namespace velmora {

/// A box of plain text with "OK" over the active window, which need not be answered; deleted when
/// it is closed, and not before: it outlives a dialog over which it was opened.
[[nodiscard]] QMessageBox *newWarningBox(const QString &title);

/// False as well for one that was answered and is about to be deleted.
[[nodiscard]] bool isOpen(const QMessageBox *box);

/// A message that arrives while an earlier one is still open is added to its box, so that a damaged
/// file with a hundred wrong numbers gives one box.
class MessageBoxes : public QObject
{
    Q_OBJECT

public:
    /// Shows a warning; does not wait for the answer.
    void warn(const QString &text);

    /// Puts a warning from before there was any window above this one, which would cover it.
    void standAbove(QWidget &window);

private:
    QPointer<QMessageBox> box_;
    QStringList texts_;
};

} // namespace velmora
