// Makes the screens known to an engine.
#pragma once

#include "Platform/Resources.h"
#include "Services/FaviconService.h"

class QQmlEngine;

namespace wrapio {

/// To be called once per engine, before it loads what imports Wrapio.Views. The services must outlive the engine.
void useViews(QQmlEngine& engine, FaviconService& favicons, const Resources& resources);

}  // namespace wrapio
