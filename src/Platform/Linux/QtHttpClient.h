// HTTP by Qt.
#pragma once

#include "Platform/HttpClient.h"

#include <QNetworkAccessManager>
#include <QObject>

namespace wrapio {

/// Keeps no cookies, no cache and no passwords, and asks nobody anything. The time limit covers a request from its
/// start to its last byte, redirections included; the size limit counts what is left after decompression. A redirection
/// from https to http is a failure. Requests under way when this goes away are dropped without completion.
class QtHttpClient final : public HttpClient {
public:
    QtHttpClient();

    void get(const HttpRequest& request, Completion completion) override;

private:
    QNetworkAccessManager m_network;
    QObject m_transfers;  ///< parent of the requests under way; goes before the network does
};

}  // namespace wrapio
