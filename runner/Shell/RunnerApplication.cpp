#include "Shell/RunnerApplication.h"

#include "Shell/Actions.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"
#include "Shell/ProblemWindow.h"
#include "Shell/SandboxProbe.h"
#include "Shell/SessionBus.h"

#include <gdk/x11/gdkx.h>
#include <glib-unix.h>

#include <array>
#include <cstdlib>

namespace wrapio {

namespace {

constexpr int lockAttempts = 30;
constexpr gulong lockPause = 100'000;    // microseconds
constexpr unsigned quitDeadline = 1200;  // milliseconds; whoever asked for the end counts to two seconds

struct RunnerGtkApplication {
    GtkApplication parent;
    RunnerApplication* owner;
};
struct RunnerGtkApplicationClass {
    GtkApplicationClass parent;
};

G_DEFINE_TYPE(RunnerGtkApplication, runner_gtk_application, GTK_TYPE_APPLICATION)

RunnerApplication& ownerOf(GApplication* application) {
    return *reinterpret_cast<RunnerGtkApplication*>(application)->owner;
}

void startUp(GApplication* application) {
    // The toolkit would end the process with a warning of its own.
    if (!gtk_init_check()) {
        reportLine(
            oneLine({"This app needs a desktop", "No display could be opened. Start it from a graphical session, "
                                                 "or set DISPLAY or WAYLAND_DISPLAY."}));
        std::exit(1);
    }
    G_APPLICATION_CLASS(runner_gtk_application_parent_class)->startup(application);
    ownerOf(application).start();
}

void shutDown(GApplication* application) {
    ownerOf(application).stop();
    G_APPLICATION_CLASS(runner_gtk_application_parent_class)->shutdown(application);
}

void openFiles(GApplication* application, GFile** files, int count, const char*) {
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i) {
        const TextPtr text(g_file_get_uri(files[i]));
        texts.emplace_back(text.get());
    }
    ownerOf(application).open(texts);
}

void runner_gtk_application_class_init(RunnerGtkApplicationClass* type) {
    GApplicationClass* application = G_APPLICATION_CLASS(type);
    application->startup = &startUp;
    application->activate = [](GApplication* self) { ownerOf(self).activate(); };
    application->open = &openFiles;
    application->shutdown = &shutDown;
}

void runner_gtk_application_init(RunnerGtkApplication* self) {
    self->owner = nullptr;
}

}  // namespace

RunnerApplication::RunnerApplication(Bundle bundle)
    : m_bundle(std::move(bundle))
    , m_paths(profilePaths(m_bundle.info.recordId))
    , m_application(GTK_APPLICATION(g_object_new(runner_gtk_application_get_type(), "application-id",
                                                 m_bundle.info.desktopId.c_str(), "flags", G_APPLICATION_HANDLES_OPEN,
                                                 nullptr))) {
    reinterpret_cast<RunnerGtkApplication*>(m_application)->owner = this;
}

RunnerApplication::~RunnerApplication() {
    g_object_unref(m_application);
}

void RunnerApplication::stop() {
    m_quitDeadline.cancel();
    m_snapshotSocket.reset();
    m_socket.reset();
    m_window.reset();
}

int RunnerApplication::run(const std::vector<std::string>& arguments) {
    std::vector<std::string> requests;
    for (const std::string& argument : arguments) {
        if (const auto request = parseAppRequest(argument, m_bundle.info.urlScheme))
            requests.push_back(argument);
        else
            reportLine(request.error());
    }
    if (const auto created = createProfile(m_paths); !created)
        return showProblem(created.error());
    switch (findRole(requests)) {
    case Role::Second:
        return 0;
    case Role::Unreachable:
        return showProblem({"This app is already running",
                            "Its window could not be brought to the front. Quit the running app and start it again."});
    case Role::First:
        break;
    }
    GError* error = nullptr;
    if (!g_application_register(G_APPLICATION(m_application), nullptr, &error))
        return showProblem({"This app cannot start", "The session bus refused it: " + takeMessage(error) + "."});
    sendRequests(requests);
    return g_application_run(G_APPLICATION(m_application), 0, nullptr);
}

