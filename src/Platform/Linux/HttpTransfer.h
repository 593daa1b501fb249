// One request of QtHttpClient, from its first address to the end of its redirections. Main thread.
#pragma once

#include "Platform/HttpClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>

namespace wrapio {

/// Deletes itself once it has called its completion. Deleted earlier, it stops and never calls it.
class HttpTransfer final : public QObject {
public:
    HttpTransfer(QNetworkAccessManager& network, HttpRequest request, HttpClient::Completion completion,
                 QObject* parent);
    ~HttpTransfer() override;

    /// Begins. The completion comes in a later turn of the event loop, whatever happens.
    void start();

private:
    void load(const QUrl& url);
    void examineHeaders();
    void collect();
    void finishReply();
    void redirect(const QUrl& target);
    void fail(const QString& reason);
    void complete(tl::expected<HttpResponse, HttpError> result);
    void dropReply();

    QNetworkAccessManager& m_network;
    HttpRequest m_request;
    HttpClient::Completion m_completion;
    QTimer m_timeout;
    QNetworkReply* m_reply = nullptr;
    QByteArray m_body;
    int m_redirects = 0;
    bool m_isComplete = false;
};

}  // namespace wrapio
