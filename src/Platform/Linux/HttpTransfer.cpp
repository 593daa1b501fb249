#include "Platform/Linux/HttpTransfer.h"

#include <QNetworkRequest>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// How much of a body waits in memory besides what has been collected.
constexpr qint64 readBufferSize = 64LL * 1024;

bool isWebAddress(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https");
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// Where the response sends us, for the statuses that do so for GET.
QUrl redirectionOf(const QNetworkReply& reply) {
    const int status = statusOf(reply);
    const bool redirects = status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
    if (!redirects || !reply.hasRawHeader("Location"))
        return {};
    return reply.url().resolved(QUrl::fromEncoded(reply.rawHeader("Location"), QUrl::TolerantMode));
}

/// These errors are drawn from the status of a response that arrived whole.
bool hasWholeResponse(const QNetworkReply& reply) {
    const auto error = reply.error();
    if (statusOf(reply) == 0)
        return false;
    return error == QNetworkReply::NoError || error == QNetworkReply::ProxyAuthenticationRequiredError ||
           error == QNetworkReply::ProtocolInvalidOperationError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
           (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

QNetworkRequest networkRequest(const QUrl& url, const HttpRequest& request) {
    QNetworkRequest result(url);
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    for (const auto& [name, value] : request.headers)
        result.setRawHeader(name, value);
    return result;
}

}  // namespace

HttpTransfer::HttpTransfer(QNetworkAccessManager& network, HttpRequest request, HttpClient::Completion completion,
                           QObject* parent)
    : QObject(parent)
    , m_network(network)
    , m_request(std::move(request))
    , m_completion(std::move(completion)) {}

HttpTransfer::~HttpTransfer() {
    dropReply();
}

void HttpTransfer::start() {
    constexpr double longest = 2'000'000'000;
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, [this] { fail(u"The request timed out"_s); });
    m_timeout.start(static_cast<int>(std::clamp(std::ceil(m_request.timeoutSeconds * 1000), 0.0, longest)));
    // Later, since a failure to begin must not call the completion from inside get().
    QMetaObject::invokeMethod(
        this, [this] { load(QUrl(m_request.url)); }, Qt::QueuedConnection);
}

void HttpTransfer::load(const QUrl& url) {
    if (m_isComplete)
        return;
    if (!isWebAddress(url)) {
        fail(u"The address %1 is not one of the web"_s.arg(url.toDisplayString()));
        return;
    }
    m_body.clear();
    m_reply = m_network.get(networkRequest(url, m_request));
    m_reply->setReadBufferSize(readBufferSize);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpTransfer::examineHeaders);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpTransfer::collect);
    connect(m_reply, &QNetworkReply::finished, this, &HttpTransfer::finishReply);
}

void HttpTransfer::examineHeaders() {
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    if (redirectionOf(*m_reply).isEmpty() && length.toLongLong() > m_request.maximumBytes)
        fail(u"The response is too large"_s);
}

void HttpTransfer::collect() {
    // The text that goes with a redirection is of no use.
    if (!redirectionOf(*m_reply).isEmpty()) {
        redirect(redirectionOf(*m_reply));
        return;
    }
    const qint64 room = m_request.maximumBytes - m_body.size();
    m_body += m_reply->read(room + 1);
    if (m_body.size() > m_request.maximumBytes)
        fail(u"The response is too large"_s);
}

void HttpTransfer::finishReply() {
    if (!hasWholeResponse(*m_reply)) {
        fail(m_reply->errorString());
        return;
    }
    if (const QUrl target = redirectionOf(*m_reply); !target.isEmpty()) {
        redirect(target);
        return;
    }
    while (!m_isComplete && m_reply->bytesAvailable() > 0)
        collect();
    if (m_isComplete)
        return;
    HttpResponse response;
    response.status = statusOf(*m_reply);
    if (m_reply->hasRawHeader("Content-Type"))
        response.contentType = QString::fromLatin1(m_reply->rawHeader("Content-Type"));
    response.body = std::move(m_body);
    complete(std::move(response));
}

void HttpTransfer::redirect(const QUrl& target) {
    const bool wasSecure = m_reply->url().scheme() == u"https";
    dropReply();
    if (++m_redirects > m_request.maximumRedirects)
        fail(u"The address redirects too often"_s);
    else if (wasSecure && target.scheme() == u"http")
        fail(u"The address redirects from a secure connection to an insecure one"_s);
    else
        load(target);
}

void HttpTransfer::fail(const QString& reason) {
    complete(tl::unexpected(HttpError{reason}));
}

void HttpTransfer::complete(tl::expected<HttpResponse, HttpError> result) {
    if (m_isComplete)
        return;
    m_isComplete = true;
    m_timeout.stop();
    dropReply();
    deleteLater();
    const auto completion = std::exchange(m_completion, nullptr);
    completion(std::move(result));
}

void HttpTransfer::dropReply() {
    if (!m_reply)
        return;
    QNetworkReply* const reply = std::exchange(m_reply, nullptr);
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
}

}  // namespace wrapio
