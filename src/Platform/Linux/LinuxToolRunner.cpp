#include "Platform/Linux/LinuxToolRunner.h"

#include "Platform/Linux/BundleSeal.h"
#include "Platform/Linux/IcnsFile.h"
#include "Platform/Linux/PosixFile.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;
constexpr int badUsage = 64;

constexpr QLatin1StringView codesign("/usr/bin/codesign");
constexpr QLatin1StringView iconutil("/usr/bin/iconutil");
constexpr QLatin1StringView ditto("/usr/bin/ditto");
constexpr QLatin1StringView lsregister("/System/Library/Frameworks/CoreServices.framework/Frameworks/"
                                       "LaunchServices.framework/Support/lsregister");

ToolResult usage(const char* text) {
    return {badUsage, {}, QByteArray("usage: ") + text + '\n'};
}

ToolResult resultOf(const ToolOutcome<void>& outcome) {
    if (outcome)
        return {};
    QString line = outcome.error().message;
    line.replace(u'\n', u' ');
    return {failed, {}, line.toUtf8() + '\n'};
}

/// True when `arguments` are `pattern`, in which an empty text stands for any that is not empty.
bool match(const QStringList& arguments, const QStringList& pattern) {
    if (arguments.size() != pattern.size())
        return false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i].isEmpty() ? arguments[i].isEmpty() : arguments[i] != pattern[i])
            return false;
    }
    return true;
}

ToolResult runCodesign(const QStringList& arguments) {
    if (!match(arguments, {u"--force"_s, u"--deep"_s, u"--sign"_s, u"-"_s, QString()}))
        return usage("codesign --force --deep --sign - BUNDLE");
    return resultOf(BundleSeal::seal(arguments[4]));
}

ToolResult runIconutil(const QStringList& arguments) {
    if (!match(arguments, {u"-c"_s, u"icns"_s, QString(), u"-o"_s, QString()}))
        return usage("iconutil -c icns ICONSET -o FILE");
    const auto icns = icnsFromIconset(arguments[2]);
    if (!icns)
        return resultOf(tl::unexpected(icns.error()));
    const auto written = writeAtomically(arguments[4], *icns);
    return resultOf(written ? ToolOutcome<void>() : toolFailure(written.error()));
}

}  // namespace

LinuxToolRunner::LinuxToolRunner(DesktopRegistration& registration, const ZipLimits& limits)
    : m_registration(registration)
    , m_limits(limits) {}

bool LinuxToolRunner::exists(const QString& path) const {
    return path == codesign || path == iconutil || path == ditto || path == lsregister;
}

tl::expected<ToolResult, LaunchError> LinuxToolRunner::run(const QString& path, const QStringList& arguments) {
    if (path == codesign)
        return runCodesign(arguments);
    if (path == iconutil)
        return runIconutil(arguments);
    if (path == lsregister)
        return runLsregister(arguments);
    if (path == ditto)
        return runDitto(arguments);
    return tl::unexpected(LaunchError{path, u"No such file or directory"_s});
}

ToolResult LinuxToolRunner::runLsregister(const QStringList& arguments) {
    if (match(arguments, {u"-f"_s, QString()}))
        return resultOf(m_registration.registerBundle(arguments[1]));
    if (match(arguments, {u"-u"_s, QString()}))
        return resultOf(m_registration.unregisterBundle(arguments[1]));
    return usage("lsregister -f BUNDLE | -u BUNDLE");
}

ToolResult LinuxToolRunner::runDitto(const QStringList& arguments) const {
    if (match(arguments, {u"-c"_s, u"-k"_s, u"--sequesterRsrc"_s, QString(), QString()}))
        return resultOf(packZip(arguments[3], arguments[4]));
    if (match(arguments, {u"-x"_s, u"-k"_s, QString(), QString()}))
        return resultOf(unpackZip(arguments[2], arguments[3], m_limits));
    return usage("ditto -c -k --sequesterRsrc FOLDER ZIP | -x -k ZIP FOLDER");
}

}  // namespace wrapio
