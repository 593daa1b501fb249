// How long a program takes until its window has a title, and until it has ended when asked to.
//
//     WindowTime PROGRAM ARGUMENT…
//
// Prints the milliseconds to the window; at the end of its own input asks the program to end, and prints the
// milliseconds of that. X11 only. The window manager is listened to, so nothing is lost to looking again and again.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// The value of a property, whose items must be of `format` bits; empty when there is none.
template <typename Item>
std::vector<Item> property(Display* display, Window window, const char* name, int format) {
    Atom type = None;
    int found = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    const int status = XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, 4096, False,
                                          AnyPropertyType, &type, &found, &count, &left, &data);
    std::vector<Item> items;
    if (status == Success && found == format)
        items.assign(reinterpret_cast<Item*>(data), reinterpret_cast<Item*>(data) + count);
    if (data != nullptr)
        XFree(data);
    return items;
}

bool hasTitledWindow(Display* display, pid_t program) {
    for (const Window window : property<Window>(display, DefaultRootWindow(display), "_NET_CLIENT_LIST", 32)) {
        const auto owner = property<unsigned long>(display, window, "_NET_WM_PID", 32);
        const bool isItsWindow = !owner.empty() && owner.front() == static_cast<unsigned long>(program);
        if (isItsWindow && !property<char>(display, window, "_NET_WM_NAME", 8).empty())
            return true;
    }
    return false;
}

void waitForWindow(Display* display, pid_t program) {
    while (!hasTitledWindow(display, program)) {
        if (waitpid(program, nullptr, WNOHANG) == program) {
            std::fputs("the program ended without a window\n", stderr);
            std::exit(1);
        }
        // The list changes when a window comes; its title may follow.
        XFlush(display);
        pollfd events{ConnectionNumber(display), POLLIN, 0};
        poll(&events, 1, 5);
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    Display* display = argc > 1 ? XOpenDisplay(nullptr) : nullptr;
    if (display == nullptr) {
        std::fputs("WindowTime PROGRAM ARGUMENT… needs a display\n", stderr);
        return 1;
    }
    // Windows may go while they are looked at.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    XSelectInput(display, DefaultRootWindow(display), PropertyChangeMask);
    pid_t program = 0;
    const auto begin = Clock::now();
    if (posix_spawn(&program, argv[1], nullptr, nullptr, argv + 1, environ) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    waitForWindow(display, program);
    std::printf("%d %.1f\n", program, millisecondsSince(begin));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    const auto end = Clock::now();
    kill(program, SIGTERM);
    int status = 0;
    waitpid(program, &status, 0);
    std::printf("%d %.1f\n", WIFEXITED(status) ? WEXITSTATUS(status) : -1, millisecondsSince(end));
    XCloseDisplay(display);
    return 0;
}
