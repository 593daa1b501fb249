#include "RunnerCore/BundleError.h"

#include "RunnerCore/DisplayText.h"

namespace wrapio {

namespace {

constexpr std::size_t longestQuote = 200;
const std::string regenerate = "Open Wrapio, choose this app and regenerate it.";

std::string quoted(const std::string& text) {
    return "“" + displayText(text, longestQuote) + "”";
}

struct Describe {
    Message operator()(const NotInBundle& e) const {
        return {"This program is a part of a Wrapio app",
                "It was started from " + quoted(e.executable) +
                    ", which is not inside an app bundle. Start an app that Wrapio has made instead."};
    }
    Message operator()(const FileMissing& e) const {
        return {"This app is incomplete", "The file " + quoted(e.path) + " is missing. " + regenerate};
    }
    Message operator()(const FileUnreadable& e) const {
        return {"This app cannot be read", "The file " + quoted(e.path) +
                                               " cannot be read: " + displayText(e.reason, longestQuote) + ". " +
                                               "Check its permissions, or regenerate the app in Wrapio."};
    }
    Message operator()(const FileTooLarge& e) const {
        return {"This app is damaged", "The file " + quoted(e.path) + " is larger than " +
                                           std::to_string(e.limit / 1024) + " KiB, more than any app needs. " +
                                           regenerate};
    }
    Message operator()(const ConfigMalformed& e) const {
        return {"This app’s settings are damaged",
                "config.json cannot be used: " + displayText(e.reason, longestQuote) + ". " + regenerate};
    }
    Message operator()(const AddressUnusable& e) const {
        return {"This app’s address cannot be shown", quoted(e.address) + " " + displayText(e.reason, longestQuote) +
                                                          ". Open Wrapio and correct the address of this app."};
    }
    Message operator()(const InfoPlistMalformed& e) const {
        return {"This app’s identity is damaged",
                "Info.plist cannot be used: " + displayText(e.reason, longestQuote) + ". " + regenerate};
    }
};

}  // namespace

Message messageFor(const BundleError& error) {
    return std::visit(Describe{}, error);
}

std::string oneLine(const Message& message) {
    return message.title + ". " + message.body;
}

}  // namespace wrapio
