#include "Models/WebAddress.h"

#include "Utilities/AddressText.h"

namespace wrapio {

std::optional<WebAddress> WebAddress::parse(const QString& text) {
    const auto parts = parseAddress(text.toStdString());
    if (!parts)
        return std::nullopt;
    WebAddress address;
    address.m_text = text;
    if (parts->scheme)
        address.m_scheme = QString::fromStdString(*parts->scheme);
    if (parts->host)
        address.m_host = QString::fromStdString(*parts->host);
    address.m_port = parts->port;
    return address;
}

}  // namespace wrapio
