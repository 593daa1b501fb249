// Ownership of GLib objects and texts, and signal handlers that are members.
#pragma once

#include <glib-object.h>

#include <memory>
#include <string>

namespace wrapio {

struct UnrefObject {
    void operator()(void* object) const { g_object_unref(object); }
};
/// Owns one reference.
template <typename Type>
using ObjectPtr = std::unique_ptr<Type, UnrefObject>;

struct FreeText {
    void operator()(char* text) const { g_free(text); }
};
using TextPtr = std::unique_ptr<char, FreeText>;

/// The text of an error that GLib filled in; frees and clears it.
inline std::string takeMessage(GError*& error) {
    std::string message = error != nullptr ? error->message : "unknown error";
    g_clear_error(&error);
    return message;
}

/// `text`, or an empty text for null.
inline std::string orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

/// Connects a capture-less lambda; `data` must outlive `object` or be disconnected by its owner.
template <typename Handler>
gulong connect(gpointer object, const char* signal, Handler handler, gpointer data) {
    return g_signal_connect_data(object, signal, reinterpret_cast<GCallback>(+handler), data, nullptr,
                                 static_cast<GConnectFlags>(0));
}

}  // namespace wrapio
