#include "RunnerCore/LoadTrouble.h"

#include "RunnerCore/DisplayText.h"
#include "Utilities/HostRules.h"

#include <algorithm>

namespace wrapio {

namespace {

constexpr std::size_t longestAddress = 120;
constexpr std::size_t longestReason = 200;
constexpr std::chrono::milliseconds shortestPause{1000};
constexpr std::chrono::milliseconds longestPause{30'000};
constexpr int mostDoublings = 5;

std::string faultsText(const TlsFaults& faults) {
    std::string text;
    const auto add = [&text](bool is, const char* sentence) {
        if (is)
            text += std::string(text.empty() ? "" : " ") + sentence;
    };
    add(faults.expired, "Its certificate has expired.");
    add(faults.notYetValid, "Its certificate is not valid yet; the clock of this computer may be wrong.");
    add(faults.revoked, "Its certificate has been revoked.");
    add(faults.wrongHost, "Its certificate belongs to another site.");
    add(faults.insecure, "Its certificate is signed in a way that can be forged.");
    add(faults.isSelfSigned, "It has signed its certificate itself.");
    add(faults.unknownAuthority && !faults.isSelfSigned, "Its certificate comes from nobody this computer trusts.");
    return text.empty() ? "Its certificate could not be checked." : text;
}

}  // namespace

Message tlsMessage(const TlsFaults& faults, std::string_view address) {
    return {"This connection is not private",
            displayText(address, longestAddress) + "\n\nThe site cannot prove that it is what it says. " +
                faultsText(faults) + " Somebody could be reading along, so the page was not loaded."};
}

bool mayTrustForNow(const TlsFaults& faults, std::string_view host, bool isDevMode) {
    const bool isOtherwiseWrong = faults.expired || faults.notYetValid || faults.revoked || faults.insecure;
    return isDevMode && isInternalHost(host) && faults.isSelfSigned && !isOtherwiseWrong;
}

Message unreachableMessage(std::string_view address, std::string_view reason) {
    return {"This page cannot be reached", displayText(address, longestAddress) + "\n\n" +
                                               displayText(reason, longestReason) +
                                               ". The app keeps looking and shows the page as soon as it can."};
}

std::chrono::milliseconds pauseBeforeAttempt(int attempt) {
    return std::min(shortestPause * (1 << std::clamp(attempt, 0, mostDoublings)), longestPause);
}

}  // namespace wrapio
