#include "Services/BundleGenerator.h"

#include "Platform/Diagnostics.h"
#include "Platform/PropertyList.h"
#include "Services/ToolOutput.h"
#include "Utilities/ApplicationIdentity.h"
#include "Utilities/BundleNames.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPropertyList = 16LL * 1024 * 1024;
constexpr int indentation = 2;

const QString codesign = u"/usr/bin/codesign"_s;
const QString defaultUserAgent = u"Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 "
                                 u"(KHTML, like Gecko) Version/17.4 Safari/605.1.15"_s;

QString resourcesOf(const QString& bundleURL) {
    return bundleURL + u"/Contents/Resources"_s;
}

Json textsJson(const std::vector<QString>& texts) {
    Json array = Json::array();
    for (const QString& text : texts)
        array.push_back(text.toStdString());
    return array;
}

void putInjections(Json& object, const AppConfiguration& app) {
    if (app.customCSS && !app.customCSS->isEmpty())
        object["customCSS"] = app.customCSS->toStdString();
    if (app.customJS && !app.customJS->isEmpty()) {
        object["customJS"] = app.customJS->toStdString();
        object["jsInjectionTime"] = rawValue(app.jsInjectionTime).toStdString();
    }
}

/// The two switches at the end are there only when they are on.
void putAppearance(Json& object, const AppConfiguration& app) {
    if (app.themeColor)
        object["themeColor"] = app.themeColor->toStdString();
    if (app.themeOpacity)
        object["themeOpacity"] = *app.themeOpacity;
    if (app.themeBorderEnabled)
        object["themeBorderEnabled"] = true;
    if (app.isDevMode)
        object["isDevMode"] = true;
}

tl::expected<void, AnyError> asAny(const FileResult<void>& result) {
    if (!result)
        return tl::unexpected(AnyError(result.error()));
    return {};
}

}  // namespace

std::optional<Json> runnerConfiguration(const AppConfiguration& app, const QString& runnerVersion) {
    if (!app.configuredURL || !std::isfinite(app.themeOpacity.value_or(0)))
        return std::nullopt;
    Json object = Json::object();
    object["url"] = app.configuredURL->absoluteString().toStdString();
    object["name"] = app.displayName().toStdString();
    object["userAgent"] = app.customUserAgent.value_or(defaultUserAgent).toStdString();
    object["allowedHosts"] = textsJson(app.allowedHosts);
    object["runnerVersion"] = runnerVersion.toStdString();
    object["badgeEnabled"] = app.badgeEnabled;
    putInjections(object, app);
    putAppearance(object, app);
    return object;
}

QString GeneratorError::description() const {
    return u"The operation couldn’t be completed. (Wrapio.GeneratorError error %1.)"_s.arg(m_value.index());
}

BundleGenerator::BundleGenerator(ToolRunner& tools, FileSystem& files, const Resources& resources,
                                 FaviconService& favicons, IconService& icons, LaunchServicesManager& launchServices,
                                 const VersionManager& versions)
    : m_tools(tools)
    , m_files(files)
    , m_resources(resources)
    , m_favicons(favicons)
    , m_icons(icons)
    , m_launchServices(launchServices)
    , m_versions(versions) {}

tl::expected<QString, AnyError> BundleGenerator::generate(const AppConfiguration& app, const QString& directory) {
    const std::string name = generatedBundleName(app.displayName().toStdString());
    if (name.empty())
        return tl::unexpected(AnyError(GeneratorError::invalidAppName()));
    const QString destination = directory + u'/' + QString::fromStdString(name);
    const auto runner = m_resources.path(u"WrapioRunner"_s, u"app"_s);
    if (!runner) {
        printDiagnostics(u"❌ [BundleGenerator] Template 'WrapioRunner.app' not found in bundle resources."_s);
        return tl::unexpected(AnyError(GeneratorError::templateNotFound()));
    }
    if (m_files.exists(destination)) {
        if (const auto removed = m_files.remove(destination); !removed)
            return tl::unexpected(AnyError(removed.error()));
    }
    auto made = asAny(m_files.copyTree(*runner, destination));
    if (made)
        made = personalise(app, destination);
    if (!made) {
        static_cast<void>(m_files.remove(destination));
        return tl::unexpected(made.error());
    }
    if (const auto registered = m_launchServices.registerApp(destination); !registered)
        printDiagnostics(u"⚠️ [BundleGenerator] Failed to register with Launch Services: "_s +
                         registered.error().description());
    return destination;
}

