// A label whose text may be longer than there is room for.
#pragma once

#include <QLabel>

namespace velmora {

/// One line of plain text, with "…" in its middle where it does not fit. The whole text stays the
/// label's text.
class ElideLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace velmora
