// How long it takes to turn a site's icon into an icon file, next to what the image library's own PNG writer takes for
// the same pictures, and to generate a whole app. Everything happens in a temporary folder.
#include "Photograph.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Imaging.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Platform/PropertyList.h"
#include "Services/BundleGenerator.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <functional>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

constexpr int sourceEdge = 512;
constexpr std::array edges = {16, 32, 64, 128, 256, 512, 1024};

QByteArray libraryPng(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// The same seven pictures, ready to be encoded.
std::vector<QImage> drawnSizes() {
    const QImage source = photograph(sourceEdge);
    std::vector<QImage> images;
    for (const int edge : edges)
        images.push_back(*drawnAtSize(source, edge, edge));
    return images;
}

qint64 totalSize(const std::vector<QImage>& images, const std::function<QByteArray(const QImage&)>& encode) {
    qint64 bytes = 0;
    for (const QImage& image : images)
        bytes += encode(image).size();
    return bytes;
}

/// The services on the real files and tools of this machine.
struct Pipeline {
    QTemporaryDir root;
    LinuxFileSystem files;
    ProcessToolRunner processes;
    DesktopRegistration registration{root.filePath(u"data"_s), std::nullopt, processes};
    LinuxToolRunner tools{registration};
    IconService icons{tools, files};
    QByteArray source = libraryPng(photograph(sourceEdge));

    void run() { icons.convertPngToIcns(source, root.path()).value(); }
};

class NoHttpClient final : public HttpClient {
public:
    void get(const HttpRequest&, Completion completion) override {
        completion(tl::unexpected(HttpError{u"There is no network here"_s}));
    }
};

class NoWorkspace final : public Workspace {
public:
    std::vector<RunningApplication> runningApplications() const override { return {}; }
    void openApplication(const QString&, const OpenConfiguration&,
                         std::function<void(std::optional<LaunchError>)>) override {}
    void activate(const RunningApplication&, ActivationOptions) override {}
    bool terminate(const RunningApplication&) override { return false; }
    bool forceTerminate(const RunningApplication&) override { return false; }
    bool open(const QString&) override { return false; }
    std::optional<QString> urlForApplication(const QString&) const override { return std::nullopt; }
};

class OneTemplate final : public Resources {
public:
    explicit OneTemplate(QString path)
        : m_path(std::move(path)) {}
    std::optional<QString> path(const QString&, const QString&) const override { return m_path; }
    std::optional<QImage> image(const QString&) const override { return std::nullopt; }

private:
    QString m_path;
};

/// A generator with a template of two mebibytes, and an app that has a photograph for an icon.
struct Generation : Pipeline {
    Directories directories{root.path(), root.filePath(u"data"_s), root.filePath(u"cache"_s), root.path(), root.path()};
    NoHttpClient http;
    NoWorkspace workspace;
    OneTemplate resources{root.filePath(u"WrapioRunner.app"_s)};
    FaviconService favicons{http, files, directories};
    LaunchServicesManager launchServices{tools, files, workspace, directories};
    VersionManager versions{resources, files};
    BundleGenerator generator{tools, files, resources, favicons, icons, launchServices, versions};
    AppConfiguration app;

    Generation() {
        const QString contents = root.filePath(u"WrapioRunner.app/Contents"_s);
        constexpr qsizetype programSize = 2 * 1024 * 1024;
        PropertyList information;
        information.setText("CFBundleExecutable", u"WrapioRunner"_s);
        information.setText("CFBundleShortVersionString", u"1.0.0"_s);
        files.createDirectories(contents + u"/Linux"_s).map_error(fail);
        files.createDirectories(directories.generatedApps()).map_error(fail);
        const QString program = contents + u"/Linux/WrapioRunner"_s;
        files.write(program, QByteArray(programSize, 'x')).map_error(fail);
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        files.write(contents + u"/Info.plist"_s, *information.toXml()).map_error(fail);
        app.appName = u"Photographs"_s;
        app.configuredURL = WebAddress::parse(u"https://photographs.example/"_s);
        favicons.saveIcon(photograph(sourceEdge), app.id).value();
    }
    static void fail(const FileError& error) { qFatal("%s", qPrintable(error.description())); }
    void run() { generator.generate(app, directories.generatedApps()).value(); }
};

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void iconPipeline(benchmark::State& state) {
    Pipeline pipeline;
    for (auto _ : state)
        pipeline.run();
}
BENCHMARK(iconPipeline)->Unit(benchmark::kMillisecond)->UseRealTime();

void generatingAnApp(benchmark::State& state) {
    Generation generation;
    for (auto _ : state)
        generation.run();
}
BENCHMARK(generatingAnApp)->Unit(benchmark::kMillisecond)->UseRealTime();

void libraryEncoding(benchmark::State& state) {
    const auto images = drawnSizes();
    for (auto _ : state)
        benchmark::DoNotOptimize(totalSize(images, libraryPng));
}
BENCHMARK(libraryEncoding)->Unit(benchmark::kMillisecond)->UseRealTime();

void ourEncodingOnOneThread(benchmark::State& state) {
    const auto images = drawnSizes();
    for (auto _ : state)
        benchmark::DoNotOptimize(totalSize(images, [](const QImage& image) { return *encodePng(image); }));
}
BENCHMARK(ourEncodingOnOneThread)->Unit(benchmark::kMillisecond)->UseRealTime();

void decoding(benchmark::State& state) {
    const QByteArray source = libraryPng(photograph(sourceEdge));
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeImage(source));
}
BENCHMARK(decoding)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Both in turn, so that a busy machine slows both: `time` must stay at or below 0.35 and `size` at or below 1.3.
void pipelineToLibraryRatio(benchmark::State& state) {
    Pipeline pipeline;
    const auto images = drawnSizes();
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        ours += secondsOf([&] { pipeline.run(); });
        theirs += secondsOf([&] { benchmark::DoNotOptimize(totalSize(images, libraryPng)); });
    }
    const auto ourSize = totalSize(images, [](const QImage& image) { return *encodePng(image); });
    state.counters["time"] = ours / theirs;
    state.counters["size"] = double(ourSize) / double(totalSize(images, libraryPng));
}
BENCHMARK(pipelineToLibraryRatio)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3);

}  // namespace
}  // namespace wrapio
