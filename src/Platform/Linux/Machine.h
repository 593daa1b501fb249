// What the machine has to draw with, and the memory that this process takes of it. Any thread.
#pragma once

#include <QString>

namespace wrapio {

/// True when there is something to draw with other than the processor. `folder` is where such devices are found.
[[nodiscard]] bool hasRenderNode(const QString& folder = QStringLiteral("/dev/dri"));

/// Hands what the C library keeps of released memory back to the system. Takes some milliseconds.
void giveBackReleasedMemory();

}  // namespace wrapio
