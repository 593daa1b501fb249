// What the seal of a bundle says, and its property-list form. A plain value; any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"

#include <QByteArray>

#include <map>
#include <optional>
#include <string>

namespace wrapio {

struct SealList {
    struct Item {
        QByteArray hash;     ///< SHA-256 of a file's contents; empty for a link
        std::string target;  ///< where a link leads; empty for a file
        bool executable = false;

        bool operator==(const Item&) const = default;
    };

    std::map<std::string, Item> items;  ///< by path below the bundle

    /// XML bytes, the items in the order of their paths. Fails when a path or a target has no XML form: bytes that are
    /// no UTF-8, or control characters.
    [[nodiscard]] ToolOutcome<QByteArray> toXml() const;
    /// Nothing when the bytes are not such a list.
    [[nodiscard]] static std::optional<SealList> parse(const QByteArray& bytes);
};

}  // namespace wrapio
