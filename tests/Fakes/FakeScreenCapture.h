// A screen whose windows a test arranges.
#pragma once

#include "Platform/Scheduler.h"
#include "Platform/ScreenCapture.h"

#include <map>
#include <memory>
#include <optional>

namespace wrapio {

/// Answers in a later turn of the scheduler, or when the test says so.
class FakeScreenCapture final : public ScreenCapture {
public:
    explicit FakeScreenCapture(Scheduler& scheduler)
        : m_scheduler(scheduler) {}

    bool isPermitted() const override { return permitted; }
    bool canCaptureWindows() const override { return capable; }

    void listOnScreenWindows(qint64 process, std::function<void(Windows)> completion) override {
        asked.push_back(process);
        answer([this, completion = std::move(completion)] {
            completion(listFailure ? Windows(tl::unexpected(*listFailure)) : Windows(windows));
        });
    }

    void captureWindow(const ScreenWindow& window, QSize pixels, std::function<void(Picture)> completion) override {
        captured.push_back({window.identifier, pixels});
        answer([this, window, pixels, completion = std::move(completion)] { completion(picture(window, pixels)); });
    }

    /// Adds a window in front of nothing: behind those that are there.
    ScreenWindow addWindow(qint64 process, QRectF frame, QColor color = Qt::green) {
        const ScreenWindow window{++m_last, process, frame};
        windows.push_back(window);
        colors[window.identifier] = color;
        return window;
    }
    /// Gives the answers that are held back.
    void release() {
        for (const auto& task : std::exchange(m_held, {}))
            task();
    }
    [[nodiscard]] std::size_t held() const { return m_held.size(); }

    struct Capture {
        quint64 identifier;
        QSize pixels;
        bool operator==(const Capture&) const = default;
    };

    bool permitted = true;
    bool capable = true;
    bool holdsAnswers = false;  ///< keep answers back until release()
    std::vector<ScreenWindow> windows;
    std::map<quint64, QColor> colors;
    std::optional<ScreenCaptureError> listFailure;
    std::optional<ScreenCaptureError> captureFailure;
    std::vector<qint64> asked;  ///< the processes whose windows were looked for
    std::vector<Capture> captured;

private:
    void answer(std::function<void()> task) {
        if (holdsAnswers) {
            m_held.push_back(std::move(task));
            return;
        }
        m_scheduler.async([weak = std::weak_ptr(m_alive), task = std::move(task)] {
            if (weak.lock())
                task();
        });
    }
    Picture picture(const ScreenWindow& window, QSize pixels) const {
        if (captureFailure)
            return tl::unexpected(*captureFailure);
        const auto color = colors.find(window.identifier);
        if (color == colors.end() || pixels.isEmpty())
            return tl::unexpected(ScreenCaptureError{QStringLiteral("there is no such window")});
        QImage image(pixels, QImage::Format_RGB32);
        image.fill(color->second);
        return image;
    }

    Scheduler& m_scheduler;
    quint64 m_last = 0;
    std::vector<std::function<void()>> m_held;
    std::shared_ptr<int> m_alive = std::make_shared<int>();
};

}  // namespace wrapio
