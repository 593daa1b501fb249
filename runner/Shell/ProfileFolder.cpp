#include "Shell/ProfileFolder.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace wrapio {

namespace {

constexpr int privateMode = 0700;

std::string profileBelow(const char* base, const std::string& recordId) {
    return (std::filesystem::path(base) / "Wrapio" / "Profiles" / recordId).string();
}

/// Without the variable the toolkit's library would name a folder that other programs do not know.
bool hasRuntimeFolder() {
    const char* folder = g_getenv("XDG_RUNTIME_DIR");
    return folder != nullptr && *folder == '/';
}

}  // namespace

ProfilePaths profilePaths(const std::string& recordId) {
    const auto socketFolder = std::filesystem::path(g_get_user_runtime_dir()) / "wrapio";
    return {profileBelow(g_get_user_data_dir(), recordId), profileBelow(g_get_user_cache_dir(), recordId),
            (socketFolder / (recordId + ".sock")).string(),
            hasRuntimeFolder() ? (socketFolder / (recordId + ".snapshot")).string() : std::string()};
}

tl::expected<void, Message> createProfile(const ProfilePaths& paths) {
    const std::string socketFolder = std::filesystem::path(paths.socket).parent_path().string();
    for (const std::string& folder : {paths.data, paths.cache, socketFolder}) {
        if (g_mkdir_with_parents(folder.c_str(), privateMode) != 0 || ::chmod(folder.c_str(), privateMode) != 0)
            return tl::unexpected(Message{"This app cannot keep its data",
                                          "The folder “" + folder + "” cannot be created: " + g_strerror(errno) +
                                              ". Check the permissions of the folder above it and the free space."});
    }
    return {};
}

ProfileLock::~ProfileLock() {
    if (m_file >= 0)
        ::close(m_file);
}

bool ProfileLock::acquire(const ProfilePaths& paths) {
    const std::string path = paths.data + "/lock";
    if (m_file < 0)
        m_file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    return m_file < 0 || ::flock(m_file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace wrapio
