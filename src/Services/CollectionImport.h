// One import of a collection, in pieces small enough for one turn of the event loop.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/AnyError.h"
#include "Platform/FileSystem.h"
#include "Platform/ToolRunner.h"
#include "Services/AppLifecycleManager.h"
#include "Services/FaviconService.h"
#include "Services/ScratchDirectory.h"

#include <QUuid>

#include <tl/expected.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace wrapio {

/// An app that is in the catalogue now, but whose bundle could not be made.
struct UngeneratedApp {
    QUuid id;
    QString displayName;
    QString reason;
    AnyError error;  ///< what the reason is the description of
};

struct ImportOutcome {
    std::size_t imported = 0;  ///< records that were added, those without a bundle included
    std::vector<UngeneratedApp> ungenerated;
};

struct ImportProgress {
    enum class Stage { readingIcons, generatingApps };
    Stage stage = Stage::readingIcons;
    std::size_t done = 0;
    std::size_t total = 0;

    bool operator==(const ImportProgress&) const = default;
};

/// Main thread. The catalogue changes in one step, after everything that can fail as a whole. An import that goes away
/// before that leaves nothing behind; one that goes away later leaves its records, some of them without a bundle.
class CollectionImport {
public:
    struct System {
        ToolRunner& tools;
        FileSystem& files;
        ConfigurationManager& store;
        FaviconService& favicons;
        AppLifecycleManager& lifecycle;
        QString temporary;  ///< the temporary directory
    };

    /// Imports the archive at `url`. Nothing is done before the first step.
    CollectionImport(System system, QString url);
    CollectionImport(const CollectionImport&) = delete;
    CollectionImport& operator=(const CollectionImport&) = delete;
    ~CollectionImport();

    /// Does the next piece; true while there are more. After a failure, or once it has answered false, it must not be
    /// called again. Fails with a CollectionExportError, DecodingError, FileError or LaunchError.
    [[nodiscard]] tl::expected<bool, AnyError> step();
    [[nodiscard]] ImportProgress progress() const;
    /// What came of it; complete once the last step is done.
    [[nodiscard]] const ImportOutcome& outcome() const { return m_outcome; }

private:
    struct Record {
        AppConfiguration configuration;  ///< under its new id
        QUuid archivedId;
    };

    [[nodiscard]] tl::expected<void, AnyError> readArchive();
    [[nodiscard]] tl::expected<std::vector<AppConfiguration>, AnyError> readConfigurations() const;
    void readIcon(const Record& record);
    void addToStore();
    void generateNext();
    void generate(const QUuid& id);
    [[nodiscard]] bool hasMore() const;

    System m_system;
    QString m_url;
    bool m_isStarted = false;
    std::optional<ScratchDirectory> m_scratch;
    std::vector<Record> m_records;
    ImportProgress m_progress;
    ImportOutcome m_outcome;
};

}  // namespace wrapio
