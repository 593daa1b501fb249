#include "Shell/DefaultPrograms.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"
#include "Shell/Preparation.h"

namespace wrapio {

namespace {

struct Launch {
    DefaultPrograms::FailureHandler onFailure;
    std::string address;
};

void launched(GObject*, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Launch> launch(static_cast<Launch*>(data));
    GError* error = nullptr;
    if (!g_app_info_launch_default_for_uri_finish(result, &error))
        launch->onFailure(launch->address, takeMessage(error));
}

}  // namespace

DefaultPrograms::DefaultPrograms(FailureHandler onFailure)
    : m_onFailure(std::move(onFailure)) {}

void DefaultPrograms::open(const std::string& address) {
    if (!m_limiter.allow(std::chrono::steady_clock::now())) {
        reportLine("“" + displayText(address, 200) + "” is not opened: the page opens too many");
        return;
    }
    const ObjectPtr<GdkAppLaunchContext> context(gdk_display_get_app_launch_context(gdk_display_get_default()));
    hideEngineSettings(G_APP_LAUNCH_CONTEXT(context.get()));
    g_app_info_launch_default_for_uri_async(address.c_str(), G_APP_LAUNCH_CONTEXT(context.get()), nullptr, &launched,
                                            new Launch{m_onFailure, address});
}

}  // namespace wrapio
