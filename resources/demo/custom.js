// A custom script for the demo app: a banner, and counters with numbers of its own.
// Works whether it runs before the page is parsed or after it has been.
(() => {
  "use strict";

  const counters = { "count-unread": "12", "count-notes": "48", "count-berths": "7" };

  function customise() {
    // Set through the style object: a page's content policy may refuse style elements.
    const banner = document.createElement("div");
    banner.id = "wrapio-banner";
    banner.textContent = "Customised by Wrapio";
    Object.assign(banner.style, {
      padding: "0.6rem 1rem",
      background: "#0d0d14",
      color: "#9cc8f5",
      font: "700 1rem system-ui, sans-serif",
      letterSpacing: "0.04em",
      textAlign: "center",
    });
    document.body.prepend(banner);

    for (const [id, value] of Object.entries(counters)) {
      const counter = document.getElementById(id);
      if (counter) counter.textContent = value;
    }
  }

  if (document.readyState === "loading") {
    document.addEventListener("DOMContentLoaded", customise, { once: true });
  } else {
    customise();
  }
})();
