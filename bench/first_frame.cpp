// Measures how long programs take from their start until their window is on the screen, in turn, on the X display of
// $DISPLAY: to its first frame, and to its last change, when it is complete.
//   first_frame ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...
// The root window is painted in one colour first; the first frame is there when the middle of the new window has
// another one. A program is asked to end before the next one starts. One round first warms the caches and is not
// counted.
#include "contestants.h"
#include "paired.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t unpainted = 0xff00ff;
constexpr std::uint16_t smallestSide = 400; // a helper window of the toolkit is smaller
constexpr auto patience = std::chrono::seconds{30};
constexpr auto quiet = std::chrono::milliseconds{700};
constexpr auto betweenLooks = std::chrono::microseconds{500};
constexpr int lines = 9; // of the window that are looked at for changes

template <class T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
    return {reply, &std::free};
}

class Display {
public:
    Display() : connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) {
            return;
        }
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const std::uint32_t values[] = {unpainted, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
        xcb_change_window_attributes(connection_, screen_->root, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() { xcb_disconnect(connection_); }

    [[nodiscard]] bool isOpen() const { return screen_ != nullptr; }

    /// Nothing is left of the last program's window, nor of its events.
    void clear() {
        window_ = {};
        xcb_clear_area(connection_, 0, screen_->root, 0, 0, 0, 0);
        xcb_flush(connection_);
        while (const auto event = owned(xcb_poll_for_event(connection_))) {
        }
    }

    /// Whether a window of the size of a main window has been painted.
    bool hasFrame() {
        while (const auto event = owned(xcb_poll_for_event(connection_))) {
            if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY) {
                notice(reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window);
            }
        }
        if (window_.id == XCB_NONE) {
            return false;
        }
        const std::optional<std::uint32_t> middle = middleOfWindow();
        return middle && *middle != unpainted;
    }

    /// A number for what some lines of the window show.
    [[nodiscard]] std::size_t look() const {
        std::size_t sum = 0;
        std::array<xcb_get_image_cookie_t, lines> cookies{};
        for (int line = 0; line < lines; ++line) {
            cookies.at(static_cast<std::size_t>(line)) =
                ask(0, static_cast<std::int16_t>((2 * line + 1) * window_.height / (2 * lines)), window_.width);
        }
        for (const xcb_get_image_cookie_t cookie : cookies) {
            if (const auto image = owned(xcb_get_image_reply(connection_, cookie, nullptr))) {
                const auto* bytes = reinterpret_cast<const char*>(xcb_get_image_data(image.get()));
                const auto length = static_cast<std::size_t>(xcb_get_image_data_length(image.get()));
                sum = sum * 31 + std::hash<std::string_view>()({bytes, length});
            }
        }
        return sum;
    }

private:
    struct Window {
        xcb_window_t id = XCB_NONE;
        std::uint16_t width = 0;
        std::uint16_t height = 0;
    };

    void notice(xcb_window_t id) {
        const auto size = owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, id), nullptr));
        if (size && std::min(size->width, size->height) >= smallestSide) {
            window_ = {id, size->width, size->height};
        }
    }

    [[nodiscard]] xcb_get_image_cookie_t ask(std::int16_t x, std::int16_t y, std::uint16_t width) const {
        return xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_.id, x, y, width, 1, ~0U);
    }

    [[nodiscard]] std::optional<std::uint32_t> middleOfWindow() const {
        const auto cookie =
            ask(static_cast<std::int16_t>(window_.width / 2), static_cast<std::int16_t>(window_.height / 2), 1);
        const auto image = owned(xcb_get_image_reply(connection_, cookie, nullptr));
        if (!image || xcb_get_image_data_length(image.get()) < 4) {
            return std::nullopt;
        }
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof pixel);
        return pixel & 0xffffffU;
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    Window window_;
};

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

struct Times {
    double firstFrame = 0;
    double lastChange = 0;
};

std::optional<Times> watch(Display& display, Clock::time_point begin) {
    while (!display.hasFrame()) {
        if (Clock::now() - begin > patience) {
            return std::nullopt;
        }
        std::this_thread::sleep_for(betweenLooks);
    }
    Times times{millisecondsSince(begin), millisecondsSince(begin)};
    auto changed = Clock::now();
    std::size_t shown = display.look();
    while (Clock::now() - changed < quiet) {
        std::this_thread::sleep_for(betweenLooks);
        if (const std::size_t now = display.look(); now != shown) {
            shown = now;
            changed = Clock::now();
            times.lastChange = millisecondsSince(begin);
        }
    }
    return times;
}

struct Measured {
    Contestant program; ///< its milliseconds are those to the first frame
    std::vector<double> complete;
};

bool run(Display& display, Measured& measured, bool counts) {
    display.clear();
    const auto begin = Clock::now();
    const pid_t child = start(measured.program);
    const std::optional<Times> times = child == 0 ? std::nullopt : watch(display, begin);
    if (child != 0) {
        int status = 0;
        ::kill(child, SIGTERM);
        ::waitpid(child, &status, 0);
    }
    if (!times) {
        std::fprintf(stderr, "%s showed no window\n", measured.program.name.c_str());
        return false;
    }
    if (counts) {
        measured.program.milliseconds.push_back(times->firstFrame);
        measured.complete.push_back(times->lastChange);
    }
    return true;
}

void print(const std::vector<Measured>& all) {
    std::printf("| From start to screen | First frame, median ms | %s / it | Complete, median ms | %s / it |\n"
                "|---|---:|---:|---:|---:|\n",
                all[0].program.name.c_str(), all[0].program.name.c_str());
    for (const Measured& one : all) {
        const Figure frame = pairedRatio(all[0].program.milliseconds, one.program.milliseconds);
        const Figure complete = pairedRatio(all[0].complete, one.complete);
        const bool isFirst = &one == all.data();
        std::printf("| %s | %.1f | %s | %.1f | %s |\n", one.program.name.c_str(), medianOf(one.program.milliseconds),
                    isFirst ? "" : frame.text().c_str(), medianOf(one.complete),
                    isFirst ? "" : complete.text().c_str());
        if (!isFirst) {
            record("first frame / " + one.program.name, frame);
            record("complete window / " + one.program.name, complete);
        }
    }
}

} // namespace

int main(int count, char** arguments) {
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 0;
    std::vector<Measured> all;
    for (Contestant& contestant : contestantsOf(count, arguments)) {
        all.push_back({std::move(contestant), {}});
    }
    if (rounds < 1 || all.empty()) {
        std::fprintf(stderr, "first_frame ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...\n");
        return 2;
    }
    Display display;
    if (!display.isOpen()) {
        std::fprintf(stderr, "first_frame needs an X display\n");
        return 1;
    }
    for (int round = 0; round <= rounds; ++round) {
        for (Measured& one : all) {
            if (!run(display, one, round != 0)) {
                return 1;
            }
        }
    }
    print(all);
    return 0;
}
