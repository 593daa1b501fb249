#include "Platform/Linux/X11ScreenCapture.h"

#include "Platform/Linux/X11CaptureSession.h"

namespace wrapio {

namespace {

constexpr double keepSeconds = 3.0;
/// How long an application is given to draw what nobody could see of it.
constexpr double repaintSeconds = 0.3;
constexpr int idleThreadMilliseconds = 2000;

}  // namespace

X11ScreenCapture::X11ScreenCapture(Scheduler& scheduler)
    : m_scheduler(scheduler) {
    m_worker.setMaxThreadCount(1);
    m_worker.setExpiryTimeout(idleThreadMilliseconds);
}

X11ScreenCapture::~X11ScreenCapture() {
    m_worker.waitForDone();
}

X11ScreenCapture::Abilities X11ScreenCapture::abilities() const {
    if (m_abilities)
        return *m_abilities;
    const X11CaptureSession session;
    const Abilities found{session.isOpen(), session.canCapture()};
    if (found.isReachable)
        m_abilities = found;
    return found;
}

bool X11ScreenCapture::isPermitted() const {
    return abilities().isReachable;
}

bool X11ScreenCapture::canCaptureWindows() const {
    return abilities().canCapture;
}

void X11ScreenCapture::onWorker(std::function<void(X11CaptureSession&)> work) {
    m_worker.start([this, work = std::move(work)] {
        if (!m_session || !m_session->isOpen())
            m_session = std::make_unique<X11CaptureSession>();
        work(*m_session);
    });
    releaseLater();
}

void X11ScreenCapture::releaseLater() {
    m_release = m_scheduler.after(keepSeconds, [this] { m_worker.start([this] { m_session.reset(); }); });
}

template <typename Answer>
void X11ScreenCapture::deliver(const std::weak_ptr<int>& alive, const std::function<void(Answer)>& completion,
                               Answer answer) {
    m_scheduler.async([alive, completion, answer = std::move(answer)] {
        if (!alive.expired())
            completion(answer);
    });
}

void X11ScreenCapture::listOnScreenWindows(qint64 process, std::function<void(Windows)> completion) {
    Q_UNUSED(process)
    onWorker([this, alive = std::weak_ptr(m_alive), completion = std::move(completion)](X11CaptureSession& session) {
        deliver<Windows>(alive, completion, session.windows());
    });
}

void X11ScreenCapture::captureWindow(const ScreenWindow& window, QSize pixels,
                                     std::function<void(Picture)> completion) {
    onWorker([=, this, alive = std::weak_ptr(m_alive), completion = std::move(completion)](X11CaptureSession& session) {
        const auto needsTime = session.prepare(window);
        if (!needsTime) {
            deliver<Picture>(alive, completion, tl::unexpected(needsTime.error()));
        } else if (!*needsTime) {
            deliver<Picture>(alive, completion, session.picture(window, pixels));
        } else {
            m_scheduler.async([=, this] {
                if (!alive.expired())
                    takePicture(window, pixels, completion);
            });
        }
    });
}

void X11ScreenCapture::takePicture(const ScreenWindow& window, QSize pixels, std::function<void(Picture)> completion) {
    const auto task = std::make_shared<ScheduledTask>();
    *task = m_scheduler.after(repaintSeconds, [=, this, alive = std::weak_ptr(m_alive)] {
        const auto done = task;  // holds itself until it has run
        if (alive.expired())
            return;
        onWorker([=, this](X11CaptureSession& session) {
            deliver<Picture>(alive, completion, session.picture(window, pixels));
        });
    });
}

}  // namespace wrapio
