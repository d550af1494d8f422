// A label whose text may be longer than there is room for.
#pragma once

#include <QLabel>

namespace velmora {

/// One line of plain text, with "…" in the middle if it does not fit. The label's text remains the
/// whole text, which is then also its tip, unless it has one of its own.
class ElideLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] bool isElided() const;
};

} // namespace velmora
