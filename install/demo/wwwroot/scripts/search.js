// Offers titles of pages while a visitor types into a search form. The form works without it.
(() => {
  "use strict";

  const pause = 150; // ms after a key
  const fewest = 2; // characters

  let number = 0;

  /** A list below the field, in the pattern of an editable combobox. */
  const combine = (field) => {
    const form = field.form;
    const page = form.elements.pageId ? form.elements.pageId.value : "";
    const known = new Map();
    let waiting = 0;
    let asking = null;
    let chosen = -1;

    const box = document.createElement("div");
    box.className = "search-box";
    field.before(box);
    const list = document.createElement("ul");
    list.className = "search-titles";
    list.id = "search-titles-" + ++number;
    list.hidden = true;
    list.setAttribute("role", "listbox");
    const told = document.createElement("span");
    told.className = "visually-hidden";
    told.setAttribute("aria-live", "polite");
    box.append(field, list, told);

    field.setAttribute("role", "combobox");
    field.setAttribute("autocomplete", "off");
    field.setAttribute("aria-autocomplete", "list");
    field.setAttribute("aria-expanded", "false");
    field.setAttribute("aria-controls", list.id);

    const close = () => {
      list.hidden = true;
      chosen = -1;
      told.textContent = "";
      field.setAttribute("aria-expanded", "false");
      field.removeAttribute("aria-activedescendant");
    };

    const choose = (place) => {
      const options = [...list.children];
      chosen = place;
      options.forEach((option, i) => option.setAttribute("aria-selected", String(i === place)));
      if (place < 0) {
        field.removeAttribute("aria-activedescendant");
        return;
      }
      field.setAttribute("aria-activedescendant", options[place].id);
      options[place].scrollIntoView({ block: "nearest" });
    };

    const take = (place) => {
      field.value = list.children[place].textContent;
      close();
      form.requestSubmit();
    };

    const show = (titles) => {
      close();
      if (titles.length === 0 || document.activeElement !== field) return;
      list.replaceChildren(
        ...titles.map((title, i) => {
          const option = document.createElement("li");
          option.id = list.id + "-" + i;
          option.textContent = title;
          option.setAttribute("role", "option");
          option.setAttribute("aria-selected", "false");
          // Pressing must not take the focus out of the field.
          option.addEventListener("mousedown", (event) => event.preventDefault());
          option.addEventListener("click", () => take(i));
          return option;
        }),
      );
      list.hidden = false;
      field.setAttribute("aria-expanded", "true");
      told.textContent = (field.dataset.suggest || "{n}").replace("{n}", String(titles.length));
      list.setAttribute("aria-label", told.textContent);
    };

    const ask = async (typed) => {
      if (asking) asking.abort();
      if (known.has(typed)) return show(known.get(typed));
      asking = new AbortController();
      const address = new URL("/torvex_search/suggest", window.location.href);
      address.search = new URLSearchParams({ pageId: page, q: typed }).toString();
      try {
        const answer = await fetch(address, { signal: asking.signal, headers: { Accept: "application/json" } });
        if (!answer.ok) return;
        const titles = (await answer.json()).suggestions.map((suggestion) => suggestion.title);
        known.set(typed, titles);
        if (field.value.trim() === typed) show(titles);
      } catch {
        // Stopped by the next key, or not connected: there is nothing to offer.
      }
    };

    field.addEventListener("input", () => {
      window.clearTimeout(waiting);
      const typed = field.value.trim();
      if ([...typed].length < fewest) return close();
      waiting = window.setTimeout(() => ask(typed), pause);
    });
    field.addEventListener("blur", close);
    field.addEventListener("keydown", (event) => {
      const count = list.hidden ? 0 : list.children.length;
      if (event.key === "Escape" && count > 0) {
        event.preventDefault();
        close();
      } else if (event.key === "ArrowDown" && count > 0) {
        event.preventDefault();
        choose(chosen + 1 < count ? chosen + 1 : -1);
      } else if (event.key === "ArrowUp" && count > 0) {
        event.preventDefault();
        choose(chosen < 0 ? count - 1 : chosen - 1);
      } else if (event.key === "Enter" && chosen >= 0) {
        event.preventDefault();
        take(chosen);
      }
    });
  };

  document.querySelectorAll("input[data-suggest]").forEach(combine);
})();
