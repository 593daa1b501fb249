// What the preview panel shows.
#pragma once

#include "Models/AppConfiguration.h"

#include <QImage>

#include <functional>
#include <optional>

namespace wrapio {

/// One case of several; `image` belongs to the first two.
struct PreviewState {
    enum class Case {
        live,              ///< a fresh picture of the running app
        cached,            ///< the greyed picture of before; the app is not running
        loading,           ///< the app is running and its first picture is under way
        noCache,           ///< the app is not running and there is no picture
        permissionDenied,  ///< the app is running but no picture may be taken
    };

    [[nodiscard]] static PreviewState live(QImage picture) { return {Case::live, std::move(picture)}; }
    [[nodiscard]] static PreviewState cached(QImage picture) { return {Case::cached, std::move(picture)}; }
    [[nodiscard]] static PreviewState loading() { return {Case::loading, {}}; }
    [[nodiscard]] static PreviewState noCache() { return {Case::noCache, {}}; }
    [[nodiscard]] static PreviewState permissionDenied() { return {Case::permissionDenied, {}}; }

    bool operator==(const PreviewState&) const = default;

    Case kind = Case::noCache;
    QImage image;
};

/// The panel's content, as a value that a view draws.
struct PreviewContent {
    std::optional<AppConfiguration> config;
    PreviewState state;
    std::optional<QImage> icon;  ///< the app's own, when the state has a place for it and the app has one
    std::function<void()> onLaunch;
    std::function<void()> onOpenSettings;
};

}  // namespace wrapio
