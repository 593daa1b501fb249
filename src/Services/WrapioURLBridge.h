// Requests that other software makes through addresses of the scheme "wrapio".
#pragma once

#include "Models/WebAddress.h"

#include <QString>

#include <optional>

namespace wrapio {

/// Asks for a new app.
struct WrapioCreateRequest {
    WebAddress url;                ///< the site, http or https, as it was given
    std::optional<QString> title;  ///< proposed name: trimmed, never empty

    bool operator==(const WrapioCreateRequest&) const = default;
};

/// Asks the app of a site to take over a browser's session.
struct WrapioImportSessionRequest {
    WebAddress url;                 ///< the site, http or https, as it was given
    std::optional<QString> source;  ///< the browser that the session is in: trimmed, never empty

    bool operator==(const WrapioImportSessionRequest&) const = default;
};

/// Parsing is pure and may be done on any thread. Each slot holds the latest request of its kind until somebody takes
/// it; the slots belong to the main thread.
class WrapioURLBridge {
public:
    WrapioURLBridge() = delete;

    /// Reads "wrapio://create?url=(site)[&title=(name)]"; nothing when `url` is anything else.
    [[nodiscard]] static std::optional<WrapioCreateRequest> parseCreateRequest(const QString& url);
    /// Reads "wrapio://import-session?url=(site)[&source=(name)]"; nothing when `url` is anything else.
    [[nodiscard]] static std::optional<WrapioImportSessionRequest> parseImportSessionRequest(const QString& url);

    /// What to tell somebody whose address neither of the two reads.
    [[nodiscard]] static QString refusal(const QString& url);

    /// Puts a request into its slot, over one that nobody has taken.
    static void setPending(WrapioCreateRequest request);
    static void setPending(WrapioImportSessionRequest request);
    /// Empties a slot and answers what was in it, so that every request is handled once.
    [[nodiscard]] static std::optional<WrapioCreateRequest> takePendingCreateRequest();
    [[nodiscard]] static std::optional<WrapioImportSessionRequest> takePendingImportSessionRequest();
};

}  // namespace wrapio
