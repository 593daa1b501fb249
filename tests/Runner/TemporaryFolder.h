// A folder of its own for one test, gone afterwards.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace wrapio::test {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "wrapio-runner-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    std::filesystem::path write(const std::string& name, const std::string& bytes) const {
        const auto file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

private:
    std::filesystem::path m_path;
};

}  // namespace wrapio::test