RunnerApplication::Role RunnerApplication::findRole(const std::vector<std::string>& requests) {
    // A first process that is only just starting, or ending, neither answers nor lets go of the lock at once.
    for (int attempt = 0; attempt < lockAttempts; ++attempt) {
        if (m_lock.acquire(m_paths))
            return Role::First;
        if (askFirst(requests))
            return Role::Second;
        g_usleep(lockPause);
    }
    return Role::Unreachable;
}

bool RunnerApplication::askFirst(const std::vector<std::string>& requests) {
    if (askOverSessionBus(m_bundle.info.desktopId, requests))
        return true;
    bool isAnswered = sendPrivateRequest(m_paths.socket, "activate");
    for (const std::string& request : requests)
        isAnswered = isAnswered && sendPrivateRequest(m_paths.socket, "open " + request);
    return isAnswered;
}

void RunnerApplication::sendRequests(const std::vector<std::string>& requests) {
    auto* application = G_APPLICATION(m_application);
    if (requests.empty())
        return g_application_activate(application);
    std::vector<ObjectPtr<GFile>> owned;
    std::vector<GFile*> files;
    for (const std::string& request : requests)
        files.push_back(owned.emplace_back(g_file_new_for_uri(request.c_str())).get());
    g_application_open(application, files.data(), static_cast<int>(files.size()), "");
}

void RunnerApplication::start() {
    // Docks match windows to the desktop entry by this class.
    if (GDK_IS_X11_DISPLAY(gdk_display_get_default()))
        gdk_x11_display_set_program_class(gdk_display_get_default(), m_bundle.info.desktopId.c_str());
    const auto onSignal = [](gpointer self) -> gboolean {
        static_cast<RunnerApplication*>(self)->quit();
        return G_SOURCE_CONTINUE;
    };
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        g_unix_signal_add(signal, onSignal, this);
    addActions();
    listen();
    listenForSnapshots();
}

void RunnerApplication::quit() {
    if (m_isQuitting)
        return;
    m_isQuitting = true;
    const auto end = [this] { g_application_quit(G_APPLICATION(m_application)); };
    m_quitDeadline.start(quitDeadline, end);
    if (m_window)
        m_window->prepareToQuit(end);
    else
        end();
}

void RunnerApplication::listen() {
    m_socket.emplace(m_paths.socket, [this](const std::string& line, SocketReply reply) {
        constexpr std::string_view openCommand = "open ";
        reply.send("ok\n");
        if (line == "activate")
            activate();
        else if (line.starts_with(openCommand))
            open({line.substr(openCommand.size())});
    });
}

void RunnerApplication::listenForSnapshots() {
    if (m_paths.snapshotSocket.empty())
        return;
    m_snapshotSocket.emplace(m_paths.snapshotSocket, [this](const std::string& line, SocketReply reply) {
        if (line != "snapshot")
            return reply.send("error this request is not known\n");
        if (!m_window)
            return reply.send("error there is no window\n");
        // The reply is moved through a function that must be copyable.
        const auto shared = std::make_shared<SocketReply>(std::move(reply));
        m_window->drawTo([shared](std::string answer) { shared->send(std::move(answer)); });
    });
}

void RunnerApplication::addActions() {
    addAction(G_ACTION_MAP(m_application), "quit", [this] { quit(); });
    bindKeys(m_application, m_bundle.config.isDevMode);
}

AppWindow* RunnerApplication::window() {
    if (m_window || m_hasProblem)
        return m_window.get();
    if (const auto problem = sandboxProblem()) {
        m_hasProblem = true;
        reportLine(oneLine(*problem));
        GtkWindow* message = makeProblemWindow(*problem);
        gtk_application_add_window(m_application, message);
        gtk_window_present(message);
        return nullptr;
    }
    m_window = std::make_unique<AppWindow>(m_application, m_bundle, m_paths);
    return m_window.get();
}

void RunnerApplication::activate() {
    if (m_isQuitting)
        return;
    if (AppWindow* shown = window()) {
        shown->loadStart();
        shown->present();
    }
}

void RunnerApplication::open(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        const auto request = parseAppRequest(text, m_bundle.info.urlScheme);
        AppWindow* shown = request ? window() : nullptr;
        if (shown != nullptr)
            shown->handle(*request);
        else if (!request)
            reportLine(request.error());
    }
    activate();
}

}  // namespace wrapio
