#include "Platform/FileSystem.h"

#include <system_error>

namespace wrapio {

using namespace Qt::StringLiterals;

QString FileError::description() const {
    const QString reason = QString::fromStdString(std::generic_category().message(code));
    return u"Could not %1 %2: %3"_s.arg(operation, path, reason);
}

}  // namespace wrapio
