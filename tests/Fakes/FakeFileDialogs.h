// File dialogs that a test answers.
#pragma once

#include "Platform/FileDialogs.h"

#include <deque>

namespace wrapio {

class FakeFileDialogs final : public FileDialogs {
public:
    void openImage(const QStringList& contentTypes, Answer answer) override {
        ask(QStringLiteral("open-image ") + contentTypes.join(u' '), std::move(answer));
    }
    void openArchive(const QString& extension, Answer answer) override {
        ask(QStringLiteral("open-archive ") + extension, std::move(answer));
    }
    void saveArchive(const QString& proposedName, const QString& extension, Answer answer) override {
        ask(QStringLiteral("save-archive ") + proposedName + u' ' + extension, std::move(answer));
    }

    /// Answers the oldest dialog that is open; nothing stands for "cancelled".
    void answer(const std::optional<QString>& path) {
        const Answer oldest = std::move(m_open.front());
        m_open.pop_front();
        oldest(path);
    }
    [[nodiscard]] std::size_t open() const { return m_open.size(); }

    /// What was asked, in order.
    QStringList log;

private:
    void ask(const QString& what, Answer answer) {
        log << what;
        m_open.push_back(std::move(answer));
    }

    std::deque<Answer> m_open;
};

}  // namespace wrapio
