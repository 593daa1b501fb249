#include "Models/AppConfiguration.h"

#include <QStringList>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestNamePart = 20;
constexpr qsizetype idPartLength = 8;

/// The first letter of each word in upper case, the rest in lower case. A word is a run of letters, marks and digits.
QString capitalized(const QString& text) {
    QString result;
    bool wordStart = true;
    for (const QChar c : text.toLower()) {
        const bool inWord = c.isLetterOrNumber() || c.isMark() || c.isSurrogate() || c == u'\'';
        if (inWord && wordStart)
            result += QString(c).toUpper();
        else
            result += c;
        wordStart = !inWord;
    }
    return result;
}

QString nameFromHost(const QString& host) {
    const QStringList labels = host.split(u'.');
    return capitalized(labels.size() >= 2 ? labels.at(labels.size() - 2) : host);
}

bool belongsInIdentifier(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'-';
}

}  // namespace

QString rawValue(IconSource source) {
    switch (source) {
    case IconSource::custom:
        return u"custom"_s;
    case IconSource::favicon:
        return u"favicon"_s;
    case IconSource::default_:
        return u"default"_s;
    }
    Q_UNREACHABLE();
}

QString rawValue(JSInjectionTime time) {
    switch (time) {
    case JSInjectionTime::documentStart:
        return u"documentStart"_s;
    case JSInjectionTime::documentEnd:
        return u"documentEnd"_s;
    }
    Q_UNREACHABLE();
}

std::optional<IconSource> iconSourceFromRawValue(std::string_view text) {
    if (text == "custom")
        return IconSource::custom;
    if (text == "favicon")
        return IconSource::favicon;
    if (text == "default")
        return IconSource::default_;
    return std::nullopt;
}

std::optional<JSInjectionTime> jsInjectionTimeFromRawValue(std::string_view text) {
    if (text == "documentStart")
        return JSInjectionTime::documentStart;
    if (text == "documentEnd")
        return JSInjectionTime::documentEnd;
    return std::nullopt;
}

QString AppConfiguration::displayName() const {
    if (appName && !appName->isEmpty())
        return *appName;
    if (configuredURL && configuredURL->host())
        return nameFromHost(*configuredURL->host());
    return u"Wrapio"_s;
}

QString AppConfiguration::bundleIdentifier() const {
    QString namePart;
    for (const QChar c : displayName().toLower()) {
        const QChar replaced = c == u' ' ? QChar(u'-') : c;
        if (belongsInIdentifier(replaced) && namePart.size() < longestNamePart)
            namePart += replaced;
    }
    const QString idPart = canonicalText(id).first(idPartLength).toLower();
    return u"com.wrapio.generated."_s + namePart + u'-' + idPart;
}

QString canonicalText(const QUuid& id) {
    return id.toString(QUuid::WithoutBraces).toUpper();
}

}  // namespace wrapio
