// One record, opened.

/** A rotation's component by both solutions, as the comparison takes it. */
function rotationOff(a, b) {
  const difference = Math.abs(a - b);
  return Math.min(difference, Math.abs(difference - 180), Math.abs(difference - 360), Math.abs(Math.abs(a + b) - 180));
}

/** A table under these heads; the note stands below it. */
function valuesTable(heads, tableRows, note) {
  return make(
    "div",
    {class: "scroll"},
    make(
      "table",
      {class: "values"},
      make("thead", {}, make("tr", {}, ...heads.map((head) => make("th", {scope: "col"}, head)))),
      make("tbody", {}, ...tableRows)
    ),
    note ? make("p", {class: "note"}, note) : ""
  );
}

function componentsTable(maya, zent, type, tolerance) {
  const names = maya.length <= 4 && type !== "Float[]" ? ["x", "y", "z", "w"] : null;
  const off = type.startsWith("Euler") ? rotationOff : (a, b) => Math.abs(a - b);
  const limit = type.startsWith("Euler") ? tolerance * DEGREES : tolerance;
  const count = Math.max(maya.length, zent.length);
  const order = Array.from({length: count}, (_, i) => i);
  const offs = order.map((i) => off(toNumber(maya[i]), toNumber(zent[i])));
  const unit = type.startsWith("Euler") ? "°" : "";
  const row = (i) =>
    make(
      "tr",
      {},
      make("th", {scope: "row"}, count === 1 ? "" : names ? names[i] : `[${i}]`),
      make("td", {}, i < maya.length ? exact(toNumber(maya[i])) + unit : "–"),
      make("td", {}, i < zent.length ? exact(toNumber(zent[i])) + unit : "–"),
      make("td", {class: offs[i] < limit ? null : "over"}, short(offs[i]) + unit)
    );
  const note = count > 50 ? `The first 50 of ${count.toLocaleString("en")}.` : "";
  return valuesTable(["", "Maya", "Zent", "difference"], order.slice(0, 50).map(row), note);
}

function matricesView(maya, zent, tolerance) {
  const difference = maya.map((value, i) => Math.abs(toNumber(value) - toNumber(zent[i])));
  const isOver = (i) => !(difference[i] < tolerance);
  return make(
    "div",
    {class: "matrices"},
    make("figure", {}, matrixTable(maya), make("figcaption", {}, "Maya")),
    make("figure", {}, matrixTable(zent), make("figcaption", {}, "Zent")),
    make("figure", {}, matrixTable(difference, isOver), make("figcaption", {}, "difference"))
  );
}

/** The furthest control points of two curves or surfaces. */
function pointsView(shape, tolerance) {
  const maya = numbersOf(shape.maya, Float32Array);
  const zent = numbersOf(shape.zent, Float32Array);
  const off = distances(maya, zent);
  const order = Array.from(off.keys())
    .sort((a, b) => off[b] - off[a])
    .slice(0, 12);
  const text = (points, i) => [...points.subarray(3 * i, 3 * i + 3)].map((value) => short(value, 5)).join("  ");
  const line = (i) =>
    make(
      "tr",
      {},
      make("th", {scope: "row"}, `[${i}]`),
      make("td", {}, text(maya, i)),
      make("td", {}, text(zent, i)),
      make("td", {class: off[i] < tolerance ? null : "over"}, short(off[i]))
    );
  return valuesTable(["control point", "Maya (world)", "Zent (world)", "distance"], order.map(line));
}

function flat(value) {
  return Array.isArray(value) ? value.flatMap(flat) : [value];
}

