#include "Platform/Linux/Machine.h"

#include <QDir>

#include <malloc.h>

namespace wrapio {

using namespace Qt::StringLiterals;

bool hasRenderNode(const QString& folder) {
    return !QDir(folder).entryList({u"renderD*"_s}, QDir::AllEntries | QDir::System).isEmpty();
}

void giveBackReleasedMemory() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

}  // namespace wrapio
