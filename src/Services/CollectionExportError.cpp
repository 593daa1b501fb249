#include "Services/CollectionExportError.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

struct Description {
    QString operator()(const CollectionExportError::ArchiveFailed& e) const {
        return u"Failed to create archive: "_s + e.text;
    }
    QString operator()(const CollectionExportError::ExtractFailed& e) const {
        return u"Failed to extract archive: "_s + e.text;
    }
    QString operator()(const CollectionExportError::EncodingFailed&) const {
        return u"Failed to encode app configurations"_s;
    }
    QString operator()(const CollectionExportError::InvalidArchive&) const {
        return u"The selected file is not a valid .wrapio archive"_s;
    }
    QString operator()(const CollectionExportError::ManifestMissing&) const {
        return u"Archive is missing the manifest file"_s;
    }
    QString operator()(const CollectionExportError::ConfigsMissing&) const {
        return u"Archive is missing configuration data"_s;
    }
};

}  // namespace

QString CollectionExportError::description() const {
    return std::visit(Description(), m_value);
}

}  // namespace wrapio
