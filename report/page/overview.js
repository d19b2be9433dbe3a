// The top of the page: the verdict, the counts, the files, and the strip of methods.

const SCALE = [-8, 4]; // decades of the strip
const STRIP = 24; // methods that are shown unasked

function verdict() {
  const [match, mismatch, error, ignored, skipped] = data.counts.outcomes;
  const bad = data.files.filter(({problem}) => problem !== "").length;
  const ran = match + mismatch + error;
  const worst = data.worst;
  if (mismatch > 0) {
    return [
      "mismatch",
      `${plural(mismatch, "record")} of ${ran.toLocaleString("en")} ${mismatch === 1 ? "does" : "do"} not match` +
        (worst ? `: worst ${withUnit(toNumber(worst.value), worst.unit)} at ${worst.record}` : "")
    ];
  }
  if (error > 0) {
    return ["error", `${plural(error, "record")} could not be evaluated`];
  }
  if (ran === 0) {
    return ["error", `Nothing ran: ${plural(ignored + skipped, "record")} ignored or skipped`];
  }
  if (bad > 0) {
    return ["error", `All that ran match, but ${plural(bad, "file")} could not be read to the end`];
  }
  return [
    "match",
    `All ${plural(ran, "record")} that ran match` +
      (worst ? `: worst ${withUnit(toNumber(worst.value), worst.unit)} at ${worst.record}` : "")
  ];
}

function factsOf() {
  const headers = data.files.filter(({isRead}) => isRead).map(({header}) => header);
  const each = (name, show = (value) => value) => {
    const found = [
      ...new Set(
        headers.map((header) => header[name]).filter((value) => value !== null && value !== undefined && value !== "")
      )
    ];
    return found.length === 0
      ? null
      : found.length <= 3
        ? found.map(show).join(", ")
        : `${show(found[0])} and ${found.length - 1} others`;
  };
  const times = headers.map(({time}) => time).sort();
  const time = (text) => text.replace("T", " ").replace("Z", " UTC");
  return [
    ["tolerance", each("tolerance", String)],
    ["warn above", each("warn", String)],
    ["relative", headers.some(({relative}) => relative) ? each("relative", String) : null],
    [data.files.length === 1 ? "manifest" : "manifests", each("manifest")],
    ["scene", each("scene")],
    ["host", each("host")],
    [
      "ran",
      times.length === 0
        ? null
        : times[0] === times[times.length - 1]
          ? time(times[0])
          : `${time(times[0])} to ${time(times[times.length - 1])}`
    ],
    ["files", data.files.length > 1 ? String(data.files.length) : null]
  ].filter(([, value]) => value);
}

function overview() {
  const [outcome, text] = verdict();
  byId("verdict").append(make("span", {class: `mark ${outcome}`}, MARKS[outcome]), " ", text);
  document.title = text;
  const counts = [...OUTCOMES.map((name, i) => [name, data.counts.outcomes[i]]), ["warning", data.counts.warnings]];
  byId("counts").append(
    ...counts
      .filter(([name, count]) => count > 0 || name === "match" || name === "mismatch")
      .map(([name, count]) =>
        make(
          "li",
          {},
          make(
            "button",
            {type: "button", "data-outcome": name, "aria-pressed": "false", onclick: () => toggle("outcome", name)},
            make("span", {class: `mark ${name}`}, MARKS[name]),
            `${count.toLocaleString("en")} ${name}`
          )
        )
      )
  );
  byId("facts").append(
    ...factsOf().map(([name, value]) => make("div", {}, make("dt", {}, name), make("dd", {}, value)))
  );
  const problems = data.files.filter(({problem}) => problem !== "");
  byId("problems").hidden = problems.length === 0;
  byId("problems").append(
    ...problems
      .slice(0, 20)
      .map(({path, problem}) => make("li", {}, make("strong", {class: "error"}, `! ${path}: `), problem))
  );
  if (problems.length > 20) {
    byId("problems").append(make("li", {}, `and ${problems.length - 20} other files`));
  }
}

function methodOutcome({counts, known}) {
  const [match, mismatch, error] = counts.outcomes;
  return mismatch > 0
    ? "mismatch"
    : error > 0
      ? "error"
      : counts.warnings > 0 || !known
        ? "warning"
        : match > 0
          ? "match"
          : "ignored";
}

function scalePart(value) {
  return Math.min(Math.max((Math.log10(value) - SCALE[0]) / (SCALE[1] - SCALE[0]), 0), 1) * 100;
}

function methodButton(method, tolerance) {
  const outcome = methodOutcome(method);
  const size = method.worst ? toNumber(method.worst.size) : NaN;
  const parts = OUTCOMES.map((name, i) => [name, method.counts.outcomes[i]])
    .filter(([, count]) => count > 0)
    .map(([name, count]) => `${count.toLocaleString("en")} ${name}`);
  return make(
    "li",
    {},
    make(
      "button",
      {
        type: "button",
        class: outcome,
        "data-method": method.name,
        "aria-pressed": "false",
        onclick: () => toggle("method", method.name)
      },
      make(
        "span",
        {class: "name", title: method.name},
        make("span", {class: `mark ${outcome}`}, MARKS[outcome]),
        method.name || "(no method)"
      ),
      make("span", {class: "worst"}, method.worst ? withUnit(toNumber(method.worst.value), method.worst.unit) : ""),
      make(
        "span",
        {class: "scale"},
        make("span", {class: "bar", style: `width:${size > 0 ? Math.max(scalePart(size), 1) : 0}%`}),
        make("span", {class: "limit", style: `left:${scalePart(tolerance)}%`})
      ),
      make(
        "span",
        {class: "parts"},
        method.known ? parts.join(", ") : `${parts.join(", ")}: unknown, the nearest is ${method.nearest}`
      )
    )
  );
}

function strip() {
  const order = ["mismatch", "error", "warning", "match", "ignored"];
  const size = (method) => (method.worst ? toNumber(method.worst.size) : -1);
  const methods = [...data.methods].sort(
    (a, b) => order.indexOf(methodOutcome(a)) - order.indexOf(methodOutcome(b)) || size(b) - size(a)
  );
  const tolerance =
    data.files.map(({header}) => toNumber(header && header.tolerance)).find((value) => value > 0) || 0.001;
  const show = (list) => byId("strip").append(...list.map((method) => methodButton(method, tolerance)));
  show(methods.slice(0, STRIP));
  byId("methods-note").textContent =
    `Each bar is the method's worst difference, logarithmic from 1e${SCALE[0]} to 1e${SCALE[1]} ` +
    "(rotations in radians); the line across it is the tolerance.";
  const more = byId("strip-more");
  more.hidden = methods.length <= STRIP;
  more.textContent = `Show all ${methods.length} methods`;
  more.addEventListener("click", () => {
    show(methods.slice(STRIP));
    more.hidden = true;
    markFilters();
  });
}
