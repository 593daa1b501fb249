// Makes the components known to an engine.
#pragma once

class QQmlEngine;

namespace wrapio {

/// To be called once per engine, before it loads what imports Wrapio.Components. Makes the tokens known too.
void useComponents(QQmlEngine& engine);

}  // namespace wrapio
