#include "ui/KeyboardFocus.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace velmora {
namespace {

constexpr std::uint8_t kKind = 0x7f; // of an event; the other bit says that a program sent it

template <typename Reply>
using Received = std::unique_ptr<Reply, decltype(&std::free)>;

// Nothing without one: a platform without a screen has the interface all the same, with no
// connection behind it.
xcb_connection_t *xServer()
{
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

std::uint32_t numberOf(std::string_view name, xcb_connection_t *server)
{
    const xcb_intern_atom_cookie_t asked =
        xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Received<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, asked, nullptr),
                                                  &std::free);
    return reply == nullptr ? 0 : reply->atom;
}

// One that has ended may have left all else that tells of it.
bool hasWindowManager(xcb_connection_t *server)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const Received<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(server, xcb_get_window_attributes(server, root), nullptr),
        &std::free);
    return reply != nullptr && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

} // namespace

KeyboardFocus::KeyboardFocus()
{
    if (xcb_connection_t *const server = xServer()) {
        request_ = numberOf("_NET_ACTIVE_WINDOW", server);
        qGuiApp->installNativeEventFilter(this);
    }
}

bool KeyboardFocus::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto &event = *static_cast<const xcb_client_message_event_t *>(message);
    return (event.response_type & kKind) == XCB_CLIENT_MESSAGE && event.type == request_ &&
           hasWindowManager(xServer());
}

} // namespace velmora
