#include "ViewModels/AppErrorData.h"

namespace wrapio {

using namespace Qt::StringLiterals;

AppErrorData generationFailed(const AnyError& error) {
    return {.title = u"Generation Failed"_s,
            .message = u"Could not create the app bundle. Check if you have enough disk space."_s,
            .error = error};
}

}  // namespace wrapio
