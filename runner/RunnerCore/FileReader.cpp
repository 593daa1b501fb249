#include "RunnerCore/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace wrapio {

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int number)
        : m_number(number) {}
    ~FileDescriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

BundleError failure(const std::filesystem::path& path, int code) {
    if (code == ENOENT || code == ENOTDIR)
        return FileMissing{path.string()};
    return FileUnreadable{path.string(), std::generic_category().message(code)};
}

}  // namespace

tl::expected<std::string, BundleError> readSmallFile(const std::filesystem::path& path, std::size_t limit) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0)
        return tl::unexpected(failure(path, errno));
    struct stat info {};
    if (::fstat(file.number(), &info) != 0)
        return tl::unexpected(failure(path, errno));
    if (!S_ISREG(info.st_mode))
        return tl::unexpected<BundleError>(FileUnreadable{path.string(), "it is not a regular file"});
    // One byte more than allowed tells a file that grew since it was asked for its size.
    std::string bytes;
    for (;;) {
        const std::size_t filled = bytes.size();
        if (filled > limit)
            return tl::unexpected<BundleError>(FileTooLarge{path.string(), limit});
        bytes.resize(std::min(limit + 1, filled + 64 * 1024));
        const ssize_t count = ::read(file.number(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno != EINTR)
            return tl::unexpected(failure(path, errno));
        bytes.resize(filled + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0)
            return bytes;
    }
}

}  // namespace wrapio
