#include "Platform/Linux/SealList.h"

#include "Utilities/Utf8.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using OwnedPlist = std::unique_ptr<void, FreePlist>;

struct FreeBytes {
    void operator()(void* bytes) const { std::free(bytes); }
};

bool hasXmlForm(std::string_view text) {
    while (!text.empty()) {
        const auto c = takeCodePoint(text);
        if (!c || *c < 0x20 || *c == 0x7F || *c == 0xFFFE || *c == 0xFFFF)
            return false;
    }
    return true;
}

plist_t nodeFor(const SealList::Item& item) {
    plist_t node = plist_new_dict();
    if (!item.hash.isEmpty())
        plist_dict_set_item(node, "hash2",
                            plist_new_data(item.hash.constData(), static_cast<std::uint64_t>(item.hash.size())));
    else
        plist_dict_set_item(node, "symlink", plist_new_string(item.target.c_str()));
    if (item.executable)
        plist_dict_set_item(node, "executable", plist_new_bool(1));
    return node;
}

bool isOfType(plist_t node, plist_type type) {
    return node && plist_get_node_type(node) == type;
}

std::optional<SealList::Item> itemFrom(plist_t node) {
    if (!isOfType(node, PLIST_DICT))
        return std::nullopt;
    SealList::Item item;
    if (plist_t hash = plist_dict_get_item(node, "hash2"); isOfType(hash, PLIST_DATA)) {
        std::uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(hash, &length);
        item.hash = QByteArray(bytes, static_cast<qsizetype>(length));
    }
    if (plist_t target = plist_dict_get_item(node, "symlink"); isOfType(target, PLIST_STRING)) {
        std::uint64_t length = 0;
        const char* text = plist_get_string_ptr(target, &length);
        item.target = text ? text : "";
    }
    if (plist_t executable = plist_dict_get_item(node, "executable"); isOfType(executable, PLIST_BOOLEAN)) {
        std::uint8_t value = 0;
        plist_get_bool_val(executable, &value);
        item.executable = value != 0;
    }
    return item;
}

bool readItems(plist_t files, SealList& list) {
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(files, &position);
    const std::unique_ptr<void, FreeBytes> owner(position);
    for (std::uint32_t i = 0; i < plist_dict_get_size(files); ++i) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(files, position, &key, &value);
        const std::unique_ptr<char, FreeBytes> path(key);
        auto item = itemFrom(value);
        if (!key || !item)
            return false;
        list.items.insert_or_assign(key, std::move(*item));
    }
    return true;
}

}  // namespace

ToolOutcome<QByteArray> SealList::toXml() const {
    const OwnedPlist root(plist_new_dict());
    plist_t files = plist_new_dict();
    plist_dict_set_item(root.get(), "files2", files);
    for (const auto& [path, item] : items) {
        if (!hasXmlForm(path) || !hasXmlForm(item.target))
            return toolFailure(u"%1: a name that a seal cannot hold"_s.arg(QString::fromStdString(path)));
        plist_dict_set_item(files, path.c_str(), nodeFor(item));
    }
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    const std::unique_ptr<char, FreeBytes> owner(xml);
    if (!xml)
        return toolFailure(u"the seal could not be written"_s);
    return QByteArray(xml, static_cast<qsizetype>(length));
}

std::optional<SealList> SealList::parse(const QByteArray& bytes) {
    plist_t node = nullptr;
    plist_from_xml(bytes.constData(), static_cast<std::uint32_t>(bytes.size()), &node);
    const OwnedPlist root(node);
    if (!isOfType(node, PLIST_DICT))
        return std::nullopt;
    plist_t files = plist_dict_get_item(node, "files2");
    SealList list;
    if (!isOfType(files, PLIST_DICT) || !readItems(files, list))
        return std::nullopt;
    return list;
}

}  // namespace wrapio
