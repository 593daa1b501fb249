// Ready-made starting points for new apps.
#pragma once

#include <QString>
#include <QUuid>

#include <vector>

namespace wrapio {

struct AppTemplate {
    QUuid id;                ///< for lists on screen; another one in each run, never stored
    QString stableId;        ///< the same in every run
    QString name;
    QString url;             ///< as a person would type it
    QString iconAssetName;   ///< name of a picture among the program's resources
    QString fallbackIcon;    ///< name of the symbol shown when that picture is missing
    QString color;           ///< "#RRGGBB"
    bool isDevMode = false;

    /// The two fixed lists, built on first use.
    [[nodiscard]] static const std::vector<AppTemplate>& popular();
    [[nodiscard]] static const std::vector<AppTemplate>& devTemplates();
};

}  // namespace wrapio
