#include "platform/linux/windows/WindowServer.h"

#include <xcb/res.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <unistd.h>

namespace swabby {
namespace {

/// In units of four bytes; no list of windows is longer.
constexpr std::uint32_t longestProperty = 4'096;

template <typename Reply>
using Answer = std::unique_ptr<Reply, void (*)(void *)>;

template <typename Reply>
Answer<Reply> owned(Reply *reply)
{
    return {reply, &std::free};
}

std::string hostName()
{
    std::array<char, 256> name = {};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace

WindowServer::WindowServer()
    : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect), m_host(hostName())
{
    if (!isThere())
        return;
    m_processId = atom("_NET_WM_PID");
    // Over a network, or from another container, the server's numbers stand for other processes.
    m_knowsProcesses = processByServer(xcb_generate_id(m_connection.get())) == ::getpid();
}

std::vector<xcb_window_t> WindowServer::roots() const
{
    std::vector<xcb_window_t> roots;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())); screens.rem > 0;
         xcb_screen_next(&screens))
        roots.push_back(screens.data->root);
    return roots;
}

xcb_atom_t WindowServer::atom(const std::string &name) const
{
    xcb_connection_t *const server = m_connection.get();
    const auto question = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const auto answer = owned(xcb_intern_atom_reply(server, question, nullptr));
    return answer ? answer->atom : XCB_NONE;
}

std::vector<std::uint32_t> WindowServer::numbers(xcb_window_t window, xcb_atom_t property) const
{
    constexpr int bits = 32;
    xcb_connection_t *const server = m_connection.get();
    const auto question =
        xcb_get_property(server, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    const auto answer = owned(xcb_get_property_reply(server, question, nullptr));
    if (!answer || answer->format != bits)
        return {};
    const auto *first = static_cast<const std::uint32_t *>(xcb_get_property_value(answer.get()));
    return {first, first + answer->value_len};
}

std::string WindowServer::text(xcb_window_t window, xcb_atom_t property) const
{
    xcb_connection_t *const server = m_connection.get();
    const auto question =
        xcb_get_property(server, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    const auto answer = owned(xcb_get_property_reply(server, question, nullptr));
    if (!answer)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(answer.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(answer.get()))};
}

bool WindowServer::contains(xcb_window_t window, xcb_atom_t property, xcb_atom_t atom) const
{
    const std::vector<std::uint32_t> atoms = numbers(window, property);
    return std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

std::vector<xcb_window_t> WindowServer::visibleChildren(xcb_window_t window) const
{
    xcb_connection_t *const server = m_connection.get();
    const auto tree = owned(xcb_query_tree_reply(server, xcb_query_tree(server, window), nullptr));
    if (!tree)
        return {};
    const xcb_window_t *const first = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> children(first, first + xcb_query_tree_children_length(tree.get()));
    std::erase_if(children, [&](xcb_window_t child) {
        const auto question = xcb_get_window_attributes(server, child);
        const auto attributes = owned(xcb_get_window_attributes_reply(server, question, nullptr));
        return !attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE;
    });
    return children;
}

xcb_window_t WindowServer::selectionOwner(const std::string &selection) const
{
    xcb_connection_t *const server = m_connection.get();
    const auto question = xcb_get_selection_owner(server, atom(selection));
    const auto answer = owned(xcb_get_selection_owner_reply(server, question, nullptr));
    return answer ? answer->owner : XCB_NONE;
}

std::int32_t WindowServer::processOf(xcb_window_t window) const
{
    const std::int32_t process = m_knowsProcesses ? processByServer(window) : 0;
    return process > 0 ? process : processByItself(window);
}

std::int32_t WindowServer::processByServer(xcb_window_t window) const
{
    xcb_connection_t *const server = m_connection.get();
    const auto *const extension = xcb_get_extension_data(server, &xcb_res_id);
    if (extension == nullptr || extension->present == 0)
        return 0;
    const xcb_res_client_id_spec_t wanted = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto question = xcb_res_query_client_ids(server, 1, &wanted);
    const auto answer = owned(xcb_res_query_client_ids_reply(server, question, nullptr));
    if (!answer)
        return 0;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(answer.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids))
        if (ids.data->spec.mask == XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID &&
            xcb_res_client_id_value_value_length(ids.data) > 0)
            return static_cast<std::int32_t>(*xcb_res_client_id_value_value(ids.data));
    return 0;
}

std::int32_t WindowServer::processByItself(xcb_window_t window) const
{
    const std::vector<std::uint32_t> process = numbers(window, m_processId);
    std::string host = text(window, XCB_ATOM_WM_CLIENT_MACHINE);
    host.resize(std::min(host.size(), host.find('\0')));
    return process.size() == 1 && host == m_host ? static_cast<std::int32_t>(process.front()) : 0;
}

void WindowServer::send(xcb_window_t receiver, std::uint32_t listening, xcb_window_t about, xcb_atom_t type,
                        const std::uint32_t (&content)[5]) const
{
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about;
    message.type = type;
    std::copy(std::begin(content), std::end(content), message.data.data32);
    xcb_send_event(m_connection.get(), 0, receiver, listening, reinterpret_cast<const char *>(&message));
}

void WindowServer::finish() const
{
    xcb_connection_t *const server = m_connection.get();
    owned(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
}

} // namespace swabby
