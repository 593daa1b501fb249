// A catalogue of many apps, the same in every run.
#pragma once

#include "Models/AppConfiguration.h"

#include <vector>

namespace wrapio {

/// Records as people make them: all have a name and an address, some have a script, a style, hosts or a theme.
inline std::vector<AppConfiguration> manyApps(int count) {
    std::vector<AppConfiguration> apps;
    for (int i = 0; i < count; ++i) {
        AppConfiguration app;
        app.appName = QStringLiteral("Harbour Notes %1").arg(i);
        app.configuredURL = WebAddress::parse(QStringLiteral("https://notes-%1.harbour.example/start?day=%1").arg(i));
        app.iconSource = IconSource::favicon;
        app.runnerVersion = QStringLiteral("1.0.0");
        app.sortOrder = i;
        if (i % 5 == 0)
            app.customCSS = QStringLiteral("body { font-family: \"Ünïcode\"; }\n").repeated(20);
        if (i % 7 == 0)
            app.customJS = QStringLiteral("document.title = 'Notes';\n").repeated(20);
        if (i % 3 == 0)
            app.allowedHosts = {QStringLiteral("sign-in.example"), QStringLiteral("cdn.example")};
        if (i % 4 == 0)
            app.themeColor = QStringLiteral("#1E6FD9");
        apps.push_back(std::move(app));
    }
    return apps;
}

}  // namespace wrapio
