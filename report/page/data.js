// What zentreport put into the page. A row is a number into its columns, the worst first; only some have their record
// in full.

const data = JSON.parse(byId("data").textContent);
const rows = data.rows;
const rowCount = rows.number.length;

function outcomeOf(row) {
  return OUTCOMES[rows.outcome[row]];
}

/** The outcome as it is shown: a match with a warning has a mark of its own. */
function shownOutcome(row) {
  return rows.warning[row] ? "warning" : outcomeOf(row);
}

function methodOf(row) {
  return data.methods[rows.method[row]].name;
}

function valueOf(row) {
  return rows.value[row] === null ? NaN : toNumber(rows.value[row]);
}

function unitOf(row) {
  return data.units[rows.unit[row]];
}

function toleranceOf(row) {
  return toNumber(data.files[rows.file[row]].header.tolerance);
}

/** The tolerance in the unit of what was measured: rotations are compared as radians. */
function toleranceIn(unit, row) {
  return unit === "degrees" ? toleranceOf(row) * DEGREES : toleranceOf(row);
}

/** The record's line, or null where the page does not have it. */
function fullRecord(row) {
  const script = byId(`record${rows.number[row]}`);
  return script === null ? null : JSON.parse(script.textContent);
}

const rowOfNumber = new Map();
for (let row = 0; row < rowCount; ++row) {
  rowOfNumber.set(rows.number[row], row);
}
