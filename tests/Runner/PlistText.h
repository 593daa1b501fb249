// Property lists for tests.
#pragma once

#include <string>

namespace wrapio::test {

inline const std::string recordId = "0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40";
inline const std::string scheme = "wrapio-0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40";
inline const std::string identifier = "com.wrapio.generated.mail-0b7c57e2";

inline std::string plist(const std::string& members) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + members + "</dict></plist>";
}

inline std::string textMember(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

inline std::string schemeMember(const std::string& value) {
    return "<key>CFBundleURLTypes</key><array><dict><key>CFBundleURLSchemes</key><array><string>" + value +
           "</string></array></dict></array>";
}

inline std::string goodPlist() {
    return plist(textMember("CFBundleIdentifier", identifier) + textMember("CFBundleShortVersionString", "1.2.3") +
                 schemeMember(scheme));
}

}  // namespace wrapio::test
