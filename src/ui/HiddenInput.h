// What was pressed in a window before it went.
#pragma once

#include <QObject>

namespace velmora {

/// As long as it lives, windows that are hidden take no presses, keys or turns of the wheel: some
/// may wait behind others, and a button that was pressed by its access key is clicked a tenth of a
/// second later.
class HiddenInput : public QObject
{
    Q_OBJECT

public:
    explicit HiddenInput(QObject *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace velmora
