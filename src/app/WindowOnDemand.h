// A window that is made when it is first wanted: the first window of the start would wait for it.
#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <utility>

namespace velmora {

template <typename Window>
class WindowOnDemand
{
public:
    using Make = std::function<std::unique_ptr<Window>()>;

    explicit WindowOnDemand(Make make)
        : make_(std::move(make))
    {
    }

    Q_DISABLE_COPY_MOVE(WindowOnDemand)
    ~WindowOnDemand() = default;

    /// `connect` is called with the window once, as soon as it is made.
    void onMade(std::function<void(Window &)> connect) { connect_ = std::move(connect); }

    /// Made if it was not wanted before.
    [[nodiscard]] Window &wanted()
    {
        if (!window_) {
            window_ = make_();
            connect_(*window_);
        }
        return *window_;
    }

    [[nodiscard]] bool isVisible() const { return window_ && window_->isVisible(); }

    void close()
    {
        if (window_) {
            window_->close();
        }
    }

private:
    Make make_;
    std::function<void(Window &)> connect_ = [](Window &) {};
    std::unique_ptr<Window> window_;
};

} // namespace velmora
