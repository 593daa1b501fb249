#include "Fakes/FakeHttpClient.h"

namespace wrapio {

void FakeHttpClient::get(const HttpRequest& request, Completion completion) {
    requests.push_back(request);
    m_waiting.emplace_back(request.url, std::move(completion));
}

bool FakeHttpClient::deliver() {
    if (m_waiting.empty())
        return false;
    const auto [url, completion] = std::move(m_waiting.front());
    m_waiting.erase(m_waiting.begin());
    const auto response = responses.find(url);
    if (response == responses.end())
        completion(tl::unexpected(HttpError{QStringLiteral("Connection refused")}));
    else
        completion(response->second);
    return true;
}

void FakeHttpClient::deliverAll() {
    while (deliver()) {
    }
}

}  // namespace wrapio
