#include "RunnerCore/BundleLocation.h"

namespace wrapio {

std::optional<BundleLocation> bundleOfExecutable(std::string_view executable) {
    constexpr std::string_view deletedMark = " (deleted)";
    if (executable.ends_with(deletedMark))
        executable.remove_suffix(deletedMark.size());
    const std::filesystem::path path(executable);
    const auto folder = path.parent_path();
    const auto contents = folder.parent_path();
    const auto root = contents.parent_path();
    if (!path.is_absolute() || folder.filename() != "Linux" || contents.filename() != "Contents" ||
        root.extension() != ".app")
        return std::nullopt;
    return BundleLocation{root, contents / "Info.plist", contents / "Resources" / "config.json"};
}

}  // namespace wrapio
