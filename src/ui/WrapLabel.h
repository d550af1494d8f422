// A label whose text may take several lines.
#pragma once

#include <QLabel>

namespace velmora {

/// Text that wraps, and is seen whole: the label is never lower than its lines at its width. The
/// toolkit's own label is cut off where the words need more lines than it had expected, and is
/// never narrower than its longest word, which may be a camera's or a path.
class WrapLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
};

} // namespace velmora
