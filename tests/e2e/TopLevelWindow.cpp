#include "e2e/TopLevelWindow.h"

#include <QByteArray>
#include <QList>

#include <cstdlib>
#include <functional>
#include <memory>

#include <xcb/xcb.h>

namespace {

template<typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template<typename T>
Reply<T> own(T *reply) {
    return {reply, &std::free};
}

/// A connection to the display, and what is asked over it.
class Display {
public:
    Display() : m_connection(xcb_connect(nullptr, nullptr)) {}
    ~Display() { xcb_disconnect(m_connection); }
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;

    xcb_connection_t *connection() const { return m_connection; }

    xcb_atom_t atom(const QByteArray &name) const {
        const auto cookie = xcb_intern_atom(m_connection, 0, uint16_t(name.size()), name.constData());
        const auto reply = own(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    /// The visible top-level window of the process; none is XCB_WINDOW_NONE.
    xcb_window_t windowOf(qint64 processIdentifier) const {
        if (xcb_connection_has_error(m_connection))
            return XCB_WINDOW_NONE;
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const auto tree =
            own(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, root), nullptr));
        const int count = tree ? xcb_query_tree_children_length(tree.get()) : 0;
        for (int index = 0; index < count; ++index) {
            const xcb_window_t window = xcb_query_tree_children(tree.get())[index];
            if (isVisible(window) && ownerOf(window) == processIdentifier)
                return window;
        }
        return XCB_WINDOW_NONE;
    }

    QByteArray textOf(xcb_window_t window, xcb_atom_t property) const {
        constexpr uint32_t longest = 1024;
        const auto cookie = xcb_get_property(m_connection, 0, window, property, XCB_ATOM_STRING, 0, longest);
        const auto reply = own(xcb_get_property_reply(m_connection, cookie, nullptr));
        return reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                                  xcb_get_property_value_length(reply.get()))
                     : QByteArray();
    }

    xcb_window_t focusedWindow() const {
        const auto reply =
            own(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
        return reply ? reply->focus : xcb_window_t(XCB_WINDOW_NONE);
    }

    /// Waits until the server has done that; what is still on its way when the connection ends is lost.
    bool isDone(xcb_void_cookie_t request) const {
        return !own(xcb_request_check(m_connection, request)) && !xcb_connection_has_error(m_connection);
    }

private:
    bool isVisible(xcb_window_t window) const {
        const auto cookie = xcb_get_window_attributes(m_connection, window);
        const auto reply = own(xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
        return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    qint64 ownerOf(xcb_window_t window) const {
        const auto cookie =
            xcb_get_property(m_connection, 0, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 0, 1);
        const auto reply = own(xcb_get_property_reply(m_connection, cookie, nullptr));
        const bool isThere = reply && xcb_get_property_value_length(reply.get()) == int(sizeof(uint32_t));
        return isThere ? *static_cast<uint32_t *>(xcb_get_property_value(reply.get())) : -1;
    }

    xcb_connection_t *m_connection;
};

} // namespace

quint32 topLevelWindow(qint64 processIdentifier) {
    return Display().windowOf(processIdentifier);
}

bool closeTopLevelWindow(qint64 processIdentifier) {
    const Display display;
    const xcb_window_t window = display.windowOf(processIdentifier);
    if (window == XCB_WINDOW_NONE)
        return false;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = display.atom("WM_PROTOCOLS");
    message.data.data32[0] = display.atom("WM_DELETE_WINDOW");
    message.data.data32[1] = XCB_CURRENT_TIME;
    return display.isDone(xcb_send_event_checked(display.connection(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                                                 reinterpret_cast<char *>(&message)));
}

bool focusTopLevelWindow(qint64 processIdentifier) {
    const Display display;
    const xcb_window_t window = display.windowOf(processIdentifier);
    if (window == XCB_WINDOW_NONE)
        return false;
    return display.isDone(
        xcb_set_input_focus_checked(display.connection(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME));
}

bool focusNoWindow() {
    const Display display;
    return display.isDone(xcb_set_input_focus_checked(display.connection(), XCB_INPUT_FOCUS_NONE,
                                                      XCB_INPUT_FOCUS_NONE, XCB_CURRENT_TIME));
}

QByteArray classOfTopLevelWindow(qint64 processIdentifier) {
    const Display display;
    // The instance and the class, each with a zero byte behind it.
    return display.textOf(display.windowOf(processIdentifier), XCB_ATOM_WM_CLASS).split('\0').value(1);
}

quint32 focusedWindow() {
    return Display().focusedWindow();
}
