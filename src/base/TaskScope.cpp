#include "base/TaskScope.h"

#include <cassert>
#include <exception>
#include <optional>
#include <utility>

namespace velmora {

TaskScope::TaskScope(Report report)
    : report_(std::move(report))
{
}

TaskScope::~TaskScope()
{
    assert(running_ == 0 && "join() before the scope goes");
}

void TaskScope::launch(QCoro::Task<> task)
{
    ++running_;
    watch(std::move(task)); // keeps itself alive until the task has ended
}

QCoro::Task<> TaskScope::watch(QCoro::Task<> task)
{
    std::optional<QString> failure;
    try {
        co_await task;
    } catch (const std::exception &error) {
        failure = QString::fromUtf8(error.what());
    } catch (...) {
        failure.emplace();
    }
    if (failure) {
        report_(failure->isEmpty() ? QStringLiteral("unknown error") : *failure);
    }
    --running_;
    if (running_ == 0 && idle_) {
        idle_->set(true);
    }
}

QCoro::Task<> TaskScope::join()
{
    while (running_ > 0) {
        idle_ = std::make_unique<OneShot<bool>>();
        const bool idle = co_await *idle_;
        Q_UNUSED(idle);
    }
}

} // namespace velmora
