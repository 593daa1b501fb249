#include "Platform/Linux/LinuxSystemHealth.h"

#include "Platform/Linux/FileCalls.h"
#include "Platform/Linux/ProcessStart.h"
#include "Platform/Linux/SessionBus.h"
#include "Platform/Linux/X11Windows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double probeWithinSeconds = 5;

QString environmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value ? QFile::decodeName(value) : QString();
}

bool acceptsConnections(const QString& socketPath) {
    const QByteArray path = QFile::encodeName(socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const posix::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return socket.isOpen() && ::connect(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

bool isWaylandReachable(const QString& display) {
    if (display.isEmpty())
        return false;
    const bool isPath = display.startsWith(u'/');
    return acceptsConnections(isPath ? display : environmentText("XDG_RUNTIME_DIR") + u'/' + display);
}

SurroundingsCheck checkDisplay() {
    const QString wayland = environmentText("WAYLAND_DISPLAY");
    const QString x11 = environmentText("DISPLAY");
    SurroundingsCheck check{u"Display"_s, true, {}, {}};
    if (isWaylandReachable(wayland)) {
        check.detail = u"Wayland, %1"_s.arg(wayland);
    } else if (isX11Reachable()) {
        check.detail = u"X11, %1"_s.arg(x11);
    } else {
        check.usable = false;
        check.detail = wayland.isEmpty() && x11.isEmpty()
                           ? u"Neither WAYLAND_DISPLAY nor DISPLAY is set"_s
                           : u"%1 cannot be reached"_s.arg(wayland.isEmpty() ? x11 : wayland);
        check.remedy = u"Start Wrapio from a desktop session"_s;
    }
    return check;
}

SurroundingsCheck checkSessionBus() {
    if (isSessionBusReachable())
        return {u"Session bus"_s, true, u"reachable"_s, {}};
    return {u"Session bus"_s, false, u"The session bus cannot be reached"_s,
            u"Start Wrapio from a desktop session, or with dbus-run-session"_s};
}

SurroundingsCheck checkStatusItems() {
    const QString name = u"Status items"_s;
    if (hasStatusItemHost())
        return {name, true, u"shown by the desktop"_s, {}};
    if (hasX11Tray())
        return {name, true, u"shown in the X11 tray"_s, {}};
    return {name, false, u"This desktop shows no status items"_s,
            u"Add a status area to the desktop's panel, or use the dashboard and the command line"_s};
}

/// Where the system's linker finds libraries, besides what is compiled into programs.
QStringList libraryFolders() {
    QStringList folders = environmentText("LD_LIBRARY_PATH").split(u':', Qt::SkipEmptyParts);
    for (const auto& root : {u"/usr/lib"_s, u"/usr/local/lib"_s, u"/lib"_s}) {
        folders << root << root + u"64"_s;
        // One folder for each architecture, as in /usr/lib/x86_64-linux-gnu.
        for (const QString& name : QDir(root).entryList({u"*-linux-gnu*"_s}, QDir::Dirs))
            folders << root + u'/' + name;
    }
    return folders;
}

}  // namespace

SealReport LinuxSystemHealth::verifySeal(const QString& bundlePath) const {
    return m_bundles.verifySeal(bundlePath);
}

std::vector<Registration> LinuxSystemHealth::registrations() const {
    return m_bundles.registrations();
}

FileResult<void> LinuxSystemHealth::removeRegistration(const QString& identifier) {
    return m_bundles.removeRegistration(identifier);
}

std::vector<SurroundingsCheck> LinuxSystemHealth::surroundings() const {
    return {checkDisplay(),
            checkSessionBus(),
            checkStatusItems(),
            checkPageEngine(),
            checkSandbox(),
            checkProgram(u"Page engine bus proxy"_s, u"xdg-dbus-proxy"_s, u"xdg-dbus-proxy"_s),
            checkProgram(u"Registration of apps"_s, u"update-desktop-database"_s, u"desktop-file-utils"_s),
            checkProgram(u"Opening of addresses"_s, u"gio"_s, u"libglib2.0-bin"_s)};
}

SurroundingsCheck LinuxSystemHealth::checkPageEngine() const {
    const QString library = u"libwebkitgtk-6.0.so.4"_s;
    const QStringList folders = m_places.libraries.isEmpty() ? libraryFolders() : m_places.libraries;
    for (const QString& folder : folders) {
        if (const QString path = folder + u'/' + library; QFileInfo(path).isFile())
            return {u"Page engine"_s, true, path, {}};
    }
    return {u"Page engine"_s, false, u"%1 was not found"_s.arg(library), u"Install the package libwebkitgtk-6.0-4"_s};
}

/// What the engine does before it shows a page; it ends at once where that is refused.
SurroundingsCheck LinuxSystemHealth::checkSandbox() const {
    const QString name = u"Page engine sandbox"_s;
    const QString program = findProgram(u"bwrap"_s);
    if (program.isEmpty())
        return {name, false, u"bwrap was not found"_s, u"Install the package bubblewrap"_s};
    const auto status =
        runProcess(program,
                   {u"--unshare-pid"_s, u"--unshare-net"_s, u"--unshare-uts"_s, u"--unshare-ipc"_s, u"--ro-bind"_s,
                    u"/"_s, u"/"_s, u"--proc"_s, u"/proc"_s, u"--dev"_s, u"/dev"_s, u"true"_s},
                   probeWithinSeconds);
    if (status == 0)
        return {name, true, program, {}};
    return {name, false, u"%1 cannot make a sandbox"_s.arg(program),
            u"Allow user namespaces: sysctl kernel.unprivileged_userns_clone=1 and user.max_user_namespaces above 0"_s};
}

SurroundingsCheck LinuxSystemHealth::checkProgram(const QString& name, const QString& program,
                                                  const QString& package) const {
    const QString path = findProgram(program);
    if (!path.isEmpty())
        return {name, true, path, {}};
    return {name, false, u"%1 was not found"_s.arg(program), u"Install the package %1"_s.arg(package)};
}

QString LinuxSystemHealth::findProgram(const QString& program) const {
    return QStandardPaths::findExecutable(program, m_places.programs);
}

}  // namespace wrapio
