#include "browser/ActionLine.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <utility>

namespace velmora {

ActionLine::ActionLine(TaskScope &scope, CameraFolders &folders, BrowserLists &lists)
    : scope_(scope)
    , folders_(folders)
    , lists_(lists)
{
}

void ActionLine::launch(Kind kind, Story story)
{
    if (isClosed_) {
        return;
    }
    if (kind == Kind::Rebuild) {
        ++rebuilds_;
        lists_.forgetChoice();
        if (isRebuilding_) {
            folders_.supersede();
        }
    }
    scope_.launch(inTurn(kind, rebuilds_, std::move(story)));
}

QCoro::Task<> ActionLine::inTurn(Kind kind, int rebuild, Story story)
{
    co_await turnstile_.enter();
    const auto atEnd = qScopeGuard([this] {
        isRebuilding_ = false;
        turnstile_.leave();
    });
    const bool isLate = kind == Kind::Walk && rebuild != rebuilds_;
    if (isClosed_ || isLate) {
        co_return;
    }
    try {
        co_await run(kind, rebuild, std::move(story));
    } catch (const Superseded &) {
        // The newer action shows the result.
    }
}

QCoro::Task<> ActionLine::run(Kind kind, int rebuild, Story story)
{
    const QScopedValueRollback acting(isActing_, true);
    isRebuilding_ = kind != Kind::Follow;
    folders_.startReadings();
    if (isRebuilding_ && rebuild != rebuilds_) {
        folders_.supersede(); // what it has stored and deleted up to its next reading still counts
    }
    co_await story();
    if (lists_.isOwed() && rebuild == rebuilds_ && !isClosed_) {
        co_await lists_.DirImage();
    }
}

void ActionLine::close()
{
    isClosed_ = true;
    folders_.supersede();
}

} // namespace velmora
