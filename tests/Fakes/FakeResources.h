// Resources that a test names.
#pragma once

#include "Platform/Resources.h"

#include <map>

namespace wrapio {

class FakeResources final : public Resources {
public:
    std::optional<QString> path(const QString& name, const QString& extension) const override {
        const auto found = paths.find(name + u'.' + extension);
        return found == paths.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<QImage> image(const QString& name) const override {
        const auto found = images.find(name);
        return found == images.end() ? std::nullopt : std::optional(found->second);
    }

    std::map<QString, QString> paths;  ///< "WrapioRunner.app" → where it is
    std::map<QString, QImage> images;
};

}  // namespace wrapio
