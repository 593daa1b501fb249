// Makes the tokens known to an engine.
#pragma once

class QQmlEngine;

namespace wrapio {

/// To be called once per engine, before it loads what imports Wrapio.Design.
void useDesign(QQmlEngine& engine);

}  // namespace wrapio
