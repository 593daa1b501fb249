#include "Shell/PageLoader.h"

#include <utility>

namespace wrapio {

namespace {

/// A site that takes its time to answer must not keep another request waiting: the moment is long over then.
constexpr unsigned settlingMilliseconds = 1000;
/// After this a process is taken not to come; twice as long for each next one, since the machine may be slow.
constexpr unsigned firstPatience = 20000;

}  // namespace

PageLoader::PageLoader(WebKitWebView* view)
    : m_view(view)
    , m_patience(firstPatience) {
    g_signal_connect(m_view, "load-changed", G_CALLBACK(&PageLoader::loadChanged), this);
    connect(
        m_view, "load-failed",
        [](WebKitWebView*, WebKitLoadEvent, const char*, GError*, PageLoader* self) -> gboolean {
            self->settle();
            return FALSE;
        },
        this);
    connect(
        m_view, "web-process-terminated",
        [](WebKitWebView*, WebKitWebProcessTerminationReason, PageLoader* self) {
            self->m_process = Process::missing;
            self->m_pause.cancel();
        },
        this);
}

PageLoader::~PageLoader() {
    g_signal_handlers_disconnect_by_data(m_view, this);
}

void PageLoader::load(const std::string& address) {
    if (m_process == Process::starting) {
        m_waiting = address;
        return;
    }
    expectProcess();
    m_waiting.clear();
    webkit_web_view_load_uri(m_view, address.c_str());
}

void PageLoader::reload(bool withoutCache) {
    if (m_process == Process::starting)
        return;
    expectProcess();
    if (withoutCache)
        webkit_web_view_reload_bypass_cache(m_view);
    else
        webkit_web_view_reload(m_view);
}

std::string PageLoader::takeWanted() {
    const std::string waiting = std::exchange(m_waiting, {});
    return waiting.empty() ? orEmpty(webkit_web_view_get_uri(m_view)) : waiting;
}

void PageLoader::expectProcess() {
    if (m_process == Process::running)
        return;
    m_process = Process::starting;
    m_pause.start(m_patience, [this] { startAnew(); });
}

/// The engine takes further requests for ones that the missing process will answer, until it is told to end it.
void PageLoader::startAnew() {
    m_patience *= 2;
    const std::string wanted = takeWanted();
    webkit_web_view_terminate_web_process(m_view);
    m_process = Process::missing;
    load(wanted);
}

/// The engine is left alone until the signal that told of it is over.
void PageLoader::settle() {
    if (m_process != Process::starting)
        return;
    m_pause.start(0, [this] {
        m_process = Process::running;
        m_patience = firstPatience;
        if (!m_waiting.empty())
            load(std::exchange(m_waiting, {}));
    });
}

void PageLoader::loadChanged(WebKitWebView*, WebKitLoadEvent event, PageLoader* self) {
    if (self->m_process != Process::starting)
        return;
    if (event == WEBKIT_LOAD_STARTED)
        self->m_pause.start(settlingMilliseconds, [self] { self->settle(); });
    else if (event == WEBKIT_LOAD_COMMITTED)
        self->settle();
}

}  // namespace wrapio
