// Asks the engine for pages.
#pragma once

#include "Shell/GObjects.h"

#include <webkit/webkit.h>

#include <string>

namespace wrapio {

/// Of two requests in the moment in which a view's first process starts, or a new one after a crash, the engine may
/// lose both without a word: here the second waits until the first is under way. A process that never comes is given
/// up, and another one started. Lives on the main thread, no longer than the view, and must be made before whoever asks
/// it when the process ends.
class PageLoader {
public:
    explicit PageLoader(WebKitWebView* view);
    ~PageLoader();
    PageLoader(const PageLoader&) = delete;
    PageLoader& operator=(const PageLoader&) = delete;

    /// Loads an address, over one that still waits.
    void load(const std::string& address);
    /// Loads what is shown again. Does nothing while a process starts for it anyway.
    void reload(bool withoutCache = false);
    /// The address that people asked for last: the one that waits, which is forgotten, or the view's own.
    [[nodiscard]] std::string takeWanted();
    /// Tells that the policy has stopped a request: nothing is under way.
    void requestStopped() { settle(); }

    [[nodiscard]] WebKitWebView* view() const { return m_view; }

private:
    enum class Process { missing, starting, running };

    void expectProcess();
    void startAnew();
    void settle();
    static void loadChanged(WebKitWebView*, WebKitLoadEvent event, PageLoader* self);

    WebKitWebView* m_view;
    Process m_process = Process::missing;
    unsigned m_patience;
    std::string m_waiting;
    Timeout m_pause;
};

}  // namespace wrapio
