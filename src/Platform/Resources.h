// What the program brings along: its template bundle and its pictures.
#pragma once

#include <QImage>
#include <QString>

#include <optional>

namespace wrapio {

class Resources {
public:
    Resources() = default;
    virtual ~Resources() = default;
    Resources(const Resources&) = delete;
    Resources& operator=(const Resources&) = delete;

    /// The path of the bundled folder `name` + "." + `extension`, when it is there.
    [[nodiscard]] virtual std::optional<QString> path(const QString& name, const QString& extension) const = 0;
    /// The picture of that name, at a size fit for an app icon.
    [[nodiscard]] virtual std::optional<QImage> image(const QString& name) const = 0;
};

}  // namespace wrapio
