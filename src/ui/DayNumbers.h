// The numbers of a month's days above their columns.
#pragma once

#include <QWidget>

namespace velmora {

class DayNumbers : public QWidget
{
    Q_OBJECT

public:
    explicit DayNumbers(QWidget *parent);

    /// Left edge of the first column and width of each, in pixels. Where columns are too narrow
    /// for numbers side by side, only the first and every fifth is shown.
    void setColumns(int left, int width);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int left_ = 0;
    int width_ = 0;
};

} // namespace velmora
