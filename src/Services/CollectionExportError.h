// Why a collection could not be exported or imported.
#pragma once

#include <QString>

#include <variant>

namespace wrapio {

class CollectionExportError {
public:
    struct ArchiveFailed {
        QString text;
        bool operator==(const ArchiveFailed&) const = default;
    };
    struct ExtractFailed {
        QString text;
        bool operator==(const ExtractFailed&) const = default;
    };
    struct EncodingFailed {
        bool operator==(const EncodingFailed&) const = default;
    };
    struct InvalidArchive {
        bool operator==(const InvalidArchive&) const = default;
    };
    struct ManifestMissing {
        bool operator==(const ManifestMissing&) const = default;
    };
    struct ConfigsMissing {
        bool operator==(const ConfigsMissing&) const = default;
    };
    using Case =
        std::variant<ArchiveFailed, ExtractFailed, EncodingFailed, InvalidArchive, ManifestMissing, ConfigsMissing>;

    static CollectionExportError archiveFailed(const QString& t) { return CollectionExportError(ArchiveFailed{t}); }
    static CollectionExportError extractFailed(const QString& t) { return CollectionExportError(ExtractFailed{t}); }
    static CollectionExportError encodingFailed() { return CollectionExportError(EncodingFailed{}); }
    static CollectionExportError invalidArchive() { return CollectionExportError(InvalidArchive{}); }
    static CollectionExportError manifestMissing() { return CollectionExportError(ManifestMissing{}); }
    static CollectionExportError configsMissing() { return CollectionExportError(ConfigsMissing{}); }

    [[nodiscard]] const Case& value() const { return m_value; }
    /// The text for people.
    [[nodiscard]] QString description() const;
    bool operator==(const CollectionExportError&) const = default;

private:
    explicit CollectionExportError(Case value)
        : m_value(std::move(value)) {}
    Case m_value;
};

}  // namespace wrapio
