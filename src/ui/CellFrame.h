// The frame around a cell of the contact sheet.
#pragma once

#include <QWidget>

namespace velmora {

/// Lies over its cell, lets the mouse through, and is drawn only while the cell is selected.
class CellFrame : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE setBorderStyle)

public:
    explicit CellFrame(QWidget *parent = nullptr);

    /// 1 around the selected cell, else 0.
    [[nodiscard]] int BorderStyle() const { return style_; }

    void setBorderStyle(int style);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int style_ = 0;
};

} // namespace velmora
