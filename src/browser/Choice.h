// The group and the camera that the user chose last, which may have to wait for their turn.
#pragma once

#include "browser/ActionLine.h"

#include <optional>

namespace velmora {

class Choice
{
public:
    /// Everything given outlives the object.
    Choice(const BrowserData &data, Selection &selection, BrowserLists &lists, ActionLine &line);

    /// Shown as chosen while it is still waiting.
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
    std::optional<int> nextGroup_; // chosen, not yet taken
    std::optional<int> nextRow_;
};

} // namespace velmora