void BundleGenerator::prepare(const AppConfiguration& app) {
    if (const auto icon = m_favicons.peekSavedIcon(app.id))
        m_icons.prepare(*icon);
}

tl::expected<void, AnyError> BundleGenerator::personalise(const AppConfiguration& app, const QString& bundleURL) {
    return writeInfoPlist(app, bundleURL)
        .and_then([&] { return writeConfig(app, bundleURL); })
        .and_then([&] { return writeIcon(app, bundleURL); })
        .and_then([&] { return adHocSign(bundleURL); });
}

tl::expected<void, AnyError> BundleGenerator::writeInfoPlist(const AppConfiguration& app, const QString& bundleURL) {
    const QString path = bundleURL + u"/Contents/Info.plist"_s;
    const auto bytes = m_files.read(path, largestPropertyList);
    auto parsed = bytes ? PropertyList::parse(*bytes) : std::nullopt;
    PropertyList information = parsed ? std::move(*parsed) : PropertyList();
    const QString identifier = app.bundleIdentifier();
    information.setText("CFBundleDisplayName", app.displayName());
    information.setText("CFBundleName", app.displayName());
    information.setText("CFBundleIdentifier", identifier);
    information.setText("CFBundleIconFile", u"AppIcon"_s);
    information.setUrlType(identifier, QString::fromStdString(appUrlScheme(canonicalText(app.id).toStdString())));
    // An icon of the template's asset catalogue would win over the app's own.
    information.remove("CFBundleIconName");
    const auto xml = information.toXml();
    if (!xml)
        return tl::unexpected(AnyError(SerializationError{u"The property list has no XML form"_s}));
    return asAny(m_files.write(path, *xml));
}

tl::expected<void, AnyError> BundleGenerator::writeConfig(const AppConfiguration& app, const QString& bundleURL) {
    const QString resources = resourcesOf(bundleURL);
    if (const auto created = m_files.createDirectories(resources); !created)
        return tl::unexpected(AnyError(created.error()));
    if (!app.configuredURL)
        return tl::unexpected(AnyError(GeneratorError::configurationError()));
    if (!std::isfinite(app.themeOpacity.value_or(0)))
        return tl::unexpected(AnyError(SerializationError{u"The theme opacity is not a finite number"_s}));
    const auto object = runnerConfiguration(app, m_versions.runnerTemplateVersion());
    const std::string text = object->dump(indentation, ' ', false, Json::error_handler_t::replace);
    return asAny(m_files.write(resources + u"/config.json"_s, QByteArray::fromStdString(text)));
}

tl::expected<void, AnyError> BundleGenerator::writeIcon(const AppConfiguration& app, const QString& bundleURL) {
    const auto icon = m_favicons.loadSavedIcon(app.id);
    if (!icon)
        return {};
    return m_icons.convertImageToIcns(*icon, resourcesOf(bundleURL)).map([](const QString&) {});
}

tl::expected<void, AnyError> BundleGenerator::adHocSign(const QString& bundleURL) {
    const auto result = m_tools.run(codesign, {u"--force"_s, u"--deep"_s, u"--sign"_s, u"-"_s, bundleURL});
    if (!result)
        return tl::unexpected(AnyError(result.error()));
    if (result->status == 0)
        return {};
    const QString text = decodedUtf8(result->standardError).value_or(u"Unknown error"_s);
    printDiagnostics(u"❌ [BundleGenerator] Code signing failed with status %1"_s.arg(result->status));
    printDiagnostics(u"   Error output: "_s + text);
    return tl::unexpected(AnyError(CodeSigningError{.domain = u"BundleGenerator"_s,
                                                    .code = result->status,
                                                    .localizedDescription = u"Code signing failed"_s,
                                                    .failureReason = text.trimmed()}));
}

}  // namespace wrapio
