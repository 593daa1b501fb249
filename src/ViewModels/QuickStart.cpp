#include "ViewModels/QuickStart.h"

#include <QVariantMap>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::vector<AppTemplate> allTemplates() {
    std::vector<AppTemplate> all = AppTemplate::popular();
    all.insert(all.end(), AppTemplate::devTemplates().begin(), AppTemplate::devTemplates().end());
    return all;
}

}  // namespace

QVariantList quickStartTemplates() {
    QVariantList list;
    for (const AppTemplate& each : allTemplates()) {
        list.append(QVariantMap{{u"stableId"_s, each.stableId},
                                {u"name"_s, each.name},
                                {u"url"_s, each.url},
                                {u"iconAssetName"_s, each.iconAssetName},
                                {u"fallbackIcon"_s, each.fallbackIcon},
                                {u"color"_s, each.color},
                                {u"isDevMode"_s, each.isDevMode}});
    }
    return list;
}

std::optional<AppTemplate> quickStartTemplate(const QString& stableId) {
    const std::vector<AppTemplate> all = allTemplates();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&stableId](const AppTemplate& each) { return each.stableId == stableId; });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

}  // namespace wrapio
