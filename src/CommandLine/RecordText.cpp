#include "CommandLine/RecordText.h"

#include "Utilities/CharacterClasses.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortIdLength = 8;
constexpr qsizetype widestName = 32;

bool isRunning(const AppConfiguration& config, const Circumstances& now) {
    return now.runningBundles.contains(now.lifecycle.getBundleURL(config));
}

bool isOutdated(const AppConfiguration& config, const Circumstances& now) {
    return VersionManager::isOutdated(config.runnerVersion, now.templateVersion);
}

QString stateText(const AppConfiguration& config, const Circumstances& now) {
    QStringList states;
    if (isRunning(config, now))
        states << u"running"_s;
    if (isOutdated(config, now))
        states << u"outdated"_s;
    return states.join(u", "_s);
}

QString addressText(const AppConfiguration& config) {
    return config.configuredURL ? config.configuredURL->absoluteString() : u"(no address)"_s;
}

void addLine(QStringList& lines, const QString& label, const std::optional<QString>& text) {
    if (text && !text->isEmpty())
        lines << label.leftJustified(15) + printable(*text);
}

QString bytesText(const std::optional<QString>& code) {
    return code && !code->isEmpty() ? u"%1 bytes"_s.arg(code->toUtf8().size()) : u""_s;
}

}  // namespace

Circumstances::Circumstances(const Catalogue& catalogue, const VersionManager& versions)
    : lifecycle(catalogue.lifecycle)
    , runningBundles(lifecycle.runningBundles())
    , templateVersion(versions.runnerTemplateVersion()) {}

Json recordJson(const AppConfiguration& config, const Circumstances& now) {
    Json object = encodeConfiguration(config);
    object["displayName"] = config.displayName().toStdString();
    object["bundleIdentifier"] = config.bundleIdentifier().toStdString();
    object["bundlePath"] = now.lifecycle.getBundleURL(config).toStdString();
    object["isRunning"] = isRunning(config, now);
    object["isOutdated"] = isOutdated(config, now);
    return object;
}

QString recordText(const AppConfiguration& config, const Circumstances& now) {
    QStringList lines;
    const QString state = stateText(config, now);
    addLine(lines, u"Name"_s, config.displayName());
    addLine(lines, u"Address"_s, addressText(config));
    addLine(lines, u"Id"_s, canonicalText(config.id));
    addLine(lines, u"Bundle"_s, now.lifecycle.getBundleURL(config));
    addLine(lines, u"Identifier"_s, config.bundleIdentifier());
    addLine(lines, u"State"_s, state.isEmpty() ? u"not running"_s : state);
    addLine(lines, u"Template"_s, config.runnerVersion);
    addLine(lines, u"Icon"_s, rawValue(config.iconSource));
    addLine(lines, u"User agent"_s, config.customUserAgent);
    addLine(lines, u"Allowed hosts"_s,
            QStringList(config.allowedHosts.begin(), config.allowedHosts.end()).join(u", "_s));
    addLine(lines, u"Badge"_s, config.badgeEnabled ? u"on"_s : u"off"_s);
    addLine(lines, u"Style"_s, bytesText(config.customCSS));
    addLine(lines, u"Script"_s,
            config.customJS ? bytesText(config.customJS) + u" at "_s + rawValue(config.jsInjectionTime) : u""_s);
    addLine(lines, u"Colour"_s, config.themeColor);
    addLine(lines, u"Opacity"_s, config.themeOpacity ? QString::number(*config.themeOpacity) : u""_s);
    addLine(lines, u"Border"_s, config.themeBorderEnabled ? u"on"_s : u""_s);
    addLine(lines, u"Developer"_s, config.isDevMode ? u"on"_s : u""_s);
    addLine(lines, u"Changed"_s, config.lastUpdated.toDateTime().toLocalTime().toString(Qt::ISODate));
    return lines.join(u'\n');
}

QString tableText(const std::vector<AppConfiguration>& apps, const Circumstances& now) {
    qsizetype width = 0;
    for (const AppConfiguration& app : apps)
        width = std::max(width, std::min(widestName, printable(app.displayName()).size()));
    QStringList lines;
    for (const AppConfiguration& app : apps) {
        QString name = printable(app.displayName());
        if (name.size() > widestName)
            name = name.first(widestName - 1) + u'…';
        const QString state = stateText(app, now);
        lines << canonicalText(app.id).first(shortIdLength) + u"  "_s + name.leftJustified(width) + u"  "_s +
                     printable(addressText(app)) + (state.isEmpty() ? u""_s : u"  ("_s + state + u')');
    }
    return lines.join(u'\n');
}

QString printable(const QString& text) {
    QString clean;
    for (const char32_t c : text.toStdU32String()) {
        if (!isControl(c) && !isNewline(c))
            clean += QString::fromUcs4(&c, 1);
    }
    return clean;
}

}  // namespace wrapio
