#include "RunnerCore/InjectedScripts.h"

#include "Utilities/Utf8.h"

namespace wrapio {

namespace {

void appendEscaped(std::string& literal, char32_t c) {
    constexpr std::string_view digits = "0123456789abcdef";
    if (c == U'"' || c == U'\\') {
        literal += '\\';
        literal += static_cast<char>(c);
    } else if (c < 0x20 || c == 0x7F || c == 0x2028 || c == 0x2029) {
        literal += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            literal += digits[c >> shift & 15];
    } else {
        appendCodePoint(literal, c);
    }
}

}  // namespace

std::string scriptLiteral(std::string_view text) {
    std::string literal = "\"";
    literal.reserve(text.size() + text.size() / 16 + 2);
    while (!text.empty()) {
        if (const auto c = takeCodePoint(text))
            appendEscaped(literal, *c);
    }
    literal += '"';
    return literal;
}

std::string styleScript(std::string_view css) {
    // Pages that set their own list of adopted sheets would drop ours, so it is put back at the usual moments.
    return "(() => {\n"
           "const sheet = new CSSStyleSheet();\n"
           "sheet.replaceSync(" +
           scriptLiteral(css) +
           ");\n"
           "const adopt = () => {\n"
           "  if (!document.adoptedStyleSheets.includes(sheet))\n"
           "    document.adoptedStyleSheets = [...document.adoptedStyleSheets, sheet];\n"
           "};\n"
           "adopt();\n"
           "document.addEventListener('DOMContentLoaded', adopt);\n"
           "window.addEventListener('load', adopt);\n"
           "})();\n";
}

std::string lateScriptPrologue() {
    return R"((() => {
const targets = [document, window];
const restore = [];
const waiting = [];
for (const target of targets) {
  const original = target.addEventListener;
  const own = Object.getOwnPropertyDescriptor(target, 'addEventListener');
  restore.push(() => own ? Object.defineProperty(target, 'addEventListener', own) : delete target.addEventListener);
  target.addEventListener = function (type, listener, options) {
    if (type === 'DOMContentLoaded' && listener)
      waiting.push([target, listener]);
    else
      original.call(target, type, listener, options);
  };
}
Object.defineProperty(document, '__wrapioLate', { configurable: true, value: () => {
  delete document.__wrapioLate;
  restore.forEach(undo => undo());
  for (const [target, listener] of waiting) {
    const event = new Event('DOMContentLoaded');
    try {
      if (typeof listener === 'function')
        listener.call(target, event);
      else
        listener.handleEvent(event);
    } catch (error) {
      reportError(error);
    }
  }
} });
})();
)";
}

std::string lateScriptEpilogue() {
    return "document.__wrapioLate?.();\n";
}

}  // namespace wrapio
