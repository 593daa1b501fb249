// A web of made-up responses.
#pragma once

#include "Platform/HttpClient.h"

#include <map>
#include <vector>

namespace wrapio {

/// Answers when `deliver()` is called, so that a test decides what overlaps what.
class FakeHttpClient final : public HttpClient {
public:
    void get(const HttpRequest& request, Completion completion) override;

    /// Answers the oldest request that waits; addresses without a response fail. False when none waits.
    bool deliver();
    /// Answers until none waits.
    void deliverAll();

    std::map<QString, HttpResponse> responses;
    std::vector<HttpRequest> requests;  ///< all that were made, in order

private:
    std::vector<std::pair<QString, Completion>> m_waiting;
};

}  // namespace wrapio
