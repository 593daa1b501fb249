#include "Fakes/FakeWorkspace.h"

namespace wrapio {

using namespace Qt::StringLiterals;

void FakeWorkspace::openApplication(const QString& bundleURL, const OpenConfiguration& configuration,
                                    std::function<void(std::optional<LaunchError>)> completion) {
    log << u"open-application "_s + bundleURL + (configuration.activates ? u""_s : u" in background"_s);
    if (!launchFailure)
        start(bundleURL);
    completion(launchFailure);
}

void FakeWorkspace::activate(const RunningApplication& application, ActivationOptions options) {
    log << u"activate %1 %2"_s.arg(application.processIdentifier).arg(static_cast<int>(options));
}

bool FakeWorkspace::terminate(const RunningApplication& application) {
    log << u"terminate %1"_s.arg(application.processIdentifier);
    if (deafProcesses.contains(application.processIdentifier))
        return false;
    if (!slowProcesses.contains(application.processIdentifier))
        end(application);
    return true;
}

bool FakeWorkspace::forceTerminate(const RunningApplication& application) {
    log << u"force-terminate %1"_s.arg(application.processIdentifier);
    end(application);
    return true;
}

bool FakeWorkspace::open(const QString& url) {
    log << u"open "_s + url;
    if (openAnswers.empty())
        return true;
    const bool answer = openAnswers.front();
    openAnswers.erase(openAnswers.begin());
    return answer;
}

std::optional<QString> FakeWorkspace::urlForApplication(const QString& bundleIdentifier) const {
    const auto found = registered.find(bundleIdentifier);
    return found == registered.end() ? std::nullopt : std::optional(found->second);
}

RunningApplication FakeWorkspace::start(const QString& bundleURL) {
    running.push_back({++m_lastProcess, bundleURL});
    return running.back();
}

void FakeWorkspace::end(const RunningApplication& application) {
    std::erase_if(running, [&application](const RunningApplication& other) {
        return other.processIdentifier == application.processIdentifier;
    });
}

}  // namespace wrapio
