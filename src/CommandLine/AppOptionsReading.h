// Puts the options of a command line into a record.
#pragma once

#include "CommandLine/Command.h"
#include "CommandLine/Console.h"
#include "Platform/FileSystem.h"

#include <QImage>

#include <optional>

#include <tl/expected.hpp>

namespace wrapio {

/// Why a value cannot be taken, and what would do.
struct OptionRefusal {
    QString message;
};

/// `config` with the values that `options` set. Files are read here; nothing is stored.
[[nodiscard]] tl::expected<AppConfiguration, OptionRefusal>
applied(const AppOptions& options, AppConfiguration config, const FileSystem& files, const Console& console);

/// The image of --icon; nothing when none was given.
[[nodiscard]] tl::expected<std::optional<QImage>, OptionRefusal>
iconOf(const AppOptions& options, const FileSystem& files, const Console& console);

/// Why the address rules refuse `text`, for people. Only for a text that they do refuse.
[[nodiscard]] QString refusalReason(const QString& text, bool isDevMode);

}  // namespace wrapio
