// The view: what is filtered, sorted and open. The address has all of it, so that a link shows the same.

const state = {outcome: "", method: "", file: "", search: "", sort: "", down: false, record: ""};

function openRow() {
  const row = state.record === "" ? undefined : rowOfNumber.get(Number(state.record));
  return row === undefined ? -1 : row;
}

function readAddress() {
  const words = new URLSearchParams(location.hash.slice(1));
  for (const name of Object.keys(state)) {
    state[name] = name === "down" ? words.has("down") : words.get(name) || "";
  }
  if (!COLUMNS.some(([, column]) => column === state.sort)) {
    state.sort = "";
  }
}

function writeAddress() {
  const words = new URLSearchParams();
  for (const [name, value] of Object.entries(state)) {
    if (value !== "" && value !== false) {
      words.set(name, value === true ? "1" : value);
    }
  }
  history.replaceState(null, "", `#${words.toString() || "all"}`);
}

function markFilters() {
  document
    .querySelectorAll("#counts button")
    .forEach((button) => button.setAttribute("aria-pressed", String(button.dataset.outcome === state.outcome)));
  document
    .querySelectorAll("#strip button")
    .forEach((button) => button.setAttribute("aria-pressed", String(button.dataset.method === state.method)));
  byId("search").value = state.search;
  byId("method").value = state.method;
  byId("file").value = state.file;
  document.querySelectorAll("#columns th").forEach((head) => {
    const isSorted = head.dataset.column === state.sort;
    head.setAttribute("aria-sort", isSorted ? (state.down ? "descending" : "ascending") : "none");
    const button = head.firstElementChild;
    button.textContent = button.textContent.replace(/ [▲▼]$/, "") + (isSorted ? (state.down ? " ▼" : " ▲") : "");
  });
}

function showList() {
  filterRows();
  markFilters();
  drawRows();
}

function showRecord() {
  const row = openRow();
  const place = byId("record");
  document.body.classList.toggle("open", row >= 0);
  place.hidden = row < 0;
  if (row >= 0) {
    recordView(place, row, () => open(-1));
    reveal(row);
  } else {
    closeViews();
    closePlots();
  }
  drawRows();
}

function open(row) {
  state.record = row < 0 ? "" : String(rows.number[row]);
  writeAddress();
  showRecord();
}

function change(changes) {
  Object.assign(state, changes);
  writeAddress();
  byId("rows").scrollTop = 0;
  showList();
}

function toggle(name, value) {
  change({[name]: state[name] === value ? "" : value});
}

/** A column's second click turns the order round, its third brings the worst to the top again. */
function sortBy(column) {
  const startsDown = column === "value" || column === "over" || column === "seconds";
  if (state.sort !== column) {
    change({sort: column, down: startsDown});
  } else {
    change(state.down === startsDown ? {down: !startsDown} : {sort: "", down: false});
  }
}

/** Opens the next row, or the next one that did not match. */
function step(direction, isWanted) {
  let at = shownRows.indexOf(openRow());
  at = at < 0 && direction < 0 ? shownRows.length : at;
  for (at += direction; at >= 0 && at < shownRows.length; at += direction) {
    if (isWanted(shownRows[at])) {
      open(shownRows[at]);
      return;
    }
  }
}

const isAny = () => true;
const isBad = (row) => outcomeOf(row) === "mismatch" || outcomeOf(row) === "error";
const KEYS = {
  n: () => step(1, isBad),
  p: () => step(-1, isBad),
  j: () => step(1, isAny),
  k: () => step(-1, isAny),
  Escape: () => open(-1),
  "/": () => byId("search").focus()
};
const LIST_KEYS = {ArrowDown: KEYS.j, ArrowUp: KEYS.k};

function onKey(event) {
  const isTyping = /^(INPUT|SELECT|TEXTAREA)$/.test(event.target.tagName);
  if (event.ctrlKey || event.metaKey || event.altKey || (isTyping && event.key !== "Escape")) {
    return;
  }
  const action = KEYS[event.key] || (document.activeElement === byId("rows") ? LIST_KEYS[event.key] : undefined);
  if (action) {
    event.preventDefault();
    if (isTyping) {
      event.target.blur();
    } else {
      action();
    }
  }
}

function start() {
  overview();
  strip();
  chainView();
  makeTable();
  byId("method").append(
    make("option", {value: ""}, "All methods"),
    ...data.methods.map(({name}) => make("option", {value: name}, name || "(no method)"))
  );
  byId("file").append(
    make("option", {value: ""}, "All files"),
    ...data.files.map(({path}, i) => make("option", {value: i}, path))
  );
  byId("file").hidden = data.files.length < 2;
  byId("search").addEventListener("input", () => change({search: byId("search").value}));
  byId("method").addEventListener("change", () => change({method: byId("method").value}));
  byId("file").addEventListener("change", () => change({file: byId("file").value}));
  byId("reset").addEventListener("click", () =>
    change({outcome: "", method: "", file: "", search: "", sort: "", down: false})
  );
  byId("filters").addEventListener("submit", (event) => event.preventDefault());
  document.addEventListener("keydown", onKey);
  window.addEventListener("hashchange", () => {
    readAddress();
    showList();
    showRecord();
  });
  // Colours of what is drawn are taken from the style when it is drawn.
  window.matchMedia("(prefers-color-scheme: dark)").addEventListener("change", showRecord);
  readAddress();
  if (location.hash === "" && rowCount > 0 && outcomeOf(0) === "mismatch") {
    state.record = String(rows.number[0]); // whoever opens the page asks for the worst first
  }
  showList();
  showRecord();
}

start();
