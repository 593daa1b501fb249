// Defaults that live in memory.
#pragma once

#include "Platform/UserDefaults.h"

#include <cerrno>
#include <map>
#include <vector>

namespace wrapio {

class FakeUserDefaults final : public UserDefaults {
public:
    std::optional<QByteArray> data(const QString& key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    FileResult<void> setData(const QByteArray& bytes, const QString& key) override {
        if (failure)
            return tl::unexpected(*failure);
        values[key] = bytes;
        ++writes;
        return {};
    }
    FileResult<QString> preserveCopy(const QString& key) override {
        const auto found = values.find(key);
        if (found == values.end())
            return tl::unexpected(FileError{QStringLiteral("read"), key, ENOENT});
        preserved.push_back(found->second);
        return key + QStringLiteral(".damaged");
    }

    std::map<QString, QByteArray> values;
    std::vector<QByteArray> preserved;
    std::optional<FileError> failure;  ///< how every write ends
    int writes = 0;
};

}  // namespace wrapio
