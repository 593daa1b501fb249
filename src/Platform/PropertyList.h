// Property lists: read in XML or binary form, written as XML.
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace wrapio {

/// A dictionary at the root of a property list. Move-only.
class PropertyList {
public:
    /// An empty dictionary.
    PropertyList();
    PropertyList(PropertyList&&) noexcept;
    PropertyList& operator=(PropertyList&&) noexcept;
    PropertyList(const PropertyList&) = delete;
    PropertyList& operator=(const PropertyList&) = delete;
    ~PropertyList();

    /// Nothing when the bytes are no property list, or their root is no dictionary.
    [[nodiscard]] static std::optional<PropertyList> parse(const QByteArray& bytes);

    /// The text under `key`; nothing when it is missing or not text.
    [[nodiscard]] std::optional<QString> text(std::string_view key) const;
    /// The schemes of all entries of CFBundleURLTypes.
    [[nodiscard]] std::vector<QString> urlSchemes() const;

    void setText(std::string_view key, const QString& value);
    /// Replaces CFBundleURLTypes by one entry of that name with one scheme.
    void setUrlType(const QString& name, const QString& scheme);
    void remove(std::string_view key);

    /// The list in XML form; nothing when it cannot be written.
    [[nodiscard]] std::optional<QByteArray> toXml() const;

private:
    struct Node;
    explicit PropertyList(std::unique_ptr<Node> node);
    std::unique_ptr<Node> m_node;
};

}  // namespace wrapio
