// Fetching small things over HTTP.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include <tl/expected.hpp>

namespace wrapio {

struct HttpRequest {
    QString url;
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    double timeoutSeconds = 10;
    qint64 maximumBytes = 16LL * 1024 * 1024;  ///< a longer body is a failure; no more is ever read
    int maximumRedirects = 10;
};

struct HttpResponse {
    int status = 0;
    std::optional<QString> contentType;
    QByteArray body;
};

struct HttpError {
    QString reason;
    [[nodiscard]] const QString& description() const { return reason; }
};

/// Used from the main thread.
class HttpClient {
public:
    using Completion = std::function<void(tl::expected<HttpResponse, HttpError>)>;

    HttpClient() = default;
    virtual ~HttpClient() = default;
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    /// Loads `request` by GET. Returns at once; `completion` comes once, in a later turn of the main thread. Any status
    /// is a response; a failure to get one is an error. Only http and https are followed.
    virtual void get(const HttpRequest& request, Completion completion) = 0;
};

}  // namespace wrapio
