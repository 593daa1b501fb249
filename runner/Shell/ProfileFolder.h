// Where one app keeps its site data, and the lock that keeps a second process out of it.
#pragma once

#include "RunnerCore/BundleError.h"

#include <tl/expected.hpp>

#include <string>

namespace wrapio {

/// Absolute paths, private to the person. Keyed by the record's id, so that a renamed app keeps its data.
struct ProfilePaths {
    std::string data;
    std::string cache;
    std::string socket;          ///< by which a second start reaches the first
    std::string snapshotSocket;  ///< by which the manager gets pictures; empty where there is no runtime folder
};

[[nodiscard]] ProfilePaths profilePaths(const std::string& recordId);

/// Creates the folders with access for the person only; an existing data folder is closed to others.
[[nodiscard]] tl::expected<void, Message> createProfile(const ProfilePaths& paths);

/// A lock on a profile, held until the object goes or the process ends, however it ends.
class ProfileLock {
public:
    ProfileLock() = default;
    ~ProfileLock();
    ProfileLock(const ProfileLock&) = delete;
    ProfileLock& operator=(const ProfileLock&) = delete;

    /// False when another process holds the lock of `paths`; does not wait. True without a lock where the file system
    /// has none.
    [[nodiscard]] bool acquire(const ProfilePaths& paths);

private:
    int m_file = -1;
};

}  // namespace wrapio
