// Addresses that other software hands over.
#include "Property.h"
#include "Services/WrapioURLBridge.h"

#include <QUrl>

#include <cstddef>
#include <cstdint>

namespace wrapio {

namespace {

using namespace Qt::StringLiterals;

bool isWeb(const WebAddress& address) {
    const QString text = address.absoluteString().toLower();
    return text.startsWith(u"http:") || text.startsWith(u"https:");
}

bool isNote(const std::optional<QString>& note) {
    return !note || (!note->isEmpty() && note->trimmed() == *note);
}

QString encoded(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString addressOf(const QString& host, const WebAddress& site, const char* name, const std::optional<QString>& note) {
    QString address = u"wrapio://"_s + host + u"?url="_s + encoded(site.absoluteString());
    if (note)
        address += u'&' + QString::fromLatin1(name) + u'=' + encoded(*note);
    return address;
}

void feed(const QString& url) {
    const auto create = WrapioURLBridge::parseCreateRequest(url);
    const auto import = WrapioURLBridge::parseImportSessionRequest(url);
    require(!create || !import, "an address is one request at most");
    if (create) {
        require(isWeb(create->url), "an app is made of a web address");
        require(isNote(create->title), "a title is trimmed and not empty");
        require(WrapioURLBridge::parseCreateRequest(addressOf(u"create"_s, create->url, "title", create->title)) == create,
                "a request reads as what it was written from");
    }
    if (import) {
        require(isWeb(import->url), "a session is one of a web address");
        require(isNote(import->source), "a source is trimmed and not empty");
        const QString address = addressOf(u"import-session"_s, import->url, "source", import->source);
        require(WrapioURLBridge::parseImportSessionRequest(address) == import,
                "a request reads as what it was written from");
    }
}

}  // namespace

}  // namespace wrapio

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    wrapio::feed(text);
    // Noise alone seldom gets past the beginning.
    wrapio::feed(QStringLiteral("wrapio://create?") + text);
    wrapio::feed(QStringLiteral("wrapio://import-session?url=") + text);
    return 0;
}
