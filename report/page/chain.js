// The graph of a chained run: what is off, from the first causes down. What matches is folded, and a layer of many
// shows its worst.

const BOX = {width: 172, height: 42, across: 188, down: 78, margin: 14};
const LAYER = 12; // boxes of a layer that are shown unasked

const chain = {all: false, file: -1, wide: new Set(), chosen: null, nodes: []};

function isChainOff(node) {
  return node.outcome === "mismatch" || node.outcome === "error";
}

/** How far off, against the tolerance: what a layer is sorted and coloured by. */
function chainSize(node) {
  if (node.outcome === "error") {
    return Infinity;
  }
  const value = toNumber(node.value);
  const inRadians = node.unit === "degrees" ? value / DEGREES : value;
  return Number.isFinite(value) ? inRadians / (toNumber(data.files[node.file].header.tolerance) || 0.001) : 0;
}

/** The records of a file with what they read and what reads them, all in an order of evaluation. */
function chainNodes(file) {
  const nodes = data.chains.filter((node) => node.file === file).map((node) => ({...node, sources: [], readers: []}));
  const byIndex = new Map(nodes.map((node) => [node.index, node]));
  for (const node of nodes) {
    node.sources = node.reads.map((index) => byIndex.get(index)).filter((source) => source && source !== node);
    node.sources.forEach((source) => source.readers.push(node));
  }
  const order = nodes.filter(({sources}) => sources.length === 0);
  const missing = new Map(nodes.map((node) => [node, node.sources.length]));
  for (let at = 0; at < order.length; ++at) {
    for (const reader of order[at].readers) {
      missing.set(reader, missing.get(reader) - 1);
      if (missing.get(reader) === 0) {
        order.push(reader);
      }
    }
  }
  return order; // a circle, which no rig has, is not drawn
}

/** Gives each node the nearest shown nodes before it, over those that are folded. */
function foldChain(nodes, isShown) {
  for (const node of nodes) {
    const found = new Map();
    node.folded = 0;
    for (const source of node.sources) {
      if (isShown(source)) {
        found.set(source, false);
      } else {
        node.folded += 1;
        source.causes.forEach((isFar, cause) => found.has(cause) || found.set(cause, true));
      }
    }
    node.causes = found; // and whether something folded lies between
  }
  return nodes.filter(isShown);
}

function layersOf(shown) {
  const layers = [];
  for (const node of shown) {
    node.layer = Math.max(-1, ...[...node.causes.keys()].map(({layer}) => layer)) + 1;
    layers[node.layer] = layers[node.layer] || [];
    layers[node.layer].push(node);
  }
  const places = new Map();
  layers.forEach((layer, depth) => {
    const middle = (node) => {
      const at = [...node.causes.keys()].map((cause) => places.get(cause)).filter((place) => place !== undefined);
      return at.length === 0 ? 0 : at.reduce((sum, place) => sum + place, 0) / at.length;
    };
    layer.sort((a, b) => chainSize(b) - chainSize(a));
    const isWhole = chain.wide.has(depth) || layer.length <= LAYER;
    const kept = isWhole ? layer : layer.slice(0, LAYER - 1);
    const middles = new Map(kept.map((node) => [node, middle(node)]));
    kept.sort((a, b) => middles.get(a) - middles.get(b));
    kept.forEach((node, i) => places.set(node, i - (kept.length - 1) / 2));
    layers[depth] = {nodes: kept, rest: layer.length - kept.length};
  });
  return layers;
}

function chainColour(node) {
  if (!isChainOff(node)) {
    return "var(--sheet)";
  }
  const decades = Math.log10(Math.max(chainSize(node), 1));
  const part = Number.isFinite(decades) ? Math.min(12 + 14 * decades, 60) : 60;
  return `color-mix(in srgb, var(--${node.outcome}) ${part.toFixed(0)}%, var(--sheet))`;
}

function offInWords(node) {
  if (node.outcome === "error") {
    return "no value";
  }
  return Number.isFinite(toNumber(node.value)) ? withUnit(toNumber(node.value), node.unit) : node.outcome;
}

