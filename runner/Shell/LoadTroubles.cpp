#include "Shell/LoadTroubles.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"
#include "Shell/MessageDialog.h"
#include "Utilities/AddressText.h"

namespace wrapio {

namespace {

/// Loads that were given up on purpose: replaced, stopped, handed to another program, or turned into a download.
bool isOnPurpose(const GError* error) {
    return g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) ||
           g_error_matches(error, WEBKIT_POLICY_ERROR, WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE);
}

bool isSelfSigned(GTlsCertificate* certificate) {
    const TextPtr subject(g_tls_certificate_get_subject_name(certificate));
    const TextPtr issuer(g_tls_certificate_get_issuer_name(certificate));
    return subject && issuer && std::string_view(subject.get()) == issuer.get();
}

using CertificatePtr = std::shared_ptr<GTlsCertificate>;

CertificatePtr keep(GTlsCertificate* certificate) {
    g_object_ref(certificate);
    return CertificatePtr(certificate, UnrefObject());
}

TlsFaults faultsOf(GTlsCertificate* certificate, GTlsCertificateFlags flags) {
    const auto has = [flags](GTlsCertificateFlags flag) { return (flags & flag) != 0; };
    return {
        has(G_TLS_CERTIFICATE_UNKNOWN_CA), has(G_TLS_CERTIFICATE_BAD_IDENTITY), has(G_TLS_CERTIFICATE_NOT_ACTIVATED),
        has(G_TLS_CERTIFICATE_EXPIRED),    has(G_TLS_CERTIFICATE_REVOKED),      has(G_TLS_CERTIFICATE_INSECURE),
        isSelfSigned(certificate)};
}

/// True when `address` was asked for, but the page before it stopped working first: it is not in the history yet.
bool isOnItsWay(WebKitWebView* view, const std::string& address) {
    WebKitBackForwardListItem* shown =
        webkit_back_forward_list_get_current_item(webkit_web_view_get_back_forward_list(view));
    return shown != nullptr && orEmpty(webkit_back_forward_list_item_get_uri(shown)) != address;
}

}  // namespace

LoadTroubles::LoadTroubles(PageArea& page, PageLoader& loader, bool isDevMode)
    : m_page(page)
    , m_loader(loader)
    , m_view(page.view())
    , m_isDevMode(isDevMode) {
    g_signal_connect(m_view, "load-changed", G_CALLBACK(&LoadTroubles::loadChanged), this);
    g_signal_connect(m_view, "load-failed", G_CALLBACK(&LoadTroubles::loadFailed), this);
    g_signal_connect(m_view, "load-failed-with-tls-errors", G_CALLBACK(&LoadTroubles::tlsFailed), this);
    connect(
        m_view, "web-process-terminated",
        [](WebKitWebView*, WebKitWebProcessTerminationReason reason, LoadTroubles* self) {
            if (reason != WEBKIT_WEB_PROCESS_TERMINATED_BY_API)
                self->processEnded();
        },
        this);
}

LoadTroubles::~LoadTroubles() {
    g_signal_handlers_disconnect_by_data(m_view, this);
}

void LoadTroubles::reload(bool withoutCache) {
    if (!m_failedAddress.empty())
        m_loader.load(m_failedAddress);
    else
        m_loader.reload(withoutCache);
}

void LoadTroubles::showInstead(const Message& message, const std::string& address) {
    m_probe.stop();
    m_failedAddress = address;
    m_page.showStatus(message, {{"Try Again", [this] { reload(); }}});
}

void LoadTroubles::pageCame() {
    m_probe.forget();
    m_failedAddress.clear();
    m_hasShownPage = true;
    m_page.showPage();
}

void LoadTroubles::showUnreachable(const std::string& address, const std::string& reason) {
    showInstead(unreachableMessage(address, reason), address);
    if (address.starts_with("http"))
        m_probe.watch(address, [this] { reload(); });
}

void LoadTroubles::showTls(const std::string& address, GTlsCertificate* certificate, GTlsCertificateFlags flags) {
    m_probe.stop();
    m_failedAddress = address;
    const TlsFaults faults = faultsOf(certificate, flags);
    const auto parts = parseAddress(address);
    const std::string host = parts ? parts->host.value_or("") : "";
    std::vector<Choice> choices{{"Try Again", [this] { reload(); }}};
    if (mayTrustForNow(faults, host, m_isDevMode)) {
        const CertificatePtr kept = keep(certificate);
        choices.push_back({"Trust This Server…", [this, host, kept] { askForTrust(host, kept.get()); }});
    }
    m_page.showStatus(tlsMessage(faults, address), choices);
}

void LoadTroubles::askForTrust(const std::string& host, GTlsCertificate* certificate) {
    const CertificatePtr kept = keep(certificate);
    const Message question{"Trust “" + displayText(host, 80) + "” until the app is quit?",
                           "Its certificate proves nothing about who answers. Do this only for a server of your own."};
    showMessageDialog(GTK_WINDOW(gtk_widget_get_root(m_page.widget())), question,
                      {{"Cancel", {}}, {"Trust", [this, host, kept] {
                                            webkit_network_session_allow_tls_certificate_for_host(
                                                webkit_web_view_get_network_session(m_view), kept.get(), host.c_str());
                                            reload();
                                        }}});
}

void LoadTroubles::processEnded() {
    const std::string address = m_loader.takeWanted();
    const auto now = std::chrono::steady_clock::now();
    // The engine would go back to the page before, for which nobody has asked.
    if (isOnItsWay(m_view, address) && m_lostRequests.allow(now))
        return m_loader.load(address);
    if (m_crashes.allow(now)) {
        reportLine("“" + displayText(address, 200) + "” stopped working and is loaded again");
        return m_loader.reload();
    }
    showInstead(
        {"This page stopped working", "It was loaded again and stopped once more. The rest of the app is fine."},
        address);
}

void LoadTroubles::loadChanged(WebKitWebView*, WebKitLoadEvent event, LoadTroubles* self) {
    if (event == WEBKIT_LOAD_STARTED)
        self->m_probe.stop();
    else if (event == WEBKIT_LOAD_COMMITTED)
        self->pageCame();
}

gboolean LoadTroubles::loadFailed(WebKitWebView*, WebKitLoadEvent, const char* address, GError* error,
                                  LoadTroubles* self) {
    if (!isOnPurpose(error))
        self->showUnreachable(orEmpty(address), error->message);
    return TRUE;
}

gboolean LoadTroubles::tlsFailed(WebKitWebView*, const char* address, GTlsCertificate* certificate,
                                 GTlsCertificateFlags flags, LoadTroubles* self) {
    self->showTls(orEmpty(address), certificate, flags);
    return TRUE;
}

}  // namespace wrapio
