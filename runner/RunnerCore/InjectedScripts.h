// The scripts that an app adds to the pages of its site.
#pragma once

#include <string>
#include <string_view>

namespace wrapio {

/// `text` (UTF-8; other bytes are left out) as a JavaScript string literal, quotes included.
[[nodiscard]] std::string scriptLiteral(std::string_view text);

/// A script, to run before the page's own, that lays `css` over the page. It adopts a constructed style sheet, which a
/// page's content security policy does not refuse as it does a style element, and which wins at equal specificity.
[[nodiscard]] std::string styleScript(std::string_view css);

/// Scripts to run right before and right after a custom script at the document's end. By then the event that scripts
/// commonly wait for, DOMContentLoaded, has passed; between the two its listeners are called all the same.
[[nodiscard]] std::string lateScriptPrologue();
[[nodiscard]] std::string lateScriptEpilogue();

}  // namespace wrapio
