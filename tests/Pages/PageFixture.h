// A catalogue with one app, and a page view without an engine.
#pragma once

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakePlatformWebView.h"
#include "Fakes/StoreFixture.h"
#include "Views/Pages/PageServices.h"

namespace wrapio {

class PageFixture : public StoreFixture {
protected:
    PageFixture() { makeStore(); }

    /// Makes an app for that address the current configuration.
    void configure(const QString& address) {
        AppConfiguration app = store->createApp();
        app.configuredURL = WebAddress::parse(address);
        store->updateConfiguration(app);
    }

    [[nodiscard]] PageServices services() { return {*store, workspace, scheduler}; }
    static WebAddress address(const QString& text) { return *WebAddress::parse(text); }

    FakePlatformWebView view;
};

}  // namespace wrapio
