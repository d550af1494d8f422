// The group and camera that the user chose last, which may have to wait their turn.
#pragma once

#include "browser/ActionLine.h"

#include <optional>

namespace velmora {

class Choice
{
public:
    /// Everything passed in outlives the object.
    Choice(const BrowserData &data, Selection &selection, BrowserLists &lists, ActionLine &line);

    /// Shown as chosen even while it is waiting.
    [[nodiscard]] CameraAddress now() const;

    void takeGroup(int group);
    void takeCamera(int row);

private:
    QCoro::Task<> showGroup(int group);
    QCoro::Task<> showCamera(int row);

    const BrowserData &data_;
    Selection &selection_;
    BrowserLists &lists_;
    ActionLine &line_;
    std::optional<int> nextGroup_; // chosen, but not yet applied
    std::optional<int> nextRow_;
};

} // namespace velmora
