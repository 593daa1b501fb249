// The program's item in the desktop's bar.
#pragma once

#include "Views/MenuBarMenu.h"

#include <QImage>
#include <QString>

#include <memory>

namespace wrapio {

/// The picture of an item.
struct StatusImage {
    QImage image;
    bool isTemplate = true;            ///< only its shape counts; the desktop's bar decides on the colour
    QString accessibilityDescription;  ///< empty when there is none
    double pointSize = 0;              ///< 0 for the image's own
    FontWeight weight = FontWeight::regular;

    bool operator==(const StatusImage&) const = default;
};

/// Main thread.
class StatusItem {
public:
    StatusItem() = default;
    virtual ~StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;

    /// False where the program has nowhere to show anything.
    [[nodiscard]] virtual bool hasButton() const = 0;
    virtual void setImage(const StatusImage& image) = 0;
    /// The menu that the item shows when it is clicked.
    virtual void setMenu(MenuBarMenu& menu) = 0;
    virtual void setVisible(bool isVisible) = 0;
    /// Tells people something by the item, where they see it.
    virtual void showMessage(const QString& title, const QString& text) = 0;
};

class StatusBar {
public:
    static constexpr double squareLength = -2;

    StatusBar() = default;
    virtual ~StatusBar() = default;
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    /// A new item of that length, or as long as it is high.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(double length) = 0;
};

}  // namespace wrapio
