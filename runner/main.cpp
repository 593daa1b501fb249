// The program inside every generated app: finds its bundle, and shows the site that the bundle describes.
#include "Shell/Diagnostics.h"
#include "Shell/Preparation.h"
#include "Shell/ProblemWindow.h"
#include "Shell/RunnerApplication.h"

#include <glib.h>

#include <filesystem>
#include <system_error>

namespace {

tl::expected<wrapio::Bundle, wrapio::BundleError> loadOwnBundle() {
    std::error_code failed;
    const std::string executable = std::filesystem::read_symlink("/proc/self/exe", failed).string();
    const auto location = wrapio::bundleOfExecutable(executable);
    if (!location)
        return tl::unexpected<wrapio::BundleError>(wrapio::NotInBundle{executable});
    return wrapio::loadBundle(*location);
}

}  // namespace

int main(int argc, char** argv) {
    auto bundle = loadOwnBundle();
    if (!bundle)
        return wrapio::showProblem(wrapio::messageFor(bundle.error()));
    for (const std::string& warning : bundle->config.warnings)
        wrapio::reportLine(warning);
    wrapio::prepareProcess(bundle->info.desktopId, bundle->config.name);
    wrapio::RunnerApplication application(std::move(*bundle));
    return application.run({argv + 1, argv + argc});
}
