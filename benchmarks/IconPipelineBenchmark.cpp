// How long it takes to turn a site's icon into an icon file, next to what the image library's own PNG writer takes for
// the same pictures.
#include "Fakes/TemporaryFileSystem.h"
#include "Photograph.h"
#include "Platform/Imaging.h"
#include "Services/IconService.h"

#include <QBuffer>

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

constexpr int sourceEdge = 512;
constexpr std::array edges = {16, 32, 64, 128, 256, 512, 1024};

/// Stands in for the tool that packs the pictures, with the same reading and writing.
class PackingToolRunner final : public ToolRunner {
public:
    explicit PackingToolRunner(FileSystem& files)
        : m_files(files) {}
    bool exists(const QString&) const override { return true; }
    tl::expected<ToolResult, LaunchError> run(const QString&, const QStringList& arguments) override {
        QByteArray packed;
        const auto names = m_files.list(arguments.at(2));
        for (const QString& name : names.value())
            packed += m_files.read(arguments.at(2) + u'/' + name, 1 << 26).value();
        const bool isWritten = m_files.write(arguments.at(4), packed).has_value();
        return ToolResult{isWritten ? 0 : 1, {}, {}};
    }

private:
    FileSystem& m_files;
};

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

struct Pipeline {
    TemporaryFileSystem files;
    PackingToolRunner tools{files};
    IconService icons{tools, files};
    QByteArray source = libraryPng(photograph(sourceEdge));

    void run() { icons.convertPngToIcns(source, files.root()).value(); }
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
