#include "Platform/Linux/QtHttpClient.h"

#include "Platform/Linux/HttpTransfer.h"

namespace wrapio {

QtHttpClient::QtHttpClient() {
    m_network.setAutoDeleteReplies(false);
    m_network.setStrictTransportSecurityEnabled(false);
}

void QtHttpClient::get(const HttpRequest& request, Completion completion) {
    auto* const transfer = new HttpTransfer(m_network, request, std::move(completion), &m_transfers);
    transfer->start();
}

}  // namespace wrapio
