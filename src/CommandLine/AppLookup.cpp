#include "CommandLine/AppLookup.h"

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortestPrefix = 4;

bool matches(const AppConfiguration& app, const QString& text) {
    const bool byId = text.size() >= shortestPrefix && canonicalText(app.id).startsWith(text.toUpper());
    return byId || app.displayName() == text;
}

}  // namespace

tl::expected<AppConfiguration, LookupFailure> findApp(const std::vector<AppConfiguration>& apps, const QString& text) {
    const QString id = text.toUpper();
    const auto exact =
        std::find_if(apps.begin(), apps.end(), [&id](const AppConfiguration& a) { return canonicalText(a.id) == id; });
    if (exact != apps.end())
        return *exact;
    std::vector<AppConfiguration> found;
    std::copy_if(apps.begin(), apps.end(), std::back_inserter(found),
                 [&text](const AppConfiguration& app) { return matches(app, text); });
    if (found.size() == 1)
        return found.front();
    if (found.empty()) {
        return tl::unexpected(LookupFailure{
            ExitStatus::noSuchApp, u"there is no app \"%1\"; \"wrapio list\" shows all of them"_s.arg(text)});
    }
    QStringList ids;
    for (const AppConfiguration& app : found)
        ids << canonicalText(app.id);
    return tl::unexpected(LookupFailure{ExitStatus::severalAppsMatch,
                                        u"%1 apps match \"%2\"; use one of these ids: %3"_s.arg(
                                            QString::number(found.size()), text, ids.join(u", "_s))});
}

}  // namespace wrapio
