// Values as a person reads them.

const FOLDED = 12; // entries of a list that are shown unasked

function isMatrix(value) {
  return Array.isArray(value) && value.length === 16 && value.every((part) => !Array.isArray(part));
}

function isNumbers(value) {
  return Array.isArray(value) && value.every((part) => typeof part === "number" || typeof part === "string");
}

function matrixTable(numbers, isOver = () => false) {
  return make(
    "table",
    {class: "values"},
    make(
      "tbody",
      {},
      ...[0, 1, 2, 3].map((row) =>
        make(
          "tr",
          {},
          ...[0, 1, 2, 3].map((column) => {
            const i = 4 * row + column;
            return make("td", {class: isOver(i) ? "over" : null}, short(toNumber(numbers[i]), 6));
          })
        )
      )
    )
  );
}

function rotationTable(radians) {
  const cells = (name, numbers) =>
    make("tr", {}, make("th", {scope: "row"}, name), ...numbers.map((number) => make("td", {}, number)));
  return make(
    "table",
    {class: "values"},
    make(
      "tbody",
      {},
      cells(
        "degrees",
        radians.map((angle) => short(toNumber(angle) * DEGREES, 6))
      ),
      cells(
        "radians",
        radians.map((angle) => short(toNumber(angle), 6))
      )
    )
  );
}

/** A list, its first entries open and the others folded. */
function listOf(entries, show) {
  const lay = (part, first) =>
    part.map((entry, i) => make("div", {}, make("small", {class: "note"}, `[${first + i}] `), show(entry)));
  if (entries.length <= FOLDED) {
    return make("div", {}, ...lay(entries, 0));
  }
  const rest = make(
    "details",
    {},
    make(
      "summary",
      {},
      `${(entries.length - FOLDED).toLocaleString("en")} more of ${entries.length.toLocaleString("en")}`
    )
  );
  rest.addEventListener("toggle", () => {
    if (rest.childElementCount === 1) {
      rest.append(...lay(entries.slice(FOLDED, 5000), FOLDED));
      if (entries.length > 5000) {
        rest.append(make("p", {class: "note"}, "The others are in the results file."));
      }
    }
  });
  return make("div", {}, ...lay(entries.slice(0, FOLDED), 0), rest);
}

function valueView(type, value) {
  if (value === null || value === undefined) {
    return "NaN";
  }
  if (isMatrix(value) && !/Float|Int/.test(type)) {
    return matrixTable(value);
  }
  if (/^(Euler|Rotation)$/.test(type) && isNumbers(value) && value.length === 3) {
    return rotationTable(value);
  }
  if (typeof value === "number") {
    return /Int/.test(type) ? String(value) : exact(value);
  }
  if (Array.isArray(value)) {
    const item = type.replace(/(\[\]|\{\}|List)+$/, "");
    if (isNumbers(value) && value.length <= 4) {
      return value.map((part) => exact(toNumber(part))).join("  ");
    }
    if (isNumbers(value)) {
      const text = value
        .slice(0, 10000)
        .map((part) => exact(toNumber(part)))
        .join(", ");
      return value.length <= FOLDED
        ? text
        : make(
            "details",
            {},
            make("summary", {}, `${value.length.toLocaleString("en")} numbers: ${text.slice(0, 60)}…`),
            text
          );
    }
    return listOf(value, (entry) => valueView(item, entry));
  }
  if (typeof value === "object") {
    return listOf(Object.entries(value), ([name, entry]) =>
      make("span", {}, make("b", {}, `${name} `), valueView("", entry))
    );
  }
  return String(value);
}

function inputsOf(record) {
  const own = record.inputs || (record.closure && record.closure.inputs);
  return Array.isArray(own) ? own : [];
}

function inputsView(place, record) {
  const inputs = inputsOf(record);
  if (inputs.length === 0) {
    return;
  }
  place.append(
    make("h3", {}, "Inputs"),
    make(
      "dl",
      {class: "inputs"},
      ...inputs.flatMap((input) => [
        make("dt", {}, input.name || "", make("small", {}, [].concat(input.plug || []).join(", ") || input.type || "")),
        make(
          "dd",
          {},
          input.value !== undefined ? valueView(input.type || "", input.value) : "",
          input.block !== undefined ? `block ${[].concat(input.block).join(", ")} of the resource file` : ""
        )
      ])
    )
  );
}
