// Which window the toolkit takes for the one with the keyboard focus.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <chrono>

namespace velmora {

/// The toolkit takes a window that asked for the keyboard focus for the one that has it, whether
/// the window manager agrees or not. A window minimised in the moment in which it asks does not get
/// it: until a click, shortcuts and access keys would do nothing, while the window manager shows
/// the window before as the one with the focus. As long as this lives, that one then asks for
/// itself.
class KeyboardFocus final : public QObject
{
    Q_OBJECT

public:
    /// settling: how long a window manager may take to restore a window that it gave the focus.
    explicit KeyboardFocus(std::chrono::milliseconds settling);

private:
    void windowChanged(QWindow *window);
    void check();

    std::chrono::milliseconds settling_;
    QPointer<QWindow> current_;
    QPointer<QWindow> before_;
};

} // namespace velmora
