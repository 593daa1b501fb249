// The library of pages, as it is found by those who load it.
#pragma once

#include "Views/Pages/PageEngine.h"

#include <QObject>

namespace wrapio {

class PageEnginePlugin final : public QObject, public PageEngine {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.wrapio.PageEngine/1")
    Q_INTERFACES(wrapio::PageEngine)

public:
    void prepare() override;
};

}  // namespace wrapio
