// The queue of the browser's actions, so that none finds another half done.
#pragma once

#include "base/TaskScope.h"
#include "base/Turnstile.h"
#include "browser/BrowserLists.h"

#include <functional>

namespace velmora {

/// Actions that read folders run one after another. One that rebuilds the display supersedes any
/// other rebuild that has not ended, since its result would only be painted over; a display left
/// unfinished by an action is completed at its end.
class ActionLine
{
public:
    enum class Kind {
        Rebuild, // builds the whole display, superseding earlier ones
        Walk,    // builds it too, unless another rebuild is wanted by then
        Follow   // continues from the display as it is
    };
    using Story = std::function<QCoro::Task<>()>;

    /// Everything passed in outlives the object, which outlives what runs in the scope.
    ActionLine(TaskScope &scope, CameraFolders &folders, BrowserLists &lists);

    /// Runs an action once the earlier ones have ended; a rebuild ends those that are still
    /// reading.
    void launch(Kind kind, Story story);

    /// An action is running; others may be waiting.
    [[nodiscard]] bool isActing() const { return isActing_; }

    /// Nothing new is started, and what is reading ends.
    void close();

    [[nodiscard]] bool isClosed() const { return isClosed_; }

private:
    QCoro::Task<> inTurn(Kind kind, int rebuild, Story story);
    QCoro::Task<> run(Kind kind, int rebuild, Story story);

    TaskScope &scope_;
    CameraFolders &folders_;
    BrowserLists &lists_;
    Turnstile turnstile_;
    int rebuilds_ = 0; // requested so far
    bool isActing_ = false;
    bool isRebuilding_ = false;
    bool isClosed_ = false;
};

} // namespace velmora
