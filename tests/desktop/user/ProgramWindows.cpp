// SPDX-License-Identifier: MIT
#include "desktop/user/ProgramWindows.h"

#include "platform/x11/XServer.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace clavo
{
namespace
{

using xcb::Owned;

class Search
{
public:
    explicit Search(std::string_view program) : m_program(program) {}

    [[nodiscard]] std::optional<QRect> onTheDesktop() const
    {
        const auto window = uppermost();
        return window == XCB_WINDOW_NONE ? std::nullopt : place(window);
    }

    [[nodiscard]] std::optional<QRect> insideAnother() const
    {
        auto windows = children(m_desktop.root);
        while (!windows.empty()) {
            const auto parent = windows.back();
            windows.pop_back();
            for (const auto window : children(parent)) {
                if (isTheProgram(window) && isSeen(window) && isInsideTheDesktop(window))
                    return place(window);
                windows.push_back(window);
            }
        }
        return {};
    }

    [[nodiscard]] bool isFocused() const
    {
        const auto window = uppermost();
        const Owned<xcb_get_input_focus_reply_t> focus{
            xcb_get_input_focus_reply(server(), xcb_get_input_focus(server()), nullptr)};
        return window != XCB_WINDOW_NONE && focus && focus->focus == window;
    }

    /// The property holds width, height and the pixels of one icon after the other.
    [[nodiscard]] std::vector<int> iconWidths() const
    {
        constexpr std::string_view name = "_NET_WM_ICON";
        constexpr std::uint32_t longest = 1 << 20;
        const Owned<xcb_intern_atom_reply_t> atom{xcb_intern_atom_reply(
            server(), xcb_intern_atom(server(), true, name.size(), name.data()), nullptr)};
        if (!atom)
            return {};
        const Owned<xcb_get_property_reply_t> reply{xcb_get_property_reply(
            server(),
            xcb_get_property(server(), 0, uppermost(), atom->atom, XCB_ATOM_CARDINAL, 0, longest),
            nullptr)};
        if (!reply)
            return {};
        const std::span numbers(
            static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
                sizeof(std::uint32_t));
        std::vector<int> widths;
        for (std::size_t at = 0; at + 1 < numbers.size(); at += 2 + (numbers[at] * numbers[at + 1]))
            widths.push_back(static_cast<int>(numbers[at]));
        std::ranges::sort(widths);
        return widths;
    }

private:
    [[nodiscard]] xcb_window_t uppermost() const
    {
        const auto fromTheBottom = children(m_desktop.root);
        const auto found =
            std::find_if(fromTheBottom.rbegin(), fromTheBottom.rend(),
                         [this](auto window) { return isTheProgram(window) && isSeen(window); });
        return found == fromTheBottom.rend() ? xcb_window_t{XCB_WINDOW_NONE} : *found;
    }

    [[nodiscard]] xcb_connection_t* server() const { return m_desktop.connection.get(); }

    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t parent) const
    {
        const Owned<xcb_query_tree_reply_t> tree{
            xcb_query_tree_reply(server(), xcb_query_tree(server(), parent), nullptr)};
        if (!tree)
            return {};
        const auto* first = xcb_query_tree_children(tree.get());
        return {first, first + xcb_query_tree_children_length(tree.get())};
    }

    [[nodiscard]] bool isTheProgram(xcb_window_t window) const
    {
        constexpr std::uint32_t length = 64;
        const Owned<xcb_get_property_reply_t> reply{xcb_get_property_reply(
            server(),
            xcb_get_property(server(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, length),
            nullptr)};
        if (!reply)
            return false;
        const std::string_view names(
            static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
        return names.starts_with(m_program);
    }

    [[nodiscard]] bool isSeen(xcb_window_t window) const
    {
        const Owned<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(
            server(), xcb_get_window_attributes(server(), window), nullptr)};
        return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    [[nodiscard]] bool isInsideTheDesktop(xcb_window_t window) const
    {
        const auto desktop = place(m_desktop.root);
        const auto inside = place(window);
        return desktop && inside && desktop->contains(*inside);
    }

    [[nodiscard]] std::optional<QRect> place(xcb_window_t window) const
    {
        const Owned<xcb_get_geometry_reply_t> size{
            xcb_get_geometry_reply(server(), xcb_get_geometry(server(), window), nullptr)};
        const Owned<xcb_translate_coordinates_reply_t> corner{xcb_translate_coordinates_reply(
            server(), xcb_translate_coordinates(server(), window, m_desktop.root, 0, 0), nullptr)};
        if (!size || !corner)
            return {};
        return QRect(corner->dst_x, corner->dst_y, size->width, size->height);
    }

    std::string_view m_program;
    xcb::Desktop m_desktop = xcb::connect({});
};

} // namespace

std::optional<QRect> embeddedWindow(std::string_view program)
{
    return Search(program).insideAnother();
}

std::optional<QRect> openWindow(std::string_view program)
{
    return Search(program).onTheDesktop();
}

bool hasFocus(std::string_view program)
{
    return Search(program).isFocused();
}

std::vector<int> iconWidths(std::string_view program)
{
    return Search(program).iconWidths();
}

} // namespace clavo
