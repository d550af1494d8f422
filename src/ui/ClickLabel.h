// A label that acts when it is clicked, with the mouse or the keyboard.
#pragma once

#include <QLabel>

namespace velmora {

/// Gives a label the size of its widest text and lets it keep it. A text that changes with every
/// capture would otherwise lay the whole window out anew, and move what stands beside it.
void holdSize(QLabel &label, const QString &widestText);

/// Space and Enter, which click what has the focus.
[[nodiscard]] bool isClickKey(const QKeyEvent &event);

/// Draws the frame of the widget that has the focus.
void paintFocus(QWidget &widget);

class ClickLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickLabel(QWidget *parent = nullptr);

Q_SIGNALS:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace velmora
