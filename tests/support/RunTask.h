// Runs a coroutine to its end from a test.
#pragma once

#include <QCoro/QCoroTask>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <exception>
#include <memory>
#include <stdexcept>
#include <utility>

namespace velmora::test {
namespace detail {

#if __has_feature(address_sanitizer)
inline constexpr int kPatience = 10; // with an instrumented program
#else
inline constexpr int kPatience = 1;
#endif

struct TaskRun
{
    QEventLoop loop;
    std::exception_ptr error;
    bool done = false;
};

// The state is shared: a task that outlives its limit must not write to a stack that is gone.
inline QCoro::Task<> watchRun(QCoro::Task<> task, std::shared_ptr<TaskRun> run)
{
    try {
        co_await task;
    } catch (...) {
        run->error = std::current_exception();
    }
    run->done = true;
    run->loop.quit();
}

} // namespace detail

/// Runs the event loop until the task has ended. Rethrows an exception that leaves the task; throws
/// std::runtime_error if the task has not ended at the limit.
inline void runToEnd(QCoro::Task<> task, std::chrono::milliseconds limit = std::chrono::seconds{5})
{
    const auto run = std::make_shared<detail::TaskRun>();
    const QCoro::Task<> watch = detail::watchRun(std::move(task), run);
    QTimer::singleShot(limit * detail::kPatience, &run->loop, &QEventLoop::quit);
    if (!run->done) {
        run->loop.exec();
    }
    if (!run->done) {
        throw std::runtime_error("the task has not ended within its limit");
    }
    if (run->error) {
        std::rethrow_exception(run->error);
    }
}

namespace detail {

template <typename T>
QCoro::Task<> takeInto(QCoro::Task<T> task, T &result)
{
    result = co_await std::move(task);
}

} // namespace detail

/// The same for a task with a result.
template <typename T>
T resultOf(QCoro::Task<T> task, std::chrono::milliseconds limit = std::chrono::seconds{30})
{
    T result;
    runToEnd(detail::takeInto(std::move(task), result), limit);
    return result;
}

} // namespace velmora::test
