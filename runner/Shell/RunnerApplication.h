// The running app: one process per profile, reachable by the session bus and by a private socket.
#pragma once

#include "RunnerCore/AppRequest.h"
#include "RunnerCore/Bundle.h"
#include "Shell/AppWindow.h"
#include "Shell/GObjects.h"
#include "Shell/PrivateSocket.h"
#include "Shell/ProfileFolder.h"

#include <gtk/gtk.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wrapio {

/// Lives in `main`, on the main thread.
class RunnerApplication {
public:
    explicit RunnerApplication(Bundle bundle);
    ~RunnerApplication();
    RunnerApplication(const RunnerApplication&) = delete;
    RunnerApplication& operator=(const RunnerApplication&) = delete;

    /// Shows the app and the requests among `arguments` until it is quit, or asks the process that already shows it to.
    /// Returns the exit status.
    [[nodiscard]] int run(const std::vector<std::string>& arguments);

    /// For the toolkit's callbacks.
    void start();
    void activate();
    void open(const std::vector<std::string>& texts);
    void stop();
    void quit();

private:
    enum class Role { First, Second, Unreachable };

    [[nodiscard]] Role findRole(const std::vector<std::string>& requests);
    [[nodiscard]] bool askFirst(const std::vector<std::string>& requests);
    void sendRequests(const std::vector<std::string>& requests);
    void listen();
    void listenForSnapshots();
    void addActions();
    [[nodiscard]] AppWindow* window();

    Bundle m_bundle;
    ProfilePaths m_paths;
    ProfileLock m_lock;
    GtkApplication* m_application;
    std::optional<PrivateSocket> m_socket;
    std::optional<PrivateSocket> m_snapshotSocket;
    std::unique_ptr<AppWindow> m_window;
    bool m_hasProblem = false;
    bool m_isQuitting = false;
    Timeout m_quitDeadline;
};

}  // namespace wrapio
