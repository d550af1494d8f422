// A label whose text may be longer than there is room for.
#pragma once

#include <QLabel>

namespace velmora {

/// One line of plain text, with "…" in the middle, or where else it is wanted, if it does not fit.
/// The label's text remains the whole text.
class ElideLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(Qt::TextElideMode elideMode READ elideMode WRITE setElideMode)

public:
    using QLabel::QLabel;

    [[nodiscard]] Qt::TextElideMode elideMode() const { return mode_; }

    void setElideMode(Qt::TextElideMode mode) { mode_ = mode; }

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::TextElideMode mode_ = Qt::ElideMiddle;
};

} // namespace velmora
