// The record of one generated app.
#pragma once

#include "Models/Timestamp.h"
#include "Models/WebAddress.h"

#include <QString>
#include <QUuid>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace wrapio {

/// Where an app's icon comes from.
enum class IconSource { custom, favicon, default_ };

/// When an app's script runs.
enum class JSInjectionTime { documentStart, documentEnd };

/// The injection times in the order in which the editor offers them.
inline constexpr std::array allJSInjectionTimes = {JSInjectionTime::documentStart, JSInjectionTime::documentEnd};

/// The text that stands for a value in JSON.
[[nodiscard]] QString rawValue(IconSource source);
[[nodiscard]] QString rawValue(JSInjectionTime time);
/// The value that a text stands for, or nothing.
[[nodiscard]] std::optional<IconSource> iconSourceFromRawValue(std::string_view text);
[[nodiscard]] std::optional<JSInjectionTime> jsInjectionTimeFromRawValue(std::string_view text);

/// A value, copied wherever it travels; the store's list is the only authority. The order of the fields is the order of
/// the JSON keys.
struct AppConfiguration {
    QUuid id = QUuid::createUuid();
    std::optional<WebAddress> configuredURL;
    std::optional<QString> appName;
    IconSource iconSource = IconSource::default_;
    std::optional<WebAddress> lastVisitedURL;
    std::optional<QString> runnerVersion;
    Timestamp lastUpdated = Timestamp::now();
    std::optional<QString> customUserAgent;
    std::vector<QString> allowedHosts;
    bool badgeEnabled = true;
    std::optional<QString> customCSS;
    std::optional<QString> customJS;
    JSInjectionTime jsInjectionTime = JSInjectionTime::documentEnd;
    std::optional<QString> themeColor;
    std::optional<double> themeOpacity;
    bool themeBorderEnabled = false;
    bool isDevMode = false;
    std::optional<std::int64_t> sortOrder;

    /// The name shown everywhere: the typed name as it is, else one made from the host, else "Wrapio".
    [[nodiscard]] QString displayName() const;
    /// The bundle identifier of the generated app. Its name part may be empty.
    [[nodiscard]] QString bundleIdentifier() const;

    bool operator==(const AppConfiguration&) const = default;
};

/// The canonical text of an id: upper-case hexadecimal with hyphens, no braces.
[[nodiscard]] QString canonicalText(const QUuid& id);

}  // namespace wrapio
