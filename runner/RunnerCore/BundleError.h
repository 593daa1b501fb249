// What can be wrong with an app's bundle, and the words for it.
#pragma once

#include <cstddef>
#include <string>
#include <variant>

namespace wrapio {

/// The program was started from a place that is no bundle.
struct NotInBundle {
    std::string executable;
};
struct FileMissing {
    std::string path;
};
struct FileUnreadable {
    std::string path;
    std::string reason;
};
struct FileTooLarge {
    std::string path;
    std::size_t limit = 0;  ///< in bytes
};
/// config.json is no JSON object of the expected shape.
struct ConfigMalformed {
    std::string reason;
};
/// The address in config.json cannot be shown.
struct AddressUnusable {
    std::string address;
    std::string reason;
};
struct InfoPlistMalformed {
    std::string reason;
};

using BundleError = std::variant<NotInBundle, FileMissing, FileUnreadable, FileTooLarge, ConfigMalformed,
                                 AddressUnusable, InfoPlistMalformed>;

/// A message for people: what is wrong, and what to do about it.
struct Message {
    std::string title;
    std::string body;
};

/// The message for `error`. Texts that come from files are cleaned of controls and cut to a readable length.
[[nodiscard]] Message messageFor(const BundleError& error);

/// `message` on one line, for a terminal.
[[nodiscard]] std::string oneLine(const Message& message);

}  // namespace wrapio
