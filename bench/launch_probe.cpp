// Starts a program on the X display and measures it from outside, as a player meets it: the
// time from the process start to its window mapped, the processor time it then spends while
// nobody touches it, and its peak resident memory.
//
// Usage: launch_probe [--idle SECONDS] TITLE PROGRAM [ARGUMENTS...]
// Prints "mapped_ms N", "startup_cpu_ms N", "idle_cpu_ms N" (when --idle is given) and "peak_rss_kb
// N".

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "launch_probe: %s\n", what);
    std::exit(2);
}

std::string WindowName(xcb_connection_t* x, xcb_window_t window) {
    const xcb_get_property_cookie_t cookie =
        xcb_get_property(x, 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 256);
    std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(x, cookie, nullptr), &std::free);
    if (!reply) return {};
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

bool IsViewable(xcb_connection_t* x, xcb_window_t window) {
    std::unique_ptr<xcb_get_window_attributes_reply_t, decltype(&std::free)> reply(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr),
        &std::free);
    return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
}

// Time every thread of a process has spent on a processor so far, in milliseconds, counted
// by the scheduler to the nanosecond (the clock ticks of /proc/PID/stat are 10 ms wide).
double CpuMilliseconds(pid_t pid) {
    const std::filesystem::path tasks = "/proc/" + std::to_string(pid) + "/task";
    double total = 0;
    std::error_code error;
    for (const auto& task : std::filesystem::directory_iterator(tasks, error)) {
        std::ifstream schedstat(task.path() / "schedstat");
        unsigned long long nanoseconds = 0;
        if (schedstat >> nanoseconds) total += static_cast<double>(nanoseconds) / 1e6;
    }
    return total;
}

}  // namespace

int main(int argc, char* argv[]) {
    int arg = 1;
    double idleSeconds = 0;
    if (arg + 1 < argc && std::strcmp(argv[arg], "--idle") == 0) {
        idleSeconds = std::atof(argv[arg + 1]);
        arg += 2;
    }
    if (arg + 1 >= argc) Fail("usage: launch_probe [--idle SECONDS] TITLE PROGRAM [ARGUMENTS...]");
    const std::string title = argv[arg];
    char** command = argv + arg + 1;

    xcb_connection_t* x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x)) Fail("no X display");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    // Every window created on the screen is reported to us, before the program starts.
    const uint32_t rootEvents = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x, root, XCB_CW_EVENT_MASK, &rootEvents);
    xcb_flush(x);

    const Clock::time_point start = Clock::now();
    const pid_t pid = fork();
    if (pid < 0) Fail("cannot fork");
    if (pid == 0) {
        execvp(command[0], command);
        _exit(127);
    }

    // Each top-level window is watched for its own mapping, which the window manager makes
    // after framing it; the one with the title is the program's window.
    std::set<xcb_window_t> watched;
    const auto mappedWithTitle = [&](xcb_window_t window) {
        return IsViewable(x, window) && WindowName(x, window) == title;
    };
    double mappedMs = -1;
    const Clock::time_point deadline = start + std::chrono::seconds(20);
    while (mappedMs < 0 && Clock::now() < deadline) {
        std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(xcb_poll_for_event(x),
                                                                         &std::free);
        if (!event) {
            if (xcb_connection_has_error(x)) Fail("lost the X display");
            if (waitpid(pid, nullptr, WNOHANG) == pid) Fail("the program ended before its window");
            std::this_thread::sleep_for(std::chrono::microseconds(200));
            continue;
        }
        xcb_window_t window = XCB_NONE;
        switch (event->response_type & 0x7f) {
            case XCB_CREATE_NOTIFY: {
                window = reinterpret_cast<xcb_create_notify_event_t*>(event.get())->window;
                const uint32_t events =
                    XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
                xcb_change_window_attributes(x, window, XCB_CW_EVENT_MASK, &events);
                watched.insert(window);
                // Mapped and named before we were listening: caught here.
                break;
            }
            case XCB_MAP_NOTIFY:
                window = reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window;
                break;
            case XCB_PROPERTY_NOTIFY:  // named after it was mapped
                window = reinterpret_cast<xcb_property_notify_event_t*>(event.get())->window;
                break;
            default:
                continue;
        }
        if (watched.count(window) && mappedWithTitle(window)) {
            mappedMs = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        }
    }
    if (mappedMs < 0) {
        kill(pid, SIGKILL);
        Fail("no window with that title was mapped within 20 s");
    }
    std::printf("mapped_ms %.1f\n", mappedMs);
    std::printf("startup_cpu_ms %.1f\n", CpuMilliseconds(pid));

    if (idleSeconds > 0) {
        // What the start-up left to finish is not idleness: the count starts a second later.
        std::this_thread::sleep_for(std::chrono::seconds(1));
        const double before = CpuMilliseconds(pid);
        std::this_thread::sleep_for(std::chrono::duration<double>(idleSeconds));
        std::printf("idle_cpu_ms %.1f\n", CpuMilliseconds(pid) - before);
    }

    kill(pid, SIGTERM);
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    std::printf("peak_rss_kb %ld\n", usage.ru_maxrss);
    xcb_disconnect(x);
    return 0;
}
