// Dialogs for files, native where the desktop has its own.
#pragma once

#include "Platform/FileDialogs.h"

namespace wrapio {

/// Needs a QApplication. A dialog stands in front of the window that had the keyboard when it was asked for.
class QtFileDialogs final : public FileDialogs {
public:
    void openFile(const OpenFileRequest& request, Answer answer) override;
    void saveFile(const SaveFileRequest& request, Answer answer) override;
};

}  // namespace wrapio
