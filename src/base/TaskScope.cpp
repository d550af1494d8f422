#include "base/TaskScope.h"

#include <cassert>
#include <cstdio>
#include <utility>

namespace velmora {
namespace {

QString textOf(const std::exception_ptr &failure)
{
    QString text;
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception &error) {
        text = QString::fromUtf8(error.what());
    } catch (...) {
        text.clear();
    }
    return text.isEmpty() ? QStringLiteral("unknown error") : text;
}

} // namespace

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
    try {
        watch(std::move(task)); // keeps itself alive until the task has ended
    } catch (...) {             // there is no memory to watch it
        --running_;
        throw;
    }
}

QCoro::Task<> TaskScope::watch(QCoro::Task<> task)
{
    std::exception_ptr failure;
    try {
        co_await task;
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        report(failure);
    }
    --running_;
    if (running_ == 0 && idle_) {
        idle_->set(true);
    }
}

// Whatever goes wrong in telling it, the task counts as ended.
void TaskScope::report(const std::exception_ptr &failure) const noexcept
{
    try {
        report_(textOf(failure));
    } catch (...) {
        std::fputs("velmora: an error could not be reported\n", stderr);
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
