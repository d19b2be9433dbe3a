// The table of records. Only the rows that are in sight are in the document.

const ROW_HEIGHT = 30; // as the style has it
const COLUMNS = [
  ["", "outcome", "2.2rem"],
  ["node", "node", ""],
  ["method", "method", ""],
  ["worst", "value", "6.5rem", "number"],
  ["over", "over", "5rem", "number"],
  ["ms", "seconds", "4.5rem", "number"],
  ["#", "index", "4.5rem", "number"]
];

let shownRows = [];

function compareBy(column) {
  const number = (read) => (a, b) => {
    const [x, y] = [read(a), read(b)];
    return Number.isNaN(x) ? (Number.isNaN(y) ? 0 : -1) : Number.isNaN(y) ? 1 : x - y;
  };
  const text = (read) => (a, b) => {
    const [x, y] = [read(a), read(b)];
    return x < y ? -1 : x > y ? 1 : 0;
  };
  switch (column) {
    case "node":
      return text((row) => rows.node[row]);
    case "method":
      return text(methodOf);
    case "value":
      return number((row) => (unitOf(row) === "degrees" ? valueOf(row) / DEGREES : valueOf(row)));
    case "index":
      return number((row) => rows.number[row]);
    default:
      return number((row) => rows[column][row]);
  }
}

let searchTexts = null;

function searchTextOf(row) {
  if (searchTexts === null) {
    searchTexts = new Array(rowCount);
  }
  if (searchTexts[row] === undefined) {
    searchTexts[row] = `${rows.node[row]} ${methodOf(row)} ${rows.output[row]} ${rows.text[row]}`.toLowerCase();
  }
  return searchTexts[row];
}

function filterRows() {
  const words = state.search
    .toLowerCase()
    .split(/\s+/)
    .filter((word) => word !== "");
  const method = data.methods.findIndex(({name}) => name === state.method);
  const outcome = OUTCOMES.indexOf(state.outcome);
  const file = state.file === "" ? -1 : Number(state.file);
  const found = [];
  for (let row = 0; row < rowCount; ++row) {
    if (
      (state.outcome !== "" && (outcome < 0 ? !rows.warning[row] : rows.outcome[row] !== outcome)) ||
      (state.method !== "" && rows.method[row] !== method) ||
      (file >= 0 && rows.file[row] !== file) ||
      (words.length > 0 && !words.every((word) => searchTextOf(row).includes(word)))
    ) {
      continue;
    }
    found.push(row);
  }
  if (state.sort !== "") {
    const compare = compareBy(state.sort);
    found.sort((a, b) => (state.down ? compare(b, a) : compare(a, b)));
  }
  shownRows = found;
  byId("shown").textContent =
    found.length === rowCount
      ? plural(rowCount, "record")
      : `${found.length.toLocaleString("en")} of ${plural(rowCount, "record")}`;
}

function rowElement(row) {
  const outcome = shownOutcome(row);
  const value = valueOf(row);
  const cells = [
    make("span", {class: `mark ${outcome}`, title: outcome}, MARKS[outcome]),
    rows.node[row],
    methodOf(row),
    Number.isNaN(value) ? (outcomeOf(row) === "match" ? "" : rows.text[row] || outcome) : withUnit(value, unitOf(row)),
    rows.over[row] > 0 ? rows.over[row].toLocaleString("en") : "",
    short(rows.seconds[row] * 1000, 3),
    rows.index[row]
  ];
  if (Number.isNaN(value) && rows.text[row]) {
    cells.splice(3, 4, make("span", {title: rows.text[row]}, rows.text[row])); // a text takes the numbers' place
  }
  const isText = cells.length < COLUMNS.length;
  return make(
    "tr",
    {"data-row": row, "aria-selected": String(row === openRow())},
    ...cells.map((cell, i) =>
      make(
        "td",
        {
          class: isText ? null : COLUMNS[i][3],
          colspan: isText && i === 3 ? 4 : null,
          title: typeof cell === "string" ? cell : null
        },
        cell
      )
    )
  );
}

function drawRows() {
  const place = byId("rows");
  const first = Math.max(Math.floor(place.scrollTop / ROW_HEIGHT) - 10, 0);
  const last = Math.min(first + Math.ceil(place.clientHeight / ROW_HEIGHT) + 20, shownRows.length);
  const space = (count) =>
    make(
      "tr",
      {class: "space", "aria-hidden": "true"},
      make("td", {colspan: COLUMNS.length, style: `height:${Math.max(count, 0) * ROW_HEIGHT}px`})
    );
  byId("body").replaceChildren(
    space(first),
    ...shownRows.slice(first, last).map(rowElement),
    space(shownRows.length - last)
  );
}

/** Moves the list until a row is in sight. */
function reveal(row) {
  const at = shownRows.indexOf(row);
  if (at < 0) {
    return;
  }
  const place = byId("rows");
  const top = at * ROW_HEIGHT;
  if (top < place.scrollTop) {
    place.scrollTop = top;
  } else if (top + 3 * ROW_HEIGHT > place.scrollTop + place.clientHeight) {
    place.scrollTop = top + 3 * ROW_HEIGHT - place.clientHeight;
  }
}

function makeTable() {
  byId("columns").append(
    ...COLUMNS.map(([title, column, width, kind]) =>
      make(
        "th",
        {scope: "col", class: kind, style: width ? `width:${width}` : null, "data-column": column},
        make(
          "button",
          {type: "button", "aria-label": title === "" ? "outcome" : null, onclick: () => sortBy(column)},
          title
        )
      )
    )
  );
  byId("rows").addEventListener("scroll", drawRows);
  new ResizeObserver(drawRows).observe(byId("rows"));
  byId("body").addEventListener("click", (event) => {
    const element = event.target.closest("tr[data-row]");
    if (element) {
      open(Number(element.dataset.row));
    }
  });
  const held = data.counts.outcomes.reduce((sum, count) => sum + count, 0);
  const notes = [];
  if (held > rowCount) {
    notes.push(
      `The table has the worst ${rowCount.toLocaleString("en")} of ${held.toLocaleString("en")} records; ` +
        "the others are in the counts only."
    );
  }
  if (rowCount > data.full) {
    notes.push(`The worst ${plural(data.full, "record")} are here in full, the others with their worst difference.`);
  }
  byId("rest").hidden = notes.length === 0;
  byId("rest").textContent = notes.join(" ");
}
