// The icon container: PNG pictures of several sizes in one file. Stateless; any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>

namespace wrapio {

/// The pixel edge of a square PNG picture, by its header; nothing when the bytes do not begin and end as a PNG file
/// does, or it is not square.
[[nodiscard]] std::optional<int> squarePngEdge(const QByteArray& bytes);

/// Container bytes made from the ten pictures of the folder `iconset`, "icon_16x16.png" to "icon_512x512@2x.png". Fails
/// when one is missing, unreadable, no PNG, or not of the size that its name tells. Other files there do not matter.
[[nodiscard]] ToolOutcome<QByteArray> icnsFromIconset(const QString& iconset);

/// The PNG pictures of a container by their pixel edge; of two with the same edge the first. Entries of other kinds are
/// passed over. Nothing when the bytes are no container, or its parts overrun it.
[[nodiscard]] std::optional<std::map<int, QByteArray>> pngPicturesOfIcns(const QByteArray& bytes);

}  // namespace wrapio
