// The library of pages, which is loaded when the first page is shown and not before.
#pragma once

#include <QString>
#include <QtPlugin>

namespace wrapio {

/// What the library offers. Main thread.
class PageEngine {
public:
    PageEngine() = default;
    virtual ~PageEngine() = default;
    PageEngine(const PageEngine&) = delete;
    PageEngine& operator=(const PageEngine&) = delete;

    /// Gets the engine ready for windows that are made from now on.
    virtual void prepare() = 0;
};

/// Loads the library that lies in `folder` and prepares its engine; does nothing but answer true when that was done
/// before. False when it cannot be loaded; diagnostics say why.
[[nodiscard]] bool loadPageEngine(const QString& folder);

}  // namespace wrapio

Q_DECLARE_INTERFACE(wrapio::PageEngine, "com.wrapio.PageEngine/1")
