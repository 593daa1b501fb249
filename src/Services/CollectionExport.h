// One export of a collection, in pieces small enough for one turn of the event loop.
#pragma once

#include "Models/AppConfiguration.h"
#include "Models/Timestamp.h"
#include "Platform/AnyError.h"
#include "Platform/Directories.h"
#include "Platform/FileSystem.h"
#include "Platform/ToolRunner.h"
#include "Services/FaviconService.h"
#include "Services/ScratchDirectory.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace wrapio {

/// Main thread. Its files in the temporary directory are gone when it goes away, whatever became of it.
class CollectionExport {
public:
    struct System {
        ToolRunner& tools;
        FileSystem& files;
        FaviconService& favicons;
        QString temporary;  ///< the temporary directory
    };

    /// Exports `configurations`, in this order. Nothing is done before the first step.
    CollectionExport(System system, std::vector<AppConfiguration> configurations, Timestamp now);
    CollectionExport(const CollectionExport&) = delete;
    CollectionExport& operator=(const CollectionExport&) = delete;
    ~CollectionExport();

    /// Does the next piece; true while there are more. After a failure, or once it has answered false, it must not be
    /// called again. Fails with a CollectionExportError, a FileError or a LaunchError.
    [[nodiscard]] tl::expected<bool, AnyError> step();
    /// Apps that are done.
    [[nodiscard]] std::size_t done() const { return m_next; }
    [[nodiscard]] std::size_t total() const { return m_configurations.size(); }

    /// Puts the finished archive at `url`, in place of a file that is there; one that cannot be replaced stays as it
    /// was. Fails with a FileError.
    [[nodiscard]] tl::expected<void, AnyError> moveTo(const QString& url);

private:
    [[nodiscard]] tl::expected<void, AnyError> begin();
    [[nodiscard]] tl::expected<void, AnyError> writeConfigurations();
    [[nodiscard]] tl::expected<void, AnyError> writeIcon(const AppConfiguration& configuration);
    [[nodiscard]] tl::expected<void, AnyError> pack();

    System m_system;
    std::vector<AppConfiguration> m_configurations;
    Timestamp m_now;
    std::optional<ScratchDirectory> m_scratch;
    std::size_t m_next = 0;
    bool m_archiveExists = false;
};

}  // namespace wrapio
