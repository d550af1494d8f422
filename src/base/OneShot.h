// A value delivered once to the coroutine waiting for it.
#pragma once

#include <QCoreApplication>

#include <coroutine>
#include <optional>
#include <utility>

namespace velmora {

/// The first value set wins; later ones are ignored. The waiting coroutine (one at most) is resumed
/// from the event loop, never inside set(). Must outlive its waiter.
template <typename T>
class OneShot
{
public:
    OneShot() = default;
    Q_DISABLE_COPY_MOVE(OneShot)
    ~OneShot() = default;

    struct Awaiter
    {
        OneShot *shot;

        [[nodiscard]] bool await_ready() const noexcept { return shot->value_.has_value(); }

        void await_suspend(std::coroutine_handle<> waiter) const noexcept
        {
            shot->waiter_ = waiter;
        }

        [[nodiscard]] T await_resume() const
        {
            return std::move(
                *shot->value_); // NOLINT(bugprone-unchecked-optional-access): set before the resume
        }
    };

    Awaiter operator co_await() noexcept { return Awaiter{this}; }

    void set(T value)
    {
        if (value_) {
            return;
        }
        value_.emplace(std::move(value));
        if (waiter_) {
            QMetaObject::invokeMethod(
                qApp, [waiter = waiter_] { waiter.resume(); }, Qt::QueuedConnection);
        }
    }

private:
    std::optional<T> value_;
    std::coroutine_handle<> waiter_;
};

} // namespace velmora
