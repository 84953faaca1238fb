// Measures from outside how long a program takes until its first window stands on the screen:
//
//     swabby_first_picture PROGRAM [ARGUMENT…]
//
// starts the program on the X display of the environment, watches the window it opens, ends the program and
// prints three times in milliseconds since the start: the window is there, it shows something, and it shows
// what it still shows four seconds later, but for the fiftieth part of its pixels (a figure that changes, a
// line that grows).

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto betweenLooks = 4ms;
constexpr auto settling = 4s;
constexpr auto longestWait = 30s;
constexpr int rowsApart = 6; ///< looking at every row would take the processors from what is measured
constexpr std::size_t differenceShare = 50;

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply *reply)
{
    return {reply, &std::free};
}

struct Picture {
    Clock::duration when{};
    std::vector<std::uint32_t> pixels;
};

class Screen {
public:
    Screen() : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection) != 0)
            return;
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        constexpr const char *name = "_NET_CLIENT_LIST";
        const auto atom = owned(xcb_intern_atom_reply(
            m_connection,
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
        m_clientList = atom->atom;
    }
    ~Screen() { xcb_disconnect(m_connection); }
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    bool isThere() const { return m_root != 0; }

    /// The windows that the window manager looks after.
    std::set<xcb_window_t> windows() const
    {
        const auto list = owned(xcb_get_property_reply(
            m_connection, xcb_get_property(m_connection, 0, m_root, m_clientList, XCB_ATOM_WINDOW, 0, 1'000),
            nullptr));
        if (!list)
            return {};
        const auto *first = static_cast<xcb_window_t *>(xcb_get_property_value(list.get()));
        return {first, first + list->value_len};
    }

    /// Some rows of the window; empty when it cannot be read just now.
    std::vector<std::uint32_t> look(xcb_window_t window) const
    {
        const auto size =
            owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
        if (!size)
            return {};
        std::vector<xcb_get_image_cookie_t> asked;
        for (int row = 0; row < size->height; row += rowsApart)
            asked.push_back(xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0,
                                          static_cast<std::int16_t>(row), size->width, 1, ~0U));
        std::vector<std::uint32_t> pixels;
        bool isWhole = true;
        for (const xcb_get_image_cookie_t cookie : asked) {
            const auto row = owned(xcb_get_image_reply(m_connection, cookie, nullptr));
            isWhole = isWhole && row;
            if (!row)
                continue;
            const auto *first = reinterpret_cast<const std::uint32_t *>(xcb_get_image_data(row.get()));
            pixels.insert(pixels.end(), first, first + size->width);
        }
        return isWhole ? pixels : std::vector<std::uint32_t>{};
    }

private:
    xcb_connection_t *m_connection;
    xcb_window_t m_root = 0;
    xcb_atom_t m_clientList = 0;
};

bool isUniform(const std::vector<std::uint32_t> &pixels)
{
    return std::all_of(pixels.begin(), pixels.end(), [&](std::uint32_t pixel) { return pixel == pixels[0]; });
}

bool isAlike(const std::vector<std::uint32_t> &one, const std::vector<std::uint32_t> &other)
{
    if (one.size() != other.size())
        return false;
    std::size_t different = 0;
    for (std::size_t place = 0; place < one.size(); ++place)
        different += one[place] != other[place] ? 1 : 0;
    return different * differenceShare <= one.size();
}

/// Watches until four seconds after the first picture; the pictures that differ from the one before.
std::vector<Picture> watch(const Screen &screen, const std::set<xcb_window_t> &before,
                           Clock::time_point start, std::optional<Clock::duration> &opened)
{
    std::vector<Picture> pictures;
    std::optional<xcb_window_t> window;
    std::optional<Clock::time_point> end;
    while (Clock::now() < end.value_or(start + longestWait)) {
        if (!window)
            for (const xcb_window_t one : screen.windows())
                if (before.count(one) == 0)
                    window = one;
        if (window) {
            opened = opened ? opened : Clock::now() - start;
            std::vector<std::uint32_t> pixels = screen.look(*window);
            const Clock::time_point now = Clock::now();
            if (!pixels.empty() && !isUniform(pixels)) {
                end = end.value_or(now + settling);
                if (pictures.empty() || pictures.back().pixels != pixels)
                    pictures.push_back({now - start, std::move(pixels)});
            }
        }
        std::this_thread::sleep_for(betweenLooks);
    }
    return pictures;
}

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

void endGroup(pid_t pid)
{
    ::kill(-pid, SIGTERM);
    for (int tries = 0; tries < 300; ++tries) {
        if (::waitpid(pid, nullptr, WNOHANG) == pid)
            return;
        std::this_thread::sleep_for(10ms);
    }
    ::kill(-pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
}

} // namespace

int main(int argumentCount, char **arguments)
{
    const Screen screen;
    if (argumentCount < 2 || !screen.isThere()) {
        std::fprintf(stderr, "usage: swabby_first_picture PROGRAM [ARGUMENT…]   on an X display\n");
        return 2;
    }
    const std::set<xcb_window_t> before = screen.windows();
    posix_spawnattr_t apart;
    posix_spawnattr_init(&apart);
    posix_spawnattr_setflags(&apart, POSIX_SPAWN_SETPGROUP);
    const Clock::time_point start = Clock::now();
    pid_t pid = 0;
    if (posix_spawnp(&pid, arguments[1], nullptr, &apart, arguments + 1, environ) != 0) {
        std::fprintf(stderr, "%s does not start\n", arguments[1]);
        return 1;
    }
    std::optional<Clock::duration> opened;
    const std::vector<Picture> pictures = watch(screen, before, start, opened);
    endGroup(pid);
    if (pictures.empty()) {
        std::fprintf(stderr, "%s showed nothing\n", arguments[1]);
        return 1;
    }
    auto whole = pictures.end() - 1;
    while (whole != pictures.begin() && isAlike((whole - 1)->pixels, pictures.back().pixels))
        --whole;
    std::printf("%.0f %.0f %.0f\n", milliseconds(*opened), milliseconds(pictures.front().when),
                milliseconds(whole->when));
    return 0;
}
