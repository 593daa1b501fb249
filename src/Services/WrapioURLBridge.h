// Requests that other programs make through addresses of our own scheme.
#pragma once

#include "Models/WebAddress.h"

#include <QString>

#include <optional>

namespace wrapio {

/// Turn a site into an app.
struct WrapioCreateRequest {
    WebAddress url;                ///< its scheme is http or https
    std::optional<QString> title;  ///< the proposed name
};

/// Take a browser's session over into the app of a site.
struct WrapioImportSessionRequest {
    WebAddress url;                 ///< its scheme is http or https
    std::optional<QString> source;  ///< the browser that asks
};

}  // namespace wrapio
