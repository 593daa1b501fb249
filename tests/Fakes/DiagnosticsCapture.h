// What the program tells on standard output, for tests.
#pragma once

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace wrapio {

/// Catches standard output from construction until lines() is called.
class DiagnosticsCapture {
public:
    DiagnosticsCapture() { testing::internal::CaptureStdout(); }
    DiagnosticsCapture(const DiagnosticsCapture&) = delete;
    DiagnosticsCapture& operator=(const DiagnosticsCapture&) = delete;
    ~DiagnosticsCapture() {
        if (!m_ended)
            testing::internal::GetCapturedStdout();
    }

    /// The lines so far, without their line ends. Ends the catching.
    [[nodiscard]] QStringList lines() {
        m_ended = true;
        QString text = QString::fromStdString(testing::internal::GetCapturedStdout());
        if (text.endsWith(u'\n'))
            text.chop(1);
        return text.isEmpty() ? QStringList() : text.split(u'\n');
    }

private:
    bool m_ended = false;
};

}  // namespace wrapio
