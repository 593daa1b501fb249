#include "Services/WrapioURLBridge.h"

#include "Utilities/AddressText.h"
#include "Utilities/QueryItems.h"
#include "Utilities/Utf8.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::optional<WrapioCreateRequest> pendingCreateRequest;
std::optional<WrapioImportSessionRequest> pendingImportSessionRequest;

/// What both kinds of request consist of: a site and a word about it.
struct Request {
    WebAddress url;
    std::optional<QString> note;
};

bool equalsIgnoringCase(const std::optional<std::string>& text, QLatin1StringView expected) {
    return text && QString::fromStdString(*text).toLower() == expected;
}

std::optional<WebAddress> readSite(const std::vector<QueryItem>& items) {
    const auto text = firstValue(items, "url");
    auto site = text ? WebAddress::parse(QString::fromStdString(*text)) : std::nullopt;
    if (!site || !site->scheme())
        return std::nullopt;
    const QString scheme = site->scheme()->toLower();
    return scheme == u"http"_s || scheme == u"https"_s ? site : std::nullopt;
}

std::optional<QString> readNote(const std::vector<QueryItem>& items, std::string_view name) {
    const auto text = firstValue(items, name);
    const std::string_view note = text ? trimmed(*text) : std::string_view();
    if (note.empty())
        return std::nullopt;
    return QString::fromUtf8(note.data(), static_cast<qsizetype>(note.size()));
}

std::optional<Request> readRequest(const QString& url, QLatin1StringView host, std::string_view noteName) {
    const auto parts = parseAddress(url.toStdString());
    if (!parts || !equalsIgnoringCase(parts->scheme, "wrapio"_L1) || !equalsIgnoringCase(parts->host, host) ||
        !parts->query)
        return std::nullopt;
    const std::vector<QueryItem> items = queryItems(*parts->query);
    auto site = readSite(items);
    if (!site)
        return std::nullopt;
    return Request{std::move(*site), readNote(items, noteName)};
}

}  // namespace

std::optional<WrapioCreateRequest> WrapioURLBridge::parseCreateRequest(const QString& url) {
    auto request = readRequest(url, "create"_L1, "title");
    if (!request)
        return std::nullopt;
    return WrapioCreateRequest{std::move(request->url), std::move(request->note)};
}

std::optional<WrapioImportSessionRequest> WrapioURLBridge::parseImportSessionRequest(const QString& url) {
    auto request = readRequest(url, "import-session"_L1, "source");
    if (!request)
        return std::nullopt;
    return WrapioImportSessionRequest{std::move(request->url), std::move(request->note)};
}

QString WrapioURLBridge::refusal(const QString& url) {
    return u"%1 is no request that Wrapio knows; one looks like wrapio://create?url=https%3A%2F%2Fexample.com"_s.arg(url);
}

void WrapioURLBridge::setPending(WrapioCreateRequest request) {
    pendingCreateRequest = std::move(request);
}

void WrapioURLBridge::setPending(WrapioImportSessionRequest request) {
    pendingImportSessionRequest = std::move(request);
}

std::optional<WrapioCreateRequest> WrapioURLBridge::takePendingCreateRequest() {
    return std::exchange(pendingCreateRequest, std::nullopt);
}

std::optional<WrapioImportSessionRequest> WrapioURLBridge::takePendingImportSessionRequest() {
    return std::exchange(pendingImportSessionRequest, std::nullopt);
}

}  // namespace wrapio
