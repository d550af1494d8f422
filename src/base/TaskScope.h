// Owns running coroutines.
#pragma once

#include "base/OneShot.h"

#include <QCoro/QCoroTask>
#include <QString>

#include <exception>
#include <functional>
#include <memory>
#include <stop_token>

namespace velmora {

/// Coroutines are started in a scope owned by the service whose data they use, and the scope is
/// joined before that service is destroyed: requestStop(), then co_await join(). An exception that
/// leaves a coroutine goes to `report` as text; one that leaves `report` itself is lost, but the
/// coroutine still counts as ended.
class TaskScope
{
public:
    using Report = std::function<void(const QString &text)>;

    explicit TaskScope(Report report);
    Q_DISABLE_COPY_MOVE(TaskScope)

    /// Nothing may be running by then.
    ~TaskScope();

    [[nodiscard]] std::stop_token stopToken() const { return stop_.get_token(); }

    /// Asks all that runs to end soon.
    void requestStop() { stop_.request_stop(); }

    [[nodiscard]] int running() const { return running_; }

    /// Keeps the coroutine until it ends.
    void launch(QCoro::Task<> task);

    /// Waits until nothing is running. One waiter at a time.
    QCoro::Task<> join();

private:
    QCoro::Task<> watch(QCoro::Task<> task);
    void report(const std::exception_ptr &failure) const noexcept;

    Report report_;
    std::stop_source stop_;
    std::unique_ptr<OneShot<bool>> idle_;
    int running_ = 0;
};

} // namespace velmora
