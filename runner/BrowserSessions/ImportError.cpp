#include "BrowserSessions/ImportError.h"

#include "RunnerCore/DisplayText.h"

namespace wrapio {

namespace {

constexpr std::size_t longestReason = 160;

struct Describe {
    const std::string& source;

    Message operator()(const SourceMissing&) const {
        return {"No session was found in " + source,
                "It has stored no cookies on this computer. Sign in there first, or sign in to this app directly."};
    }
    Message operator()(const SourceLocked& e) const {
        return {source + " does not let its session be read now",
                displayText(e.reason, longestReason) + ". Close " + source + " and try again."};
    }
    Message operator()(const SourceDamaged& e) const {
        return {"The session of " + source + " cannot be read",
                "Its cookies are stored in a way that this app does not know: " + displayText(e.reason, longestReason) +
                    "."};
    }
    Message operator()(const KeyMissing&) const {
        return {"The session of " + source + " is locked away",
                "Its cookies are encrypted with a key in your keyring, which could not be had. Unlock the keyring and "
                "try again, or sign in to this app directly."};
    }
};

}  // namespace

Message messageFor(const ImportError& error, const std::string& source) {
    return std::visit(Describe{source}, error);
}

}  // namespace wrapio
