// Numbers, texts and elements.

const OUTCOMES = ["match", "mismatch", "error", "ignored", "skipped"];
const MARKS = {match: "✓", mismatch: "✕", error: "!", warning: "△", ignored: "–", skipped: "○"};
const DEGREES = 180 / Math.PI;

/** A number out of the file: what is none is a string there, or null. */
function toNumber(value) {
  if (typeof value === "number") {
    return value;
  }
  return value === "Infinity" ? Infinity : value === "-Infinity" ? -Infinity : NaN;
}

/** "62,200": a large number of three digits that count. */
function grouped(value) {
  return value >= 1e4 && value < 1e9 ? Number(value.toPrecision(3)).toLocaleString("en") : short(value, 3);
}

/** As few digits as tell it. */
function short(value, digits = 4) {
  if (!Number.isFinite(value)) {
    return String(value);
  }
  if (value === 0) {
    return "0";
  }
  const size = Math.abs(value);
  if (size >= 1e7 || size < 1e-4) {
    return value
      .toExponential(Math.max(digits - 2, 1))
      .replace(/\.?0+e/, "e")
      .replace("e+", "e");
  }
  return String(Number(value.toPrecision(digits)));
}

/** A value as a float has it. */
function exact(value) {
  return short(value, 7);
}

function withUnit(value, unit) {
  return short(value, 3) + (unit === "degrees" ? "°" : unit === "distance" ? " units" : "");
}

function plural(count, word) {
  return `${count.toLocaleString("en")} ${word}${count === 1 ? "" : "s"}`;
}

/** An element: its attributes, then its children, nodes or texts. */
function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (name.startsWith("on")) {
      element.addEventListener(name.slice(2), value);
    } else if (value === true) {
      element.setAttribute(name, "");
    } else if (value !== false && value !== null && value !== undefined) {
      element.setAttribute(name, value);
    }
  }
  element.append(...children.filter((child) => child !== null && child !== undefined));
  return element;
}

function byId(id) {
  return document.getElementById(id);
}

function colour(name) {
  return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}

/** The numbers of a base64 text, as `Type` has them. */
function numbersOf(text, Type) {
  const bytes = Uint8Array.from(atob(text || ""), (byte) => byte.charCodeAt(0));
  const size = Type.BYTES_PER_ELEMENT;
  return new Type(bytes.buffer, 0, Math.floor(bytes.length / size));
}
