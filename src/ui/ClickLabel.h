// A label that acts when it is clicked, with the mouse or the keyboard.
#pragma once

#include <QLabel>

namespace velmora {

/// Gives a label the fixed size of its widest text. Otherwise a text that changes with every
/// capture would lay out the whole window again, and move what is beside it.
void holdSize(QLabel &label, const QString &widestText);

/// True for Space and Enter, which click whatever has the focus, once each time they are pressed.
[[nodiscard]] bool isClickKey(const QKeyEvent &event);

/// Draws the focus frame of a widget.
void paintFocus(QWidget &widget);

class ClickLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickLabel(QWidget *parent = nullptr);

Q_SIGNALS:
    /// Before each click.
    void pressed();
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace velmora
