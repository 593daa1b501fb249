// The pictures that an icon file is made of.
#pragma once

#include <QByteArray>
#include <QImage>

#include <future>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace wrapio {

/// PNG bytes by pixel edge; nothing for a picture that could not be drawn or encoded.
using IconPictures = std::map<int, std::optional<QByteArray>>;

/// `image` stretched to a square of each of the edges, on two threads if there are two to be had. Any thread.
[[nodiscard]] IconPictures drawIconPictures(const QImage& image, const std::vector<int>& edges);

/// Pictures of icons that are going to be asked for soon, drawn on threads of their own. Of those that nobody has asked
/// for only the latest few are kept. Any thread; going away waits for what is being drawn.
class PreparedIconPictures {
public:
    /// Starts to draw. Does nothing when no thread is to be had.
    void prepare(const QImage& image, const std::vector<int>& edges);
    /// The pictures of an image with the same pixels, once they are drawn; nothing when they were not prepared. They are
    /// handed out once.
    [[nodiscard]] std::optional<IconPictures> take(const QImage& image);

private:
    struct Entry {
        QImage image;
        std::future<IconPictures> pictures;
    };

    std::mutex m_mutex;
    std::vector<Entry> m_entries;
};

}  // namespace wrapio
