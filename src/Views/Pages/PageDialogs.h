// The dialogs that pages open by script.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace wrapio {

struct PageAlert {
    QString messageText;
    QStringList buttons;             ///< in order; the first is the default
    std::optional<QString> field{};  ///< what the text field holds at first; nothing when there is no field
};

/// Main thread.
class PageDialogs {
public:
    /// `button` counts from 0; `text` is what the field holds.
    using Answer = std::function<void(int button, const QString& text)>;

    PageDialogs() = default;
    virtual ~PageDialogs() = default;
    PageDialogs(const PageDialogs&) = delete;
    PageDialogs& operator=(const PageDialogs&) = delete;

    /// Shows a modal alert; `answer` is called once, when it has closed.
    virtual void run(const PageAlert& alert, Answer answer) = 0;
};

}  // namespace wrapio
