#include "Platform/Linux/X11Pixels.h"

#include "Platform/Linux/X11Reply.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>

#include <cstdint>

namespace wrapio::x11 {

namespace {

constexpr std::uint32_t allPlanes = 0xFFFFFFFF;
constexpr int bytesPerPixel = 4;
constexpr int alphaDepth = 32;
constexpr int opaqueDepth = 24;

/// Memory that this process and the server share, gone with this object.
class SharedMemory {
public:
    SharedMemory(xcb_connection_t* connection, std::size_t size)
        : m_connection(connection) {
        const auto* const extension = ::xcb_get_extension_data(connection, &::xcb_shm_id);
        if (!extension || !extension->present)
            return;
        const int identifier = ::shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
        if (identifier < 0)
            return;
        m_data = ::shmat(identifier, nullptr, 0);
        if (m_data != reinterpret_cast<void*>(-1)) {
            m_segment = ::xcb_generate_id(connection);
            const auto cookie =
                ::xcb_shm_attach_checked(connection, m_segment, static_cast<std::uint32_t>(identifier), 0);
            m_isShared = !owned(::xcb_request_check(connection, cookie));
        }
        // Both sides hold it now, or neither ever will.
        ::shmctl(identifier, IPC_RMID, nullptr);
    }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    ~SharedMemory() {
        if (m_isShared)
            ::xcb_shm_detach(m_connection, m_segment);
        if (m_data != reinterpret_cast<void*>(-1))
            ::shmdt(m_data);
    }

    [[nodiscard]] bool isShared() const { return m_isShared; }
    [[nodiscard]] xcb_shm_seg_t segment() const { return m_segment; }
    [[nodiscard]] const uchar* data() const { return static_cast<const uchar*>(m_data); }

private:
    xcb_connection_t* m_connection;
    void* m_data = reinterpret_cast<void*>(-1);
    xcb_shm_seg_t m_segment = 0;
    bool m_isShared = false;
};

/// Pixels as this machine's library has them: 32 bits each, the lowest byte first.
bool areOurKind(xcb_connection_t* connection, int depth) {
    const xcb_setup_t* const setup = ::xcb_get_setup(connection);
    if (setup->image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST || (depth != alphaDepth && depth != opaqueDepth))
        return false;
    for (auto formats = ::xcb_setup_pixmap_formats_iterator(setup); formats.rem > 0; ::xcb_format_next(&formats)) {
        if (formats.data->depth == depth)
            return formats.data->bits_per_pixel == bytesPerPixel * 8;
    }
    return false;
}

}  // namespace

QImage readPixels(xcb_connection_t* connection, xcb_drawable_t drawable, QSize size, int depth) {
    if (size.isEmpty() || !areOurKind(connection, depth))
        return {};
    const auto format = depth == alphaDepth ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    const auto width = static_cast<std::uint16_t>(size.width());
    const auto height = static_cast<std::uint16_t>(size.height());
    const qsizetype line = qsizetype(size.width()) * bytesPerPixel;
    const auto bytes = static_cast<std::size_t>(line * size.height());
    if (const SharedMemory memory(connection, bytes); memory.isShared()) {
        const auto cookie = ::xcb_shm_get_image(connection, drawable, 0, 0, width, height, allPlanes,
                                                XCB_IMAGE_FORMAT_Z_PIXMAP, memory.segment(), 0);
        if (const auto reply = owned(::xcb_shm_get_image_reply(connection, cookie, nullptr)))
            return QImage(memory.data(), size.width(), size.height(), line, format).copy();
    }
    const auto cookie =
        ::xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, 0, 0, width, height, allPlanes);
    const auto reply = owned(::xcb_get_image_reply(connection, cookie, nullptr));
    if (!reply || static_cast<std::size_t>(::xcb_get_image_data_length(reply.get())) < bytes)
        return {};
    return QImage(::xcb_get_image_data(reply.get()), size.width(), size.height(), line, format).copy();
}

}  // namespace wrapio::x11
