// Measures how long programs take from their start to their window's first frame, in turn, on the X display of
// $DISPLAY.
//   first_frame ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...
// The root window is painted in one colour first; the first frame is there when the middle of the new window has
// another one. A program is asked to end before the next one starts. One round first warms the caches and is not
// counted.
#include "contestants.h"

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <sys/wait.h>
#include <thread>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t unpainted = 0xff00ff;
constexpr std::uint16_t smallestSide = 400; // a helper window of the toolkit is smaller
constexpr auto patience = std::chrono::seconds{30};

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
        clear();
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() { xcb_disconnect(connection_); }

    [[nodiscard]] bool isOpen() const { return screen_ != nullptr; }

    /// Nothing is left of the last program's window, nor of its events.
    void clear() {
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
        return window_.id != XCB_NONE && middleOf(window_).value_or(unpainted) != unpainted;
    }

    void forget() { window_ = {}; }

private:
    struct Window {
        xcb_window_t id = XCB_NONE;
        std::int16_t middleX = 0;
        std::int16_t middleY = 0;
    };

    void notice(xcb_window_t id) {
        const auto size = owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, id), nullptr));
        if (size && std::min(size->width, size->height) >= smallestSide) {
            window_ = {id, static_cast<std::int16_t>(size->width / 2), static_cast<std::int16_t>(size->height / 2)};
        }
    }

    [[nodiscard]] std::optional<std::uint32_t> middleOf(const Window& window) const {
        const auto cookie =
            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window.id, window.middleX, window.middleY, 1, 1, ~0U);
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

std::optional<double> waitForFrame(Display& display, Clock::time_point begin) {
    while (Clock::now() - begin < patience) {
        if (display.hasFrame()) {
            return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
        }
        std::this_thread::sleep_for(std::chrono::microseconds{500});
    }
    return std::nullopt;
}

bool run(Display& display, Contestant& contestant, bool counts) {
    display.forget();
    display.clear();
    const auto begin = Clock::now();
    const pid_t child = start(contestant);
    if (child == 0) {
        std::fprintf(stderr, "%s does not start\n", contestant.name.c_str());
        return false;
    }
    const auto took = waitForFrame(display, begin);
    ::kill(child, SIGTERM);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!took) {
        std::fprintf(stderr, "%s showed no frame\n", contestant.name.c_str());
        return false;
    }
    if (counts) {
        contestant.milliseconds.push_back(*took);
    }
    return true;
}

void print(const std::vector<Contestant>& contestants) {
    std::printf("| To the first frame | Median ms | Least | Most | %s / it |\n|---|---:|---:|---:|---:|\n",
                contestants[0].name.c_str());
    for (const Contestant& contestant : contestants) {
        std::printf("| %s | %.1f | %.1f | %.1f | %.2f |\n", contestant.name.c_str(), contestant.median(),
                    contestant.milliseconds.front(), contestant.milliseconds.back(),
                    contestants[0].median() / contestant.median());
    }
}

} // namespace

int main(int count, char** arguments) {
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 0;
    std::vector<Contestant> contestants = contestantsOf(count, arguments);
    if (rounds < 1 || contestants.empty()) {
        std::fprintf(stderr, "first_frame ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...\n");
        return 2;
    }
    Display display;
    if (!display.isOpen()) {
        std::fprintf(stderr, "first_frame needs an X display\n");
        return 1;
    }
    for (int round = 0; round <= rounds; ++round) {
        for (Contestant& contestant : contestants) {
            if (!run(display, contestant, round != 0)) {
                return 1;
            }
        }
    }
    sortRounds(contestants);
    print(contestants);
    return 0;
}
