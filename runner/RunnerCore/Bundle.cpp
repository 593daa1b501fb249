#include "RunnerCore/Bundle.h"

#include "RunnerCore/FileReader.h"

namespace wrapio {

tl::expected<Bundle, BundleError> loadBundle(const BundleLocation& location) {
    const auto plist = readSmallFile(location.infoPlist, largestInfoPlist);
    if (!plist)
        return tl::unexpected(plist.error());
    auto info = decodeInfoPlist(*plist);
    if (!info)
        return tl::unexpected(info.error());
    const auto text = readSmallFile(location.config, largestConfig);
    if (!text)
        return tl::unexpected(text.error());
    auto config = decodeConfig(*text);
    if (!config)
        return tl::unexpected(config.error());
    return Bundle{std::move(*info), std::move(*config)};
}

}  // namespace wrapio
