#include "Services/IconPictures.h"

#include "Platform/Imaging.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <system_error>
#include <thread>
#include <utility>

namespace wrapio {

namespace {

/// The one that is being asked for while the next is drawn.
constexpr std::size_t mostPrepared = 2;

/// PNG bytes of `image` stretched to a square.
std::optional<QByteArray> resize(const QImage& image, int edge) {
    const auto drawn = drawnAtSize(image, edge, edge);
    return drawn ? encodePng(*drawn) : std::nullopt;
}

/// Calls `work` with every number below `count`, here and on a second thread if there is one to be had.
void forEachConcurrently(std::size_t count, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    const auto drain = [&] {
        for (std::size_t i = next++; i < count; i = next++)
            work(i);
    };
    std::jthread helper;
    try {
        helper = std::jthread(drain);
    } catch (const std::system_error&) {
        // No thread to be had: everything happens on this one.
    }
    drain();
}

}  // namespace

/// The largest takes longer than all others together, so it comes first.
IconPictures drawIconPictures(const QImage& image, const std::vector<int>& edges) {
    std::map<int, std::optional<QByteArray>, std::greater<>> pictures;
    for (const int edge : edges)
        pictures[edge];
    std::vector<std::pair<const int, std::optional<QByteArray>>*> tasks;
    for (auto& picture : pictures)
        tasks.push_back(&picture);
    forEachConcurrently(tasks.size(), [&](std::size_t i) { tasks[i]->second = resize(image, tasks[i]->first); });
    return {pictures.begin(), pictures.end()};
}

void PreparedIconPictures::prepare(const QImage& image, const std::vector<int>& edges) {
    try {
        Entry entry{image, std::async(std::launch::async, drawIconPictures, image, edges)};
        const std::lock_guard lock(m_mutex);
        if (m_entries.size() == mostPrepared)
            m_entries.erase(m_entries.begin());
        m_entries.push_back(std::move(entry));
    } catch (const std::system_error&) {
        // They are drawn when they are asked for.
    }
}

std::optional<IconPictures> PreparedIconPictures::take(const QImage& image) {
    std::future<IconPictures> pictures;
    {
        const std::lock_guard lock(m_mutex);
        const auto entry =
            std::find_if(m_entries.begin(), m_entries.end(), [&image](const Entry& e) { return e.image == image; });
        if (entry == m_entries.end())
            return std::nullopt;
        pictures = std::move(entry->pictures);
        m_entries.erase(entry);
    }
    return pictures.get();
}

}  // namespace wrapio
