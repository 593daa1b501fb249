// A view of pages without pages: a test says what happens in it.
#pragma once

#include "Views/Pages/PlatformWebView.h"

#include <QStringList>

namespace wrapio {

class FakePlatformWebView final : public PlatformWebView {
public:
    std::optional<WebAddress> url() const override { return shown; }
    bool canGoBack() const override { return back; }
    bool canGoForward() const override { return forward; }
    bool isLoading() const override { return loading; }
    QString title() const override { return pageTitle; }
    double estimatedProgress() const override { return progress; }
    void load(const PageRequest& request) override {
        requests.push_back(request);
        show(request.address.absoluteString());
    }
    void reload() override { log << QStringLiteral("reload"); }
    void stopLoading() override { log << QStringLiteral("stop"); }
    void goBack() override { log << QStringLiteral("back"); }
    void goForward() override { log << QStringLiteral("forward"); }
    void setNavigationDelegate(NavigationDelegate* delegate) override { navigation = delegate; }
    void setUIDelegate(PageUIDelegate* delegate) override { ui = delegate; }
    void setCustomUserAgent(const QString& text) override { userAgent = text; }
    void setElementFullScreenEnabled(bool enabled) override { fullScreen = enabled; }
    void setAllowsBackForwardNavigationGestures(bool allowed) override { gestures = allowed; }
    Subscription observeUrl(std::function<void()> changed) override { return urls.add(std::move(changed)); }
    Subscription observeCanGoBack(std::function<void()> changed) override { return backs.add(std::move(changed)); }
    Subscription observeCanGoForward(std::function<void()> changed) override {
        return forwards.add(std::move(changed));
    }
    Subscription observeIsLoading(std::function<void()> changed) override { return loadings.add(std::move(changed)); }
    Subscription observeTitle(std::function<void()> changed) override { return titles.add(std::move(changed)); }
    Subscription observeEstimatedProgress(std::function<void()> changed) override {
        return progresses.add(std::move(changed));
    }

    /// Another address is shown, without anybody being asked.
    void show(const QString& address) {
        shown = WebAddress::parse(address);
        urls.notify();
    }
    /// Asks the delegate, as the engine does before it goes anywhere.
    [[nodiscard]] NavigationPolicy asks(const QString& address, NavigationType type = NavigationType::other) {
        return navigation->decidePolicy({WebAddress::parse(address), type});
    }

    std::optional<WebAddress> shown;
    bool back = false;
    bool forward = false;
    bool loading = false;
    QString pageTitle;
    double progress = 0;

    Observers<> urls, backs, forwards, loadings, titles, progresses;
    NavigationDelegate* navigation = nullptr;
    PageUIDelegate* ui = nullptr;
    std::vector<PageRequest> requests;
    QString userAgent;
    bool fullScreen = false;
    bool gestures = false;
    QStringList log;
};

}  // namespace wrapio
