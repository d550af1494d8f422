// A scroll area for a window that must also fit on a low screen.
#pragma once

#include <QScrollArea>

namespace velmora {

/// As high as its content; where the window has less room it scrolls, but never sideways, and to
/// the control that gets the focus by a key. Of the room beyond, it takes nothing.
class ShrinkingArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit ShrinkingArea(QWidget *parent = nullptr);
    Q_DISABLE_COPY_MOVE(ShrinkingArea)
    ~ShrinkingArea() override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;

private:
    void showFocus(QWidget *now);
};

} // namespace velmora
