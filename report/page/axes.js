// Rotations and matrices as axes, Maya's and Zent's from one origin.

const ROTATE_ORDERS = ["XYZ", "YZX", "ZXY", "XZY", "YXZ", "ZYX"];

/** The rows of a rotation's matrix: angles in degrees, the order as Maya counts them. */
function axesOfEuler(degrees, order) {
  // Maya's order names what is applied first; the library's names what is multiplied first.
  const name = [...ROTATE_ORDERS[order]].reverse().join("");
  const angles = degrees.map((angle) => (toNumber(angle) * Math.PI) / 180);
  const matrix = new THREE.Matrix4().makeRotationFromEuler(new THREE.Euler(angles[0], angles[1], angles[2], name));
  return [0, 1, 2].map((i) => new THREE.Vector3().setFromMatrixColumn(matrix, i));
}

function axesOfMatrix(numbers) {
  const m = numbers.map(toNumber);
  return [0, 1, 2].map((i) => new THREE.Vector3(m[4 * i], m[4 * i + 1], m[4 * i + 2]));
}

function axesOfQuaternion(numbers) {
  const q = new THREE.Quaternion(...numbers.map(toNumber));
  return [0, 1, 2].map((i) => new THREE.Vector3().setComponent(i, 1).applyQuaternion(q));
}

/** The fan from one direction to another. */
function fan(from, to, style) {
  const steps = 24;
  const positions = [];
  const turn = new THREE.Quaternion().setFromUnitVectors(from.clone().normalize(), to.clone().normalize());
  const still = new THREE.Quaternion();
  const point = (i) =>
    from
      .clone()
      .multiplyScalar(0.8)
      .applyQuaternion(still.clone().slerp(turn, i / steps))
      .toArray();
  for (let i = 0; i < steps; ++i) {
    positions.push(0, 0, 0, ...point(i), ...point(i + 1));
  }
  const geometry = new THREE.BufferGeometry();
  geometry.setAttribute("position", attribute(positions));
  return new THREE.Mesh(
    geometry,
    new THREE.MeshBasicMaterial({
      color: style,
      transparent: true,
      opacity: 0.28,
      side: THREE.DoubleSide,
      depthWrite: false
    })
  );
}

function shaft(axis, radius, style) {
  const length = axis.length();
  const object = new THREE.Mesh(
    new THREE.CylinderGeometry(radius, radius, length, 16),
    new THREE.MeshLambertMaterial({color: style})
  );
  object.position.copy(axis).multiplyScalar(0.5);
  object.quaternion.setFromUnitVectors(new THREE.Vector3(0, 1, 0), axis.clone().normalize());
  return object;
}

/** Two frames: Maya's axes as solid shafts, Zent's as dashed lines, and the turn from each to its other. */
function axesPicture(place, maya, zent, told) {
  const finite = (axis) => Number.isFinite(axis.length()) && axis.length() > 1e-9;
  const all = [...maya, ...zent];
  if (!all.every(finite)) {
    return;
  }
  const size = Math.max(...all.map((axis) => axis.length()));
  const frame = make("div", {class: "view", role: "img", tabindex: 0, "aria-label": "Maya's and Zent's axes"});
  const figure = make("figure", {class: "picture"}, frame);
  place.append(figure);
  const view = makeView(frame);
  const names = ["x", "y", "z"];
  const turns = maya.map((axis, i) => axis.angleTo(zent[i]) * DEGREES);
  if (view !== null) {
    maya.forEach((axis, i) => {
      const style = colour(names[i]);
      const other = zent[i];
      view.scene.add(shaft(axis, size * 0.02, style), fan(axis, other, style));
      view.scene.add(lines([0, 0, 0, ...other.toArray()], {color: style, dashSize: size * 0.05, gapSize: size * 0.03}));
      view.scene.add(dots(other.toArray(), 9, {color: style}));
      const label = letter(names[i], style);
      label.position.copy(axis).multiplyScalar(1.12);
      const otherLabel = letter(`${names[i]}′`, style);
      otherLabel.position.copy(other).multiplyScalar(1.12);
      view.scene.add(label, otherLabel);
    });
    const reach = all.flatMap((axis) => axis.clone().multiplyScalar(1.2).toArray());
    view.frameAll([0, 0, 0, ...reach], new THREE.Vector3(0.7, 0.55, 1));
  }
  figure.append(
    make(
      "figcaption",
      {},
      `Maya's axes x, y, z (solid) and Zent's x′, y′, z′ (dashed): they turn by ` +
        `${turns.map((turn) => `${short(turn, 3)}°`).join(", ")}. ${told} Drag to turn, scroll to zoom.`
    )
  );
}