function chainBox(node, x, y) {
  node.box = make(
    "button",
    {
      type: "button",
      class: `${node.outcome}${node.own ? " own" : ""}`,
      style: `left:${x}px;top:${y}px;background:${chainColour(node)}`,
      tabindex: "-1",
      "aria-pressed": "false",
      "data-index": node.index,
      title: `${node.node} (${node.method})`,
      "aria-label": `${node.node}, ${node.method}, off by ${offInWords(node)}${node.own ? ", in itself" : ""}`,
      onclick: () => chooseChain(node),
      ondblclick: () => openChain(node)
    },
    make("span", {class: "name"}, node.node),
    make(
      "span",
      {class: "off"},
      `${MARKS[node.outcome]} ${offInWords(node)}${node.own ? ", in itself" : ""} `,
      make("span", {class: "method"}, node.method)
    )
  );
  Object.assign(node, {x, y});
  return node.box;
}

function chainPath(from, to, isFar) {
  const line = document.createElementNS("http://www.w3.org/2000/svg", "path");
  const [x0, y0, x1, y1] = [from.x + BOX.width / 2, from.y + BOX.height, to.x + BOX.width / 2, to.y];
  const bend = Math.max((y1 - y0) / 2, 12);
  line.setAttribute("d", `M${x0} ${y0}C${x0} ${y0 + bend} ${x1} ${y1 - bend} ${x1} ${y1}`);
  line.setAttribute("class", isFar ? "far" : "");
  return line;
}

function chooseChain(node) {
  chain.chosen = node;
  const onPath = new Set([node]);
  for (let now = node; now; ) {
    now = worstCause(now, onPath);
    if (now) {
      onPath.add(now);
    }
  }
  for (const other of chain.nodes) {
    other.box.setAttribute("aria-pressed", "false");
    other.box.tabIndex = -1;
    other.lines.forEach(({line, from, to}) => line.classList.toggle("on", onPath.has(from) && onPath.has(to)));
  }
  node.box.setAttribute("aria-pressed", "true");
  node.box.tabIndex = 0;
  byId("chain-why").textContent =
    node.why || `${node.node}(${node.method}) ${isChainOff(node) ? node.error || "is off" : "is within the tolerance"}`;
}

/** The one to blame: what has a box, is off, and is off the most. */
function worstCause(node, passed = new Set()) {
  if (node.own) {
    return null;
  }
  return [...node.causes.keys()]
    .filter((cause) => cause.box && isChainOff(cause) && !passed.has(cause))
    .reduce((worst, cause) => (worst === null || chainSize(cause) > chainSize(worst) ? cause : worst), null);
}

function openChain(node) {
  const row = rowOfNumber.get(node.number);
  if (row !== undefined) {
    open(row);
    byId("record").scrollIntoView({block: "nearest"});
  }
}

function moveInChain(event) {
  const now = chain.chosen;
  const beside = (by) => {
    const layer = chain.nodes.filter((node) => node.layer === now.layer).sort((a, b) => a.x - b.x);
    return layer[layer.indexOf(now) + by];
  };
  const moves = {
    ArrowUp: () => worstCause(now) || [...now.causes.keys()].find(({box}) => box),
    ArrowDown: () => chain.nodes.find((node) => node.causes.has(now)),
    ArrowLeft: () => beside(-1),
    ArrowRight: () => beside(1),
    Home: () => chain.nodes[0],
    Enter: () => {
      openChain(now);
      return now;
    }
  };
  if (!now || !moves[event.key] || !event.target.dataset.index) {
    return;
  }
  event.preventDefault();
  event.stopPropagation();
  const next = moves[event.key]();
  if (next) {
    chooseChain(next);
    next.box.focus();
    next.box.scrollIntoView({block: "nearest", inline: "nearest"});
  }
}

