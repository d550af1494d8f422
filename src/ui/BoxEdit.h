// A text box that tells when it is entered, left and clicked.
#pragma once

#include <QLineEdit>

namespace velmora {

class BoxEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit BoxEdit(QWidget *parent = nullptr);

Q_SIGNALS:
    void entered();

    /// The focus went elsewhere, another program included; a menu of the box itself is not
    /// elsewhere.
    void left();

    void clicked();

    /// Enter, of either part of the keyboard.
    void enterPressed();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace velmora
