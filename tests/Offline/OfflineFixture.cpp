#include "Offline/OfflineFixture.h"

#include "Models/ConfigurationCoding.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int dozen = 12;
constexpr int thousand = 1000;
constexpr int iconEdge = 128;
const QString templateVersion = u"1.4.0"_s;
const QString olderVersion = u"1.2.0"_s;

const QStringList sites = {u"Mail"_s,  u"Calendar"_s, u"News"_s,    u"Chat"_s,  u"Photos"_s, u"Music"_s,
                           u"Notes"_s, u"Maps"_s,     u"Weather"_s, u"Tasks"_s, u"Wiki"_s,   u"Bank"_s};

Directories directoriesIn(const QString& home) {
    return {home, home + u"/data"_s, home + u"/cache"_s, home + u"/config"_s, home + u"/tmp"_s};
}

/// The same in every run, so that pictures of it can be compared.
AppConfiguration appNumber(int number) {
    AppConfiguration config;
    const QString name = number < sites.size() ? sites[number] : u"App %1"_s.arg(number + 1, 4, 10, QChar(u'0'));
    config.id = QUuid::createUuidV5(QUuid(), u"offline/"_s + name);
    config.appName = name;
    config.configuredURL = WebAddress::parse(u"https://%1.example.com/"_s.arg(name.toLower().replace(u' ', u'-')));
    config.runnerVersion = templateVersion;
    config.sortOrder = number;
    config.lastUpdated = Timestamp{800000000.0 + number};
    return config;
}

int countOf(const QString& fixture) {
    if (fixture == u"empty"_s)
        return 0;
    if (fixture == u"one"_s)
        return 1;
    return fixture == u"thousand"_s ? thousand : dozen;
}

std::vector<AppConfiguration> catalogueOf(const QString& fixture) {
    std::vector<AppConfiguration> records;
    for (int number = 0; number < countOf(fixture); ++number) {
        records.push_back(appNumber(number));
        if (fixture == u"outdated"_s && number % 4 != 0)
            records.back().runnerVersion = olderVersion;
    }
    return records;
}

QImage iconNumber(int number) {
    QImage icon(iconEdge, iconEdge, QImage::Format_RGB32);
    icon.fill(QColor::fromHsv(number * 360 / dozen, 160, 220));
    return icon;
}

}  // namespace

QStringList OfflineFixture::names() {
    return {u"empty"_s, u"one"_s, u"dozen"_s, u"thousand"_s, u"running"_s, u"outdated"_s, u"failing"_s};
}

OfflineFixture::OfflineFixture(const QString& name, Scheduler& scheduler)
    : m_directories(directoriesIn(QFileInfo(m_home.path()).canonicalFilePath()))
    , m_scheduler(scheduler)
    , m_launchServices(m_tools, m_files, workspace, m_directories)
    , m_previews(m_files, m_directories)
    , m_favicons(http, m_files, m_directories)
    , m_icons(m_tools, m_files)
    , m_versions(resources, m_files)
    , m_generator(m_tools, m_files, resources, m_favicons, m_icons, m_launchServices, m_versions) {
    const std::vector<AppConfiguration> records = catalogueOf(name);
    makeTemplate();
    makeTools();
    storeCatalogue(records);
    makeBundles(records);
    for (int number = 0; number < std::min(countOf(name), dozen); ++number)
        m_favicons.saveIcon(iconNumber(number), records[static_cast<std::size_t>(number)].id);
    if (name == u"running"_s) {
        for (std::size_t i = 0; i < records.size(); i += 3)
            workspace.start(m_directories.generatedApps() + u'/' + records[i].displayName() + u".app"_s);
    }
    m_store = std::make_unique<ConfigurationManager>(m_defaults, m_files, m_launchServices, m_previews, m_scheduler,
                                                     m_directories);
    m_lifecycle = std::make_unique<AppLifecycleManager>(*m_store, m_generator, m_versions, workspace, m_files,
                                                        m_scheduler, m_directories);
    m_dashboard = std::make_unique<DashboardViewModel>(services());
    if (name == u"failing"_s) {
        QDir(m_directories.generatedApps()).removeRecursively();
        resources.paths.clear();
        workspace.launchFailure = LaunchError{u"WrapioRunner"_s, u"No such file or directory"_s};
    }
}

ViewModelServices OfflineFixture::services() {
    return {.configManager = *m_store,
            .appLifecycleManager = *m_lifecycle,
            .faviconService = m_favicons,
            .versionManager = m_versions,
            .launchServices = m_launchServices,
            .collectionExchange = exchange,
            .fileDialogs = dialogs,
            .files = m_files,
            .workspace = workspace,
            .resources = resources,
            .scheduler = m_scheduler,
            .directories = m_directories};
}

void OfflineFixture::makeTemplate() {
    const QString path = m_directories.home + u"/share/WrapioRunner.app"_s;
    QDir().mkpath(path + u"/Contents/Resources"_s);
    QFile plist(path + u"/Contents/Info.plist"_s);
    if (plist.open(QIODevice::WriteOnly)) {
        plist.write(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
                    "<key>CFBundleShortVersionString</key><string>%1</string></dict></plist>"_s.arg(templateVersion)
                        .toUtf8());
    }
    resources.paths[u"WrapioRunner.app"_s] = path;
}

void OfflineFixture::makeTools() {
    m_tools.answer(u"/usr/bin/iconutil"_s, [](const QStringList& arguments) {
        QFile icon(arguments.last());
        const bool isWritten = icon.open(QIODevice::WriteOnly) && icon.write("icns") > 0;
        return ToolResult{.status = isWritten ? 0 : 1, .standardOutput = {}, .standardError = {}};
    });
}

void OfflineFixture::storeCatalogue(const std::vector<AppConfiguration>& records) {
    if (const auto bytes = encodeConfigurations(records))
        m_defaults.values[u"app_configurations"_s] = *bytes;
}

void OfflineFixture::makeBundles(const std::vector<AppConfiguration>& records) {
    for (const AppConfiguration& config : records)
        QDir().mkpath(m_directories.generatedApps() + u'/' + config.displayName() + u".app/Contents"_s);
}

}  // namespace wrapio
