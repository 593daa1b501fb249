// Archives that anybody may have made.
#include "Platform/Linux/ZipArchive.h"
#include "Property.h"

#include <QFile>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace wrapio {

namespace {

namespace fs = std::filesystem;

/// In memory, where there is such a place.
fs::path makeScratch() {
    const char* const wanted = std::getenv("TMPDIR");
    std::string path = wanted ? wanted : fs::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    path += "/wrapio-fuzz-XXXXXX";
    require(::mkdtemp(path.data()) != nullptr, "there is a place to work in");
    std::atexit([] {
        const char* const scratch = std::getenv("WRAPIO_FUZZ_SCRATCH");
        std::error_code ignored;
        if (scratch)
            fs::remove_all(scratch, ignored);
    });
    ::setenv("WRAPIO_FUZZ_SCRATCH", path.c_str(), 1);
    return path;
}

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void write(const fs::path& path, const void* data, std::size_t size) {
    std::ofstream(path, std::ios::binary).write(static_cast<const char*>(data), static_cast<std::streamsize>(size));
}

/// Everything below `folder`, with what the files hold.
std::map<std::string, std::string> tree(const fs::path& folder) {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const bool isFolder = entry.is_directory() && !entry.is_symlink();
        require(isFolder || (entry.is_regular_file() && !entry.is_symlink()), "only files and folders come out");
        require(isFolder || entry.hard_link_count() == 1, "no file has two names");
        found[entry.path().lexically_relative(folder).string()] = isFolder ? "folder" : "file" + contents(entry.path());
    }
    return found;
}

std::size_t entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

QString text(const fs::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

constexpr ZipLimits limits{
    .entries = 200, .fileBytes = 1 << 20, .totalBytes = 4 << 20, .ratio = 1000, .ratioFloorBytes = 1 << 18};

void feed(const std::uint8_t* data, std::size_t size) {
    static const fs::path scratch = makeScratch();
    const fs::path place = scratch / "place";
    fs::create_directories(place);
    write(place / "in.zip", data, size);
    write(place / "canary", "canary", 6);
    const bool isUnpacked = unpackZip(text(place / "in.zip"), text(place / "out"), limits).has_value();
    require(contents(place / "canary") == "canary", "what lies beside is not touched");
    require(entriesIn(scratch) == 1 && entriesIn(place) == (isUnpacked ? 3U : 2U),
            "nothing comes out but the folder, and that only when all went well");
    if (isUnpacked) {
        const auto first = tree(place / "out");
        const auto packed = packZip(text(place / "out"), text(place / "again.zip"));
        require(packed.has_value(), "what came out can be packed");
        require(unpackZip(text(place / "again.zip"), text(place / "out2"), limits).has_value(), "and unpacked again");
        require(tree(place / "out2") == first, "to the same");
    }
    fs::remove_all(place);
}

}  // namespace

}  // namespace wrapio

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wrapio::feed(data, size);
    return 0;
}