function chainSays(nodes, folded) {
  const off = nodes.filter(isChainOff);
  const own = off.filter((node) => node.own);
  const led = off.filter((node) => !node.own);
  const count = (list) => list.length.toLocaleString("en");
  if (off.length === 0) {
    return `All ${plural(nodes.length, "record")} match when they read one another.`;
  }
  const worst = off.reduce((a, b) => (chainSize(b) > chainSize(a) ? b : a));
  const parts = [
    `${count(off)} of ${plural(nodes.length, "record")} ${off.length === 1 ? "is" : "are"} off when they read one ` +
      `another: ${count(own)} in ${own.length === 1 ? "itself" : "themselves"}, ${count(led)} by what they read; ` +
      `worst ${worst.node} (${offInWords(worst)}).`,
    folded > 0 ? `${folded.toLocaleString("en")} within the tolerance ${folded === 1 ? "is" : "are"} folded.` : "",
    data.chainsLeftOut > 0 ? `${plural(data.chainsLeftOut, "record")} had no room on the page.` : ""
  ];
  return parts.filter((part) => part !== "").join(" ");
}

function drawChain() {
  const nodes = chainNodes(chain.file);
  const shown = foldChain(nodes, (node) => chain.all || isChainOff(node));
  const layers = layersOf(shown);
  const place = byId("chain-graph");
  place.hidden = shown.length === 0;
  byId("chain-says").textContent = chainSays(nodes, nodes.length - shown.length);
  byId("chain-why").textContent = "";
  byId("chain-all").setAttribute("aria-pressed", String(chain.all));
  const widest = Math.max(1, ...layers.map(({nodes: list, rest}) => list.length + (rest > 0 ? 1 : 0)));
  const width = Math.max(widest * BOX.across + 2 * BOX.margin, place.clientWidth);
  const height = layers.length * BOX.down + 2 * BOX.margin;
  const boxes = [];
  chain.nodes = [];
  layers.forEach(({nodes: list, rest}, depth) => {
    const count = list.length + (rest > 0 ? 1 : 0);
    const x = (i) => (width - count * BOX.across) / 2 + i * BOX.across + (BOX.across - BOX.width) / 2;
    const y = depth * BOX.down + BOX.margin;
    list.forEach((node, i) => boxes.push(chainBox(node, x(i), y)));
    chain.nodes.push(...list);
    if (rest > 0) {
      const more = () => {
        chain.wide.add(depth);
        drawChain();
      };
      const style = `left:${x(list.length)}px;top:${y}px`;
      const text = `and ${rest.toLocaleString("en")} that are less off`;
      boxes.push(make("button", {type: "button", class: "more", style, onclick: more}, text));
    }
  });
  const picture = document.createElementNS("http://www.w3.org/2000/svg", "svg");
  picture.setAttribute("width", width);
  picture.setAttribute("height", height);
  picture.setAttribute("aria-hidden", "true");
  chain.nodes.forEach((node) => (node.lines = []));
  for (const node of chain.nodes) {
    for (const [cause, isFar] of node.causes) {
      if (cause.box) {
        const line = chainPath(cause, node, isFar);
        picture.append(line);
        node.lines.push({line, from: cause, to: node});
      }
    }
  }
  place.replaceChildren(picture, ...boxes);
  place.style.height = `${height + 2}px`;
  if (chain.nodes.length > 0) {
    chooseChain(chain.nodes.find(isChainOff) || chain.nodes[0]);
    place.scrollLeft = (width - place.clientWidth) / 2;
  }
}

function chainView() {
  const files = [...new Set(data.chains.map(({file}) => file))];
  byId("chain").hidden = files.length === 0;
  if (files.length === 0) {
    return;
  }
  chain.file = files[0];
  const choice = byId("chain-file");
  choice.append(...files.map((file) => make("option", {value: file}, data.files[file].path)));
  choice.hidden = files.length < 2;
  choice.addEventListener("change", () => {
    chain.file = Number(choice.value);
    chain.wide.clear();
    drawChain();
  });
  byId("chain-all").addEventListener("click", () => {
    chain.all = !chain.all;
    chain.wide.clear();
    drawChain();
  });
  byId("chain-graph").addEventListener("keydown", moveInChain);
  drawChain();
}
