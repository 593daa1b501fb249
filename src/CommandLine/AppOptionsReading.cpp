#include "CommandLine/AppOptionsReading.h"

#include "Models/ConfigurationManager.h"
#include "Platform/Imaging.h"
#include "Utilities/BundleNames.h"
#include "Utilities/HostRules.h"

#include <QStringDecoder>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxInjectionSize = 102400;
constexpr qint64 largestIconFile = 16LL * 1024 * 1024;

using Refused = tl::unexpected<OptionRefusal>;

Refused refused(const QString& message) {
    return Refused(OptionRefusal{message});
}

/// The value of an option that an empty text takes away.
std::optional<QString> orAbsent(const QString& text) {
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

tl::expected<std::optional<QString>, OptionRefusal> readCode(const QString& file, const QString& tooLarge,
                                                             const FileSystem& files, const Console& console) {
    if (file.isEmpty())
        return std::nullopt;
    const auto bytes = files.read(console.resolved(file), maxInjectionSize);
    if (!bytes)
        return refused(bytes.error().code == EFBIG ? tooLarge : bytes.error().description());
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(*bytes);
    if (decoder.hasError())
        return refused(u"%1 is not UTF-8 text"_s.arg(file));
    return orAbsent(text);
}

tl::expected<void, OptionRefusal> applyAddress(const AppOptions& options, AppConfiguration& config) {
    const bool becameStricter = options.isDevMode == false && config.configuredURL;
    if (!options.address && !becameStricter)
        return {};
    const QString text = options.address ? *options.address : config.configuredURL->absoluteString();
    config.configuredURL = ConfigurationManager::normalizeURL(text, config.isDevMode);
    if (!config.configuredURL)
        return refused(refusalReason(text, config.isDevMode));
    return {};
}

tl::expected<void, OptionRefusal> applyName(const AppOptions& options, AppConfiguration& config) {
    if (options.name)
        config.appName = orAbsent(*options.name);
    const std::string name = config.displayName().toStdString();
    const QString safe = QString::fromStdString(fittingDisplayName(safeDisplayName(name)));
    if (!bundleNameFits(name))
        return refused(
            u"the name \"%1\" is too long to name an app; use --name \"%2\""_s.arg(config.displayName(), safe));
    if (bundleNamesAgree(name))
        return {};
    return refused(u"the name \"%1\" cannot name an app: dots, / \\ : ? * | \" < > %, control characters and blanks at "
                   "the ends are not possible; use --name %2"_s.arg(config.displayName(),
                                                                    safe.isEmpty() ? u"NAME"_s : u'"' + safe + u'"'));
}

tl::expected<void, OptionRefusal> applyCode(const AppOptions& options, AppConfiguration& config,
                                            const FileSystem& files, const Console& console) {
    if (options.cssFile) {
        auto css = readCode(*options.cssFile, u"Custom CSS exceeds 100KB limit"_s, files, console);
        if (!css)
            return Refused(css.error());
        config.customCSS = *css;
    }
    if (options.jsFile) {
        auto js = readCode(*options.jsFile, u"Custom JavaScript exceeds 100KB limit"_s, files, console);
        if (!js)
            return Refused(js.error());
        config.customJS = *js;
    }
    config.jsInjectionTime = options.jsInjectionTime.value_or(config.jsInjectionTime);
    return {};
}

void applyRest(const AppOptions& options, AppConfiguration& config) {
    if (options.themeColor)
        config.themeColor = orAbsent(*options.themeColor);
    if (options.themeOpacity)
        config.themeOpacity = options.themeOpacity;
    config.themeBorderEnabled = options.themeBorderEnabled.value_or(config.themeBorderEnabled);
    config.badgeEnabled = options.badgeEnabled.value_or(config.badgeEnabled);
    if (options.customUserAgent)
        config.customUserAgent = orAbsent(*options.customUserAgent);
    if (options.allowedHosts) {
        config.allowedHosts.clear();
        for (const QString& host : *options.allowedHosts) {
            if (!host.trimmed().isEmpty())
                config.allowedHosts.push_back(host.trimmed());
        }
    }
}

}  // namespace

tl::expected<AppConfiguration, OptionRefusal> applied(const AppOptions& options, AppConfiguration config,
                                                      const FileSystem& files, const Console& console) {
    config.isDevMode = options.isDevMode.value_or(config.isDevMode);
    if (auto address = applyAddress(options, config); !address)
        return Refused(address.error());
    if (auto name = applyName(options, config); !name)
        return Refused(name.error());
    if (auto code = applyCode(options, config, files, console); !code)
        return Refused(code.error());
    applyRest(options, config);
    return config;
}

tl::expected<std::optional<QImage>, OptionRefusal> iconOf(const AppOptions& options, const FileSystem& files,
                                                          const Console& console) {
    if (!options.iconFile)
        return std::nullopt;
    const auto bytes = files.read(console.resolved(*options.iconFile), largestIconFile);
    if (!bytes)
        return refused(bytes.error().description());
    auto image = decodeImage(*bytes);
    if (!image)
        return refused(u"%1 is not an image that can be read; use a PNG, JPEG or TIFF file"_s.arg(*options.iconFile));
    return image;
}

QString refusalReason(const QString& text, bool isDevMode) {
    if (text.trimmed().isEmpty())
        return u"the address is empty; type one like example.com"_s;
    if (isDevMode)
        return u"\"%1\" is not a web address; Please enter a valid URL (e.g. localhost:3000)"_s.arg(text);
    if (const auto local = ConfigurationManager::normalizeURL(text, true)) {
        const QString host = local->host().value_or(u""_s);
        const bool isInternal = isInternalHost(host.toStdString());
        if (isInternal || !host.contains(u'.'))
            return u"\"%1\" is an address of this machine or of a private network; add --dev to allow it"_s.arg(text);
    }
    return u"\"%1\" is not a web address; Please enter a valid URL"_s.arg(text);
}

}  // namespace wrapio
