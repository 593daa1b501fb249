#include "Shell/SandboxProbe.h"

#include "Shell/GObjects.h"

#include <gio/gio.h>

namespace wrapio {

namespace {

constexpr const char* sandboxTool = "/usr/bin/bwrap";
constexpr const char* busProxy = "/usr/bin/xdg-dbus-proxy";

Message missingTool(const char* path, const char* package) {
    return {"This app cannot protect you from web pages here",
            std::string("The program ") + path + " is missing, and pages are never shown without a sandbox. " +
                "Install the package “" + package + "” and start the app again."};
}

bool canStart(const char* path) {
    return g_file_test(path, G_FILE_TEST_IS_EXECUTABLE);
}

bool canMakeNamespaces() {
    GError* error = nullptr;
    const ObjectPtr<GSubprocess> probe(g_subprocess_new(
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE), &error,
        sandboxTool, "--unshare-pid", "--unshare-net", "--unshare-uts", "--unshare-ipc", "--ro-bind", "/", "/",
        "--proc", "/proc", "--dev", "/dev", "true", nullptr));
    if (!probe) {
        g_clear_error(&error);
        return false;
    }
    return g_subprocess_wait_check(probe.get(), nullptr, nullptr);
}

}  // namespace

std::optional<Message> sandboxProblem() {
    if (!canStart(sandboxTool))
        return missingTool(sandboxTool, "bubblewrap");
    if (!canStart(busProxy))
        return missingTool(busProxy, "xdg-dbus-proxy");
    if (canMakeNamespaces())
        return std::nullopt;
    return Message{"This app cannot protect you from web pages here",
                   "This system does not let programs create the sandbox that pages are shown in, and pages are never "
                   "shown without it. Allow unprivileged user namespaces (kernel.unprivileged_userns_clone=1), or run "
                   "the app outside of the container that forbids them."};
}

}  // namespace wrapio
