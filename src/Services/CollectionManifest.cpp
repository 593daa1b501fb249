#include "Services/CollectionManifest.h"

#include "Models/ConfigurationCoding.h"

#include <nlohmann/json.hpp>

namespace wrapio {

QByteArray CollectionManifest::encoded() const {
    const Json object = {
        {"version", version},
        {"exportDate", exportDate.secondsSinceReference},
        {"appCount", appCount},
    };
    return QByteArray::fromStdString(object.dump());
}

}  // namespace wrapio
