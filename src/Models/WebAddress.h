// A web address that keeps the text as it was typed and answers questions about it.
#pragma once

#include <QString>

#include <optional>

namespace wrapio {

/// A value. QUrl lower-cases scheme and host and rewrites international names, so an address holds its own text.
class WebAddress {
public:
    /// Reads `text` leniently. Nothing when it is no address at all; an address without a scheme or a host is one.
    [[nodiscard]] static std::optional<WebAddress> parse(const QString& text);

    /// The whole text, unchanged.
    [[nodiscard]] const QString& absoluteString() const { return m_text; }
    /// The scheme as it stands; compare it in lower case.
    [[nodiscard]] const std::optional<QString>& scheme() const { return m_scheme; }
    /// The host as it stands, without brackets and port.
    [[nodiscard]] const std::optional<QString>& host() const { return m_host; }
    [[nodiscard]] std::optional<int> port() const { return m_port; }

    bool operator==(const WebAddress& other) const { return m_text == other.m_text; }

private:
    WebAddress() = default;

    QString m_text;
    std::optional<QString> m_scheme;
    std::optional<QString> m_host;
    std::optional<int> m_port;
};

}  // namespace wrapio
