// Finds a site's icon and keeps one saved icon per app.
#pragma once

#include "Models/WebAddress.h"
#include "Platform/Directories.h"
#include "Platform/FileSystem.h"
#include "Platform/HttpClient.h"
#include "Utilities/SharedInstance.h"

#include <QHash>
#include <QImage>
#include <QUuid>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace wrapio {

/// Requests are made one after another; results arrive on the main thread. The operations on saved icons may be called
/// from any thread. Every failure ends in "nothing".
class FaviconService : public SharedInstance<FaviconService> {
public:
    using Completion = std::function<void(std::optional<QImage>)>;

    FaviconService(HttpClient& http, FileSystem& files, Directories directories);
    virtual ~FaviconService() = default;
    FaviconService(const FaviconService&) = delete;
    FaviconService& operator=(const FaviconService&) = delete;

    /// Looks for the icon of `siteURL`'s host. `completion` comes once, on the main thread.
    void fetchFavicon(const WebAddress& siteURL, Completion completion);

    /// Saves an app's icon and answers its path.
    std::optional<QString> saveIcon(const QImage& image, const QUuid& id);
    /// An app's saved icon. An icon of the older layout goes to the first app that asks.
    [[nodiscard]] std::optional<QImage> loadSavedIcon(const QUuid& id);
    /// The same without a side effect: an icon of the older layout stays where it is, and is not answered.
    [[nodiscard]] std::optional<QImage> peekSavedIcon(const QUuid& id) const;
    /// Whether loadSavedIcon() has something to read; whether that is an image is not looked at.
    [[nodiscard]] bool hasSavedIcon(const QUuid& id) const;
    /// Removes an app's saved icon, if there is one.
    void deleteSavedIcon(const QUuid& id);
    /// How often an app's saved icon was written or removed in this run: what is drawn of an older one is out of date.
    [[nodiscard]] quint64 iconRevision(const QUuid& id) const;

private:
    struct Search;
    void downloadImage(const QString& url, Completion completion);
    void tryNext(const std::shared_ptr<Search>& search);
    [[nodiscard]] std::optional<QString> getIconPath(const QUuid& id) const;
    void countChange(const QUuid& id);

    HttpClient& m_http;
    FileSystem& m_files;
    Directories m_directories;
    mutable std::mutex m_revisionsMutex;
    QHash<QUuid, quint64> m_revisions;
};

}  // namespace wrapio
