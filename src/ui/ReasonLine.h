// The line of the main window that says why the camera of the row in hand gives no picture.
#pragma once

#include "capture/LiveView.h"
#include "ui/CameraRowBoxes.h"

#include <QLabel>

#include <optional>
#include <span>

namespace velmora {

/// The row in hand is the one that has the focus or was clicked last, until another group is shown.
/// The live view's reason, when it has one, is the newer.
class ReasonLine : public QObject
{
    Q_OBJECT

public:
    /// The rows in their order. Everything given outlives this object, which belongs to the label.
    ReasonLine(QLabel &line, std::span<CameraRowBoxes *const> rows, CameraPage &page,
               LiveView &live);

private:
    void take(int row);
    void forget(std::span<CameraRowBoxes *const> rows);
    void show();
    [[nodiscard]] QString text() const;

    QLabel &line_;
    CameraPage &page_;
    LiveView &live_;
    std::optional<int> row_;
};

} // namespace velmora
