#include "Services/FaviconService.h"

#include "Models/AppConfiguration.h"
#include "Platform/Diagnostics.h"
#include "Platform/Imaging.h"

#include <utility>
#include <vector>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double requestTimeout = 10;
constexpr qint64 largestIconBytes = 16LL * 1024 * 1024;
constexpr int mostRedirects = 5;
constexpr int smallestEdge = 16;
constexpr int firstSuccess = 200;
constexpr int lastSuccess = 299;

const QByteArray userAgent = "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36";
const QString lookupService = u"https://www.google.com"_s;

HttpRequest requestFor(const QString& url) {
    return {.url = url,
            .headers = {{"User-Agent", userAgent}},
            .timeoutSeconds = requestTimeout,
            .maximumBytes = largestIconBytes,
            .maximumRedirects = mostRedirects};
}

/// Scheme and host only: a site on a port of its own is asked on the usual one.
std::optional<QString> baseAddress(const WebAddress& site, const QString& host) {
    const QString literal = host.contains(u':') ? u"["_s + host + u"]"_s : host;
    const QString base = site.scheme().value_or(u"https"_s) + u"://"_s + literal;
    return WebAddress::parse(base) ? std::optional(base) : std::nullopt;
}

std::vector<QString> candidates(const QString& base, const QString& host) {
    std::vector<QString> addresses = {
        base + u"/apple-touch-icon.png"_s,
        base + u"/apple-touch-icon-precomposed.png"_s,
        base + u"/apple-touch-icon-180x180.png"_s,
        base + u"/favicon.ico"_s,
    };
    const QString lookup = lookupService + u"/s2/favicons?domain="_s + host + u"&sz=128"_s;
    if (WebAddress::parse(lookup))
        addresses.push_back(lookup);
    return addresses;
}

/// Where versions with a single app kept its icon.
QString legacyIconPath(const Directories& directories) {
    return directories.applicationSupport.value_or(QString()) + u"/Wrapio/app-icon.png"_s;
}

std::optional<QImage> imageOf(const HttpResponse& response) {
    if (response.status < firstSuccess || response.status > lastSuccess)
        return std::nullopt;
    const auto& type = response.contentType;
    if (type && !type->contains(u"image"_s) && !type->contains(u"icon"_s))
        return std::nullopt;
    auto image = decodeImage(response.body);
    const bool largeEnough = image && image->width() >= smallestEdge && image->height() >= smallestEdge;
    return largeEnough ? std::move(image) : std::nullopt;
}

std::optional<QImage> imageAt(const FileSystem& files, const QString& path) {
    const auto bytes = files.read(path, largestIconBytes);
    return bytes ? decodeImage(*bytes) : std::nullopt;
}

}  // namespace

/// One fetch: the addresses that are still to be tried, and who waits for it.
struct FaviconService::Search {
    std::vector<QString> addresses;
    std::size_t next = 0;
    Completion completion;
};

FaviconService::FaviconService(HttpClient& http, FileSystem& files, Directories directories)
    : m_http(http)
    , m_files(files)
    , m_directories(std::move(directories)) {}

void FaviconService::fetchFavicon(const WebAddress& siteURL, Completion completion) {
    const auto host = siteURL.host();
    const auto base = host ? baseAddress(siteURL, *host) : std::nullopt;
    auto addresses = base ? candidates(*base, *host) : std::vector<QString>();
    tryNext(std::make_shared<Search>(Search{std::move(addresses), 0, std::move(completion)}));
}

void FaviconService::tryNext(const std::shared_ptr<Search>& search) {
    if (search->next == search->addresses.size()) {
        search->completion(std::nullopt);
        return;
    }
    downloadImage(search->addresses[search->next++], [this, search](std::optional<QImage> image) {
        if (image)
            search->completion(std::move(image));
        else
            tryNext(search);
    });
}

void FaviconService::downloadImage(const QString& url, Completion completion) {
    m_http.get(requestFor(url),
               [completion = std::move(completion)](const tl::expected<HttpResponse, HttpError>& response) {
                   completion(response ? imageOf(*response) : std::nullopt);
               });
}

std::optional<QString> FaviconService::saveIcon(const QImage& image, const QUuid& id) {
    const auto png = encodePng(image);
    const auto path = png ? getIconPath(id) : std::nullopt;
    if (!path)
        return std::nullopt;
    const auto written = m_files.replace(*path, *png);
    countChange(id);
    if (!written) {
        printDiagnostics(u"[FaviconService] Failed to save icon: "_s + written.error().description());
        return std::nullopt;
    }
    return path;
}

std::optional<QImage> FaviconService::loadSavedIcon(const QUuid& id) {
    const auto path = getIconPath(id);
    if (!path)
        return std::nullopt;
    if (m_files.exists(*path))
        return imageAt(m_files, *path);
    const QString legacyPath = legacyIconPath(m_directories);
    if (!m_files.exists(legacyPath))
        return std::nullopt;
    printDiagnostics(u"[FaviconService] Found legacy icon, migrating to "_s + canonicalText(id));
    auto image = imageAt(m_files, legacyPath);
    if (image) {
        saveIcon(*image, id);
        static_cast<void>(m_files.remove(legacyPath));
    }
    return image;
}

std::optional<QImage> FaviconService::peekSavedIcon(const QUuid& id) const {
    const auto path = getIconPath(id);
    return path && m_files.exists(*path) ? imageAt(m_files, *path) : std::nullopt;
}

bool FaviconService::hasSavedIcon(const QUuid& id) const {
    const auto path = getIconPath(id);
    return path && (m_files.exists(*path) || m_files.exists(legacyIconPath(m_directories)));
}

void FaviconService::deleteSavedIcon(const QUuid& id) {
    if (const auto path = getIconPath(id))
        static_cast<void>(m_files.remove(*path));
    countChange(id);
}

quint64 FaviconService::iconRevision(const QUuid& id) const {
    const std::lock_guard lock(m_revisionsMutex);
    return m_revisions.value(id);
}

void FaviconService::countChange(const QUuid& id) {
    const std::lock_guard lock(m_revisionsMutex);
    ++m_revisions[id];
}

std::optional<QString> FaviconService::getIconPath(const QUuid& id) const {
    if (!m_directories.applicationSupport)
        return std::nullopt;
    const QString folder = *m_directories.applicationSupport + u"/Wrapio"_s;
    // Without the folder, writing fails and says so.
    static_cast<void>(m_files.createDirectories(folder));
    return folder + u'/' + canonicalText(id) + u".png"_s;
}

}  // namespace wrapio
