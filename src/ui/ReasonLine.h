// The line of the main window that says why the current row's camera gives no picture.
#pragma once

#include "ui/CameraRowBoxes.h"
#include "view/LiveView.h"

#include <QLabel>

#include <optional>
#include <span>

namespace velmora {

/// The current row is the one that has the focus or was clicked last, until another group is shown.
/// If the live view has a reason, it takes precedence as the newer one.
class ReasonLine : public QObject
{
    Q_OBJECT

public:
    /// The rows in order. Everything passed in outlives this object, which belongs to the label.
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
