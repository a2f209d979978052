"use strict";
{
  const form = document.querySelector("form");
  const words = document.querySelector("input[type=search]");
  const type = document.querySelector("select");
  const count = document.querySelector("#count");
  const languages = [...document.querySelectorAll("input[type=checkbox]")];

  // Capital letters first: they make two of a sharp s, as who types without one does.
  const folded = (text) => text.normalize("NFC").toUpperCase().toLowerCase();

  const faults = [...document.querySelectorAll("article")].map((article) => ({
    article,
    type: article.dataset.type,
    own: folded(article.querySelector("h2").textContent),
    texts: [...article.querySelectorAll("section")].map((section) => ({
      section,
      language: section.dataset.language,
      text: folded(section.textContent),
    })),
  }));

  // Looks at each fault once.
  const filter = () => {
    const searchedWords = folded(words.value).split(/\s+/).filter((word) => word);
    const shown = new Set(languages.filter((box) => box.checked).map((box) => box.value));
    let found = 0;
    for (const fault of faults) {
      let text = fault.own;
      for (const one of fault.texts) {
        const isShown = shown.has(one.language);
        one.section.hidden = !isShown;
        if (isShown) text += "\n" + one.text;
      }
      const isFound = (type.value === "" || type.value === "=" + fault.type) &&
        searchedWords.every((word) => text.includes(word));
      fault.article.hidden = !isFound;
      found += isFound;
    }
    count.textContent = found + " of " + faults.length;
  };

  // A link leads to its fault, whatever is filtered.
  const follow = () => {
    const target = document.getElementById(decodeURIComponent(location.hash.slice(1)));
    if (target && target.hidden) {
      words.value = "";
      type.value = "";
      filter();
    }
    if (target) target.scrollIntoView();
  };

  form.hidden = false;
  words.addEventListener("input", filter);
  for (const control of [type, ...languages]) control.addEventListener("change", filter);
  form.addEventListener("submit", (event) => event.preventDefault());
  addEventListener("hashchange", follow);
  filter();
  follow();
}
