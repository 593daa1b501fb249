// A person who answers when a test says so.
#pragma once

#include "Platform/FileDialogs.h"

#include <utility>
#include <vector>

namespace wrapio {

class FakeFileDialogs final : public FileDialogs {
public:
    void openFile(const OpenFileRequest& request, Answer answer) override {
        openRequests.push_back(request);
        m_waiting = std::move(answer);
    }
    void saveFile(const SaveFileRequest& request, Answer answer) override {
        saveRequests.push_back(request);
        m_waiting = std::move(answer);
    }

    [[nodiscard]] bool isOpen() const { return m_waiting != nullptr; }
    /// Answers the dialog that is open; nothing stands for Cancel.
    void answer(const std::optional<QString>& path) { std::exchange(m_waiting, nullptr)(path); }

    std::vector<OpenFileRequest> openRequests;
    std::vector<SaveFileRequest> saveRequests;

private:
    Answer m_waiting;
};

}  // namespace wrapio
