// The line in which the browser's actions wait, so that none finds another half done.
#pragma once

#include "base/TaskScope.h"
#include "base/Turnstile.h"
#include "browser/BrowserLists.h"

#include <functional>

namespace velmora {

/// Actions that read folders run one after the other. One that rebuilds the display takes the place
/// of any other such action that has not ended, since that one would only be painted over; a
/// display that is still unfinished at the end of an action is finished then.
class ActionLine
{
public:
    enum class Kind {
        Rebuild, // builds the whole display, in place of any that came before
        Walk,    // builds it too, unless another building is wanted by then
        Follow   // goes on from the display as it is
    };
    using Story = std::function<QCoro::Task<>()>;

    /// Everything given outlives the object, which outlives what runs in the scope.
    ActionLine(TaskScope &scope, CameraFolders &folders, BrowserLists &lists);

    void launch(Kind kind, Story story);

    /// An action is being done; others may be waiting.
    [[nodiscard]] bool isActing() const { return isActing_; }

    /// Nothing is begun any more, and what is reading ends.
    void close();

    [[nodiscard]] bool isClosed() const { return isClosed_; }

private:
    QCoro::Task<> inTurn(Kind kind, int rebuild, Story story);
    QCoro::Task<> run(Kind kind, int rebuild, Story story);

    TaskScope &scope_;
    CameraFolders &folders_;
    BrowserLists &lists_;
    Turnstile turnstile_;
    int rebuilds_ = 0; // that were wanted so far
    bool isActing_ = false;
    bool isRebuilding_ = false;
    bool isClosed_ = false;
};

} // namespace velmora
