// Lets what happens later happen for the caller who asked for it.
#pragma once

#include "Platform/Caller.h"
#include "Platform/HttpClient.h"
#include "Platform/Scheduler.h"

namespace wrapio {

/// Another scheduler, whose tasks run for whoever was the caller when they were handed over.
class CallerKeepingScheduler final : public Scheduler {
public:
    /// `real` must outlive this.
    explicit CallerKeepingScheduler(Scheduler& real)
        : m_real(real) {}

    void async(Task task) override { m_real.async(forPresentCaller(std::move(task))); }
    [[nodiscard]] ScheduledTask after(double seconds, Task task) override {
        return m_real.after(seconds, forPresentCaller(std::move(task)));
    }
    [[nodiscard]] ScheduledTask every(double seconds, Task task) override {
        return m_real.every(seconds, forPresentCaller(std::move(task)));
    }
    void sleep(double seconds) override { m_real.sleep(seconds); }
    [[nodiscard]] Timestamp now() const override { return m_real.now(); }

private:
    Scheduler& m_real;
};

/// Another client, whose completions run for whoever made the request.
class CallerKeepingHttpClient final : public HttpClient {
public:
    /// `real` must outlive this.
    explicit CallerKeepingHttpClient(HttpClient& real)
        : m_real(real) {}

    void get(const HttpRequest& request, Completion completion) override {
        m_real.get(request, forPresentCaller(std::move(completion)));
    }

private:
    HttpClient& m_real;
};

}  // namespace wrapio
