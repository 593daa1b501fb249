#include "Shell/Preparation.h"

#include <array>
#include <filesystem>
#include <string_view>

namespace wrapio {

namespace {

struct Variable {
    const char* name;
    const char* value;
    bool isOurs = false;
};

// Without a render node the GL stack would only emulate: half the memory and a tenth of the start-up time go for
// nothing, the picture is the same. The toolkit would make a context all the same, which alone takes a tenth.
std::array<Variable, 3> softwareDrawing{
    {{"GSK_RENDERER", "cairo"}, {"WEBKIT_DISABLE_DMABUF_RENDERER", "1"}, {"GDK_DEBUG", "gl-disable"}}};

bool hasRenderNode() {
    std::error_code failed;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", failed)) {
        if (entry.path().filename().string().starts_with("renderD"))
            return true;
    }
    return false;
}

}  // namespace

void prepareProcess(const std::string& desktopId, const std::string& name) {
    g_set_prgname(desktopId.c_str());
    g_set_application_name(name.c_str());
    // The engine would show pages without its sandbox when the environment says so.
    g_unsetenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
    if (hasRenderNode())
        return;
    for (Variable& variable : softwareDrawing) {
        variable.isOurs = g_getenv(variable.name) == nullptr;
        g_setenv(variable.name, variable.value, FALSE);
    }
}

void hideEngineSettings(GAppLaunchContext* context) {
    for (const Variable& variable : softwareDrawing) {
        if (variable.isOurs)
            g_app_launch_context_unsetenv(context, variable.name);
    }
}

bool lacksLanguage() {
    const char* const* names = g_get_language_names();
    const std::string_view first = names[0] != nullptr ? names[0] : "C";
    return first == "C" || first.starts_with("C.") || first == "POSIX";
}

}  // namespace wrapio
