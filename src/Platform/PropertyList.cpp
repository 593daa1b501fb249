#include "Platform/PropertyList.h"

#include <cstdlib>
#include <plist/plist.h>
#include <utility>

namespace wrapio {

struct PropertyList::Node {
    plist_t root = nullptr;

    explicit Node(plist_t node) : root(node) {}
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node() { plist_free(root); }
};

namespace {

std::optional<QString> textOf(plist_t node) {
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return std::nullopt;
    char* value = nullptr;
    plist_get_string_val(node, &value);
    if (!value)
        return std::nullopt;
    QString text = QString::fromUtf8(value);
    std::free(value);
    return text;
}

void appendTexts(plist_t array, std::vector<QString>& texts) {
    if (!array || plist_get_node_type(array) != PLIST_ARRAY)
        return;
    for (std::uint32_t i = 0; i < plist_array_get_size(array); ++i) {
        if (const auto text = textOf(plist_array_get_item(array, i)))
            texts.push_back(*text);
    }
}

bool hasXmlForm(QChar c) {
    return c.unicode() >= 0x20 ? c.unicode() < 0xFFFE : c == u'\t' || c == u'\n' || c == u'\r';
}

/// XML has no form for most control characters, and one of them would make the whole list unreadable.
plist_t newText(const QString& value) {
    QString text = value;
    text.removeIf([](QChar c) { return !hasXmlForm(c); });
    return plist_new_string(text.toUtf8().constData());
}

}  // namespace

PropertyList::PropertyList() : PropertyList(std::make_unique<Node>(plist_new_dict())) {}
PropertyList::PropertyList(std::unique_ptr<Node> node) : m_node(std::move(node)) {}
PropertyList::PropertyList(PropertyList&&) noexcept = default;
PropertyList& PropertyList::operator=(PropertyList&&) noexcept = default;
PropertyList::~PropertyList() = default;

std::optional<PropertyList> PropertyList::parse(const QByteArray& bytes) {
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), static_cast<std::uint32_t>(bytes.size()), &root);
    if (!root)
        return std::nullopt;
    auto node = std::make_unique<Node>(root);
    if (plist_get_node_type(root) != PLIST_DICT)
        return std::nullopt;
    return PropertyList(std::move(node));
}

std::optional<QString> PropertyList::text(std::string_view key) const {
    return textOf(plist_dict_get_item(m_node->root, std::string(key).c_str()));
}

std::vector<QString> PropertyList::urlSchemes() const {
    std::vector<QString> schemes;
    plist_t types = plist_dict_get_item(m_node->root, "CFBundleURLTypes");
    if (!types || plist_get_node_type(types) != PLIST_ARRAY)
        return schemes;
    for (std::uint32_t i = 0; i < plist_array_get_size(types); ++i) {
        plist_t type = plist_array_get_item(types, i);
        if (type && plist_get_node_type(type) == PLIST_DICT)
            appendTexts(plist_dict_get_item(type, "CFBundleURLSchemes"), schemes);
    }
    return schemes;
}

void PropertyList::setText(std::string_view key, const QString& value) {
    plist_dict_set_item(m_node->root, std::string(key).c_str(), newText(value));
}

void PropertyList::setUrlType(const QString& name, const QString& scheme) {
    plist_t schemes = plist_new_array();
    plist_array_append_item(schemes, newText(scheme));
    plist_t type = plist_new_dict();
    plist_dict_set_item(type, "CFBundleURLName", newText(name));
    plist_dict_set_item(type, "CFBundleURLSchemes", schemes);
    plist_t types = plist_new_array();
    plist_array_append_item(types, type);
    plist_dict_set_item(m_node->root, "CFBundleURLTypes", types);
}

void PropertyList::remove(std::string_view key) {
    if (plist_dict_get_item(m_node->root, std::string(key).c_str()))
        plist_dict_remove_item(m_node->root, std::string(key).c_str());
}

std::optional<QByteArray> PropertyList::toXml() const {
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(m_node->root, &xml, &length);
    if (!xml)
        return std::nullopt;
    QByteArray bytes(xml, static_cast<qsizetype>(length));
    std::free(xml);
    return bytes;
}

}  // namespace wrapio
