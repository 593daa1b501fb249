#include "Views/OfflineDashboard.h"

#include <algorithm>
#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::optional<AppConfiguration> named(const ConfigurationManager& store, const QString& name) {
    const auto& records = store.configurations();
    const auto found = std::find_if(records.begin(), records.end(),
                                    [&name](const AppConfiguration& record) { return record.displayName() == name; });
    return found == records.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

std::mutex OfflineDashboard::s_iconsMutex;
FaviconService* OfflineDashboard::s_icons = nullptr;

OfflineDashboard::~OfflineDashboard() {
    const std::lock_guard lock(s_iconsMutex);
    s_icons = nullptr;
}

QImage OfflineDashboard::savedIcon(const QString& id) {
    const std::lock_guard lock(s_iconsMutex);
    return s_icons ? s_icons->loadSavedIcon(QUuid(id)).value_or(QImage()) : QImage();
}

void OfflineDashboard::setFixture(const QString& name) {
    m_name = name;
    // Goes last: what is on the screen is to find the new one first.
    auto previous = std::exchange(m_fixture, std::make_unique<OfflineFixture>(name, m_scheduler));
    {
        const std::lock_guard lock(s_iconsMutex);
        s_icons = &m_fixture->favicons();
    }
    Q_EMIT changed();
    // What was closed with it may still wait for its turn.
    m_scheduler.runPending();
    previous.reset();
    m_scheduler.advance(1.0);
}

QStringList OfflineDashboard::names() const {
    QStringList names;
    for (const AppConfiguration& record : m_fixture->store().configurations())
        names << record.displayName();
    return names;
}

QString OfflineDashboard::idOf(const QString& name) const {
    const auto record = named(m_fixture->store(), name);
    return record ? canonicalText(record->id) : QString();
}

QStringList OfflineDashboard::running() const {
    QStringList names;
    for (const AppConfiguration& record : m_fixture->store().configurations()) {
        if (m_fixture->lifecycle().runningAppIds().contains(record.id))
            names << record.displayName();
    }
    return names;
}

void OfflineDashboard::rename(const QString& name, const QString& other) {
    if (auto record = named(m_fixture->store(), name)) {
        record->appName = other;
        m_fixture->store().updateConfiguration(*record);
    }
}

void OfflineDashboard::remove(const QString& name) {
    if (const auto record = named(m_fixture->store(), name))
        m_fixture->store().removeApp(record->id);
}

int OfflineDashboard::openDialogs() const {
    return static_cast<int>(m_fixture->dialogs.openRequests.size());
}

QStringList OfflineDashboard::opened() const {
    QStringList addresses;
    for (const QString& line : m_fixture->workspace.log) {
        if (line.startsWith(u"open "_s))
            addresses << line.mid(5);
    }
    return addresses;
}

QString OfflineDashboard::saved(const QString& name, const QString& field) const {
    const auto record = named(m_fixture->store(), name);
    if (!record)
        return {};
    if (field == u"address"_s)
        return record->configuredURL ? record->configuredURL->absoluteString() : QString();
    if (field == u"css"_s)
        return record->customCSS.value_or(QString());
    if (field == u"color"_s)
        return record->themeColor.value_or(QString());
    return record->appName.value_or(QString());
}

}  // namespace wrapio
