// What a person is told when a page could not be loaded, and when the app tries again by itself.
#pragma once

#include "RunnerCore/BundleError.h"

#include <chrono>
#include <string>
#include <string_view>

namespace wrapio {

/// What is wrong with a site's certificate.
struct TlsFaults {
    bool unknownAuthority = false;
    bool wrongHost = false;
    bool notYetValid = false;
    bool expired = false;
    bool revoked = false;
    bool insecure = false;  ///< signed in a way that can be forged
    bool isSelfSigned = false;
};

/// Why the page at `address` was not loaded, with the faults in plain words.
[[nodiscard]] Message tlsMessage(const TlsFaults& faults, std::string_view address);

/// True when a developer may be asked whether to trust the certificate of `host` for now: it is this machine or one in
/// the private network, its certificate is signed by itself, and nothing else than the name is wrong with it.
[[nodiscard]] bool mayTrustForNow(const TlsFaults& faults, std::string_view host, bool isDevMode);

/// Why the page at `address` cannot be reached, in the words of the `reason`.
[[nodiscard]] Message unreachableMessage(std::string_view address, std::string_view reason);

/// How long to wait before looking for the `attempt`th time, from 0, whether a site can be reached again.
[[nodiscard]] std::chrono::milliseconds pauseBeforeAttempt(int attempt);

}  // namespace wrapio
