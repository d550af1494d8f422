// Which window the toolkit takes for the one with the keyboard focus.
#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>

namespace velmora {

/// As long as it lives, the window with the keyboard focus is the one that the X server names. A
/// request for the focus comes back to the program that made it, and the toolkit takes it for the
/// answer. If the window manager does not obey, since the window was minimised in that moment, for
/// instance, keys would go to that window, and do nothing, until a click into the one with the
/// focus. Where the window manager has ended, no one else answers, and the toolkit is right: keys
/// must reach a question even so.
class KeyboardFocus final : public QAbstractNativeEventFilter
{
public:
    KeyboardFocus();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    std::uint32_t request_ = 0; // the kind of message; 0 where there is no X server
};

} // namespace velmora
