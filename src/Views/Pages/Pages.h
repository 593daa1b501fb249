// Makes the page views known to an engine.
#pragma once

class QQmlEngine;

namespace wrapio {

/// To be called once per engine, before it loads what imports Wrapio.Pages. Makes the components known too.
void usePages(QQmlEngine& engine);

}  // namespace wrapio