function outputView(place, maya, zent, record, tolerance) {
  const type = (maya || zent).type;
  place.append(make("h3", {}, `${(maya && maya.name) || "output"} `, make("span", {class: "note"}, type)));
  if (!maya || !zent || maya.type !== zent.type) {
    place.append(make("p", {}, `Maya has ${maya ? maya.type : "nothing"}, Zent ${zent ? zent.type : "nothing"}.`));
    return;
  }
  if (type === "Curve" || type === "Surface") {
    const shape = shapesOfOutput(maya.value, zent.value, type);
    place.append(
      shape ? pointsView(shape, tolerance) : make("p", {}, "The two have different numbers of control points.")
    );
  } else if (type === "Mat4" && isMatrix(maya.value) && isMatrix(zent.value)) {
    place.append(make("div", {class: "scroll"}, matricesView(maya.value, zent.value, tolerance)));
  } else {
    place.append(componentsTable(flat(maya.value), flat(zent.value), type, tolerance));
  }
}

function orderOf(record) {
  const input = inputsOf(record).find(
    ({name, value}) => /^[^[]*rotateOrder$/i.test(name || "") && Number.isInteger(value)
  );
  return input && input.value >= 0 && input.value < 6 ? input.value : 0;
}

function picturesOf(place, record, tolerance) {
  if (record.shapes) {
    if (record.shapes.maya && record.shapes.zent) {
      shapesPicture(place, record.shapes, tolerance, record.point === undefined ? -1 : record.point);
    } else {
      place.append(
        make(
          "p",
          {class: "note"},
          `No picture: the ${record.shapes.kind} has ${plural(record.shapes.count, "point")}, ` +
            "more than the file or this page keeps."
        )
      );
    }
  }
  const pairs = (record.maya || [])
    .map((maya, i) => [maya, (record.zent || [])[i]])
    .filter(([maya, zent]) => zent && maya.type === zent.type);
  for (const [maya, zent] of pairs.slice(0, 4)) {
    if (maya.type === "Curve" || maya.type === "Surface") {
      const shape = shapesOfOutput(maya.value, zent.value, maya.type);
      const statistics = (record.statistics || []).find(({unit}) => unit === "distance");
      if (shape) {
        shapesPicture(place, shape, tolerance, statistics && statistics.at ? statistics.at[0] : -1);
      }
    } else if (maya.type === "Euler" && isNumbers(maya.value) && isNumbers(zent.value)) {
      const order = orderOf(record);
      axesPicture(
        place,
        axesOfEuler(maya.value, order),
        axesOfEuler(zent.value, order),
        `Both are drawn in rotate order ${ROTATE_ORDERS[order].toLowerCase()}.`
      );
    } else if (maya.type === "Mat4" && isMatrix(maya.value) && isMatrix(zent.value)) {
      const apart = Math.hypot(...[12, 13, 14].map((i) => toNumber(maya.value[i]) - toNumber(zent.value[i])));
      axesPicture(
        place,
        axesOfMatrix(maya.value),
        axesOfMatrix(zent.value),
        `Their origins, drawn as one, are ${short(apart)} units apart.`
      );
    } else if (maya.type === "Vec4" && /quat/i.test(`${maya.name}${record.method}`) && isNumbers(maya.value)) {
      axesPicture(place, axesOfQuaternion(maya.value), axesOfQuaternion(zent.value), "");
    }
  }
  if (record.samples && Array.isArray(record.samples.points) && pairs.length > 0) {
    curvePicture(place, record.samples, toNumber(pairs[0][0].value), toNumber(pairs[0][1].value));
  }
}

function statisticsView(place, record, tolerance) {
  const list = record.statistics || [];
  if (list.length === 0) {
    return;
  }
  const heads = ["output", "values", "mean", "root mean square", "greatest", "at", "over", "not finite"];
  const line = (one) =>
    make(
      "tr",
      {},
      make("th", {scope: "row"}, one.output),
      make("td", {}, one.count.toLocaleString("en")),
      ...[one.mean, one.rms, one.greatest].map((value) =>
        make("td", {}, value === null ? "–" : withUnit(toNumber(value), one.unit))
      ),
      make("td", {}, one.at ? `[${one.at.join("][")}]` : "–"),
      make("td", {class: one.over > 0 ? "over" : null}, one.over.toLocaleString("en")),
      make("td", {class: one.notFinite > 0 ? "over" : null}, one.notFinite.toLocaleString("en"))
    );
  place.append(make("h3", {}, "Statistics"), valuesTable(heads, list.map(line)));
  for (const one of list) {
    if (one.note) {
      place.append(make("p", {}, `${one.output}: ${one.note}`));
    }
    if (one.histogram) {
      histogramPicture(place, one, one.unit === "degrees" ? tolerance * DEGREES : tolerance);
    }
  }
}

function closureView(place, closure) {
  const text = JSON.stringify(closure);
  const button = make(
    "button",
    {
      type: "button",
      onclick: () => {
        const done = () => {
          button.textContent = "Copied";
        };
        const select = () => window.getSelection().selectAllChildren(shown);
        if (navigator.clipboard) {
          navigator.clipboard.writeText(text).then(done, select);
        } else {
          select();
        }
      }
    },
    "Copy"
  );
  const shown = make("pre", {tabindex: 0}, text);
  place.append(make("h3", {}, "Closure ", button), shown);
}

/** What a record came to, in one sentence. */
function leadOf(row) {
  const outcome = outcomeOf(row);
  if (outcome === "mismatch" || outcome === "match") {
    const value = valueOf(row);
    if (Number.isNaN(value)) {
      return rows.text[row] || (outcome === "match" ? "It matches." : "The outputs cannot be held against each other.");
    }
    const tolerance = toleranceIn(unitOf(row), row);
    const times = value / tolerance;
    return (
      `${rows.output[row]} is off by ${withUnit(value, unitOf(row))}` +
      (outcome === "mismatch"
        ? `, ${times >= 1 ? `${grouped(times)} times ` : "within "}the tolerance`
        : ", within the tolerance") +
      (rows.count[row] > 1
        ? `; ${rows.over[row].toLocaleString("en")} of ${plural(rows.count[row], "value")} over it.`
        : ".")
    );
  }
  return (
    rows.text[row] ||
    (outcome === "ignored"
      ? "It was left out: deformers were ignored, or the method is unknown."
      : "Its method was skipped.")
  );
}

function recordView(place, row, onClose) {
  closeViews();
  closePlots();
  const outcome = shownOutcome(row);
  const file = data.files[rows.file[row]];
  const tolerance = toleranceOf(row);
  place.replaceChildren(
    make(
      "header",
      {},
      make(
        "h2",
        {},
        make("span", {class: `mark ${outcome}`}, MARKS[outcome]),
        `${rows.node[row]} `,
        make("span", {class: "note"}, methodOf(row))
      ),
      make("button", {type: "button", "aria-label": "Close", onclick: onClose}, "✕")
    ),
    make("p", {class: "lead"}, make("strong", {class: outcome}, `${outcome}: `), leadOf(row))
  );
  const record = fullRecord(row);
  const facts = [
    `record ${rows.index[row]} of ${file.header.manifest || file.path}`,
    `${short(rows.seconds[row] * 1000, 3)} ms`
  ];
  if (record && record.plugs) {
    facts.push(record.plugs.join(", "));
  }
  place.append(make("p", {class: "note"}, facts.join(" · ")));
  if (record === null) {
    place.append(
      make(
        "p",
        {},
        `This page holds the worst ${plural(data.full, "record")} in full; this one's values are in ${file.path}.`
      )
    );
    return;
  }
  picturesOf(place, record, tolerance);
  const count = Math.max((record.maya || []).length, (record.zent || []).length);
  for (let i = 0; i < Math.min(count, 50); ++i) {
    outputView(place, (record.maya || [])[i], (record.zent || [])[i], record, tolerance);
  }
  statisticsView(place, record, tolerance);
  inputsView(place, record);
  if (record.closure !== undefined) {
    closureView(place, record.closure);
  }
}
