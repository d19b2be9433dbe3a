// A view in three dimensions, drawn when something changes.

const openViews = new Set();

/** Takes down the views of the record that was open: a browser has only some graphics contexts. */
function closeViews() {
  for (const view of openViews) {
    view.close();
  }
  openViews.clear();
}

/** A view in `place`, or null where the browser has no WebGL. */
function makeView(place) {
  let renderer;
  try {
    renderer = new THREE.WebGLRenderer({antialias: true, preserveDrawingBuffer: true});
  } catch (error) {
    place.append(make("p", {class: "note"}, "This browser draws nothing in 3D here: WebGL is off."));
    return null;
  }
  const scene = new THREE.Scene();
  const camera = new THREE.PerspectiveCamera(35, 1, 0.1, 1000);
  scene.add(new THREE.HemisphereLight(0xffffff, 0x8a8f98, 0.75), camera);
  const lamp = new THREE.DirectionalLight(0xffffff, 0.45);
  lamp.position.set(0.4, 0.7, 1);
  camera.add(lamp);
  place.append(renderer.domElement);
  renderer.setPixelRatio(window.devicePixelRatio);
  const controls = new THREE.OrbitControls(camera, renderer.domElement);
  controls.enableKeys = false;

  const view = {scene, camera};
  view.draw = () => {
    scene.background = new THREE.Color(colour("view"));
    renderer.render(scene, camera);
  };
  const resize = () => {
    const width = Math.max(place.clientWidth, 1);
    const height = Math.max(place.clientHeight, 1);
    camera.aspect = width / height;
    camera.updateProjectionMatrix();
    renderer.setSize(width, height);
    view.draw();
  };
  const turnTo = (centre, from, distance) => {
    camera.position.copy(centre).addScaledVector(from, distance);
    camera.near = distance / 500;
    camera.far = distance * 50;
    camera.updateProjectionMatrix();
    controls.target.copy(centre);
    controls.update();
    view.draw();
  };
  const slope = () => Math.tan((camera.fov / 2) * (Math.PI / 180));
  /** Moves to where a sphere fills the view. */
  view.frame = (centre, radius) => {
    turnTo(
      centre,
      camera.position.clone().sub(controls.target).normalize(),
      (Math.max(radius, 1e-6) * 1.15) / Math.sin(Math.atan(slope()))
    );
  };
  /** Moves to where the points (flat) fill the view, seen from a direction. */
  view.frameAll = (points, direction) => {
    const box = boxOf(points);
    const centre = box.getCenter(new THREE.Vector3());
    const from = direction.clone().normalize();
    const right = new THREE.Vector3(0, 1, 0).cross(from).normalize();
    const up = from.clone().cross(right);
    const point = new THREE.Vector3();
    let distance = 1e-6;
    for (let i = 0; i + 2 < points.length; i += 3) {
      point.set(points[i], points[i + 1], points[i + 2]).sub(centre);
      const reach =
        Math.max(Math.abs(point.dot(up)), Math.abs(point.dot(right)) / camera.aspect) / slope() + point.dot(from);
      distance = reach > distance ? reach : distance;
    }
    turnTo(centre, from, Math.max(distance * 1.1, box.getSize(point).length() / 2));
  };
  resize();
  controls.addEventListener("change", view.draw);
  const sizes = new ResizeObserver(resize);
  sizes.observe(place);
  const scheme = window.matchMedia("(prefers-color-scheme: dark)");
  scheme.addEventListener("change", view.draw);
  view.close = () => {
    sizes.disconnect();
    scheme.removeEventListener("change", view.draw);
    controls.dispose();
    renderer.dispose();
    renderer.forceContextLoss();
  };
  openViews.add(view);
  return view;
}

function boxOf(points) {
  const box = new THREE.Box3();
  const point = new THREE.Vector3();
  for (let i = 0; i + 2 < points.length; i += 3) {
    point.set(points[i], points[i + 1], points[i + 2]);
    if (Number.isFinite(point.x + point.y + point.z)) {
      box.expandByPoint(point);
    }
  }
  return box.isEmpty() ? box.set(new THREE.Vector3(-1, -1, -1), new THREE.Vector3(1, 1, 1)) : box;
}

function attribute(numbers) {
  return new THREE.BufferAttribute(numbers instanceof Float32Array ? numbers : new Float32Array(numbers), 3);
}

function lines(numbers, style, index) {
  const geometry = new THREE.BufferGeometry();
  geometry.setAttribute("position", attribute(numbers));
  if (index) {
    geometry.setIndex(index);
  }
  const dashed = style.dashSize !== undefined;
  const material = dashed ? new THREE.LineDashedMaterial(style) : new THREE.LineBasicMaterial(style);
  const object = index ? new THREE.LineSegments(geometry, material) : new THREE.Line(geometry, material);
  object.frustumCulled = false;
  if (dashed) {
    object.computeLineDistances();
  }
  return object;
}

function dots(numbers, size, style) {
  const geometry = new THREE.BufferGeometry();
  geometry.setAttribute("position", attribute(numbers));
  const object = new THREE.Points(
    geometry,
    new THREE.PointsMaterial(Object.assign({size, sizeAttenuation: false}, style))
  );
  object.frustumCulled = false;
  return object;
}

/** A text or a ring that always faces the camera, in front of all, as large at any distance. */
function sprite(draw, size) {
  const canvas = make("canvas", {width: 128, height: 128});
  draw(canvas.getContext("2d"));
  const texture = new THREE.CanvasTexture(canvas);
  const object = new THREE.Sprite(new THREE.SpriteMaterial({map: texture, depthTest: false, sizeAttenuation: false}));
  object.scale.set(size, size, 1);
  object.renderOrder = 10;
  return object;
}

function ring() {
  return sprite((context) => {
    for (const [width, style] of [
      [22, "#fff"],
      [10, "#000"]
    ]) {
      context.lineWidth = width;
      context.strokeStyle = style;
      context.beginPath();
      context.arc(64, 64, 48, 0, 2 * Math.PI);
      context.stroke();
    }
  }, 0.035);
}

function letter(text, style) {
  return sprite((context) => {
    context.font = "bold 76px system-ui, sans-serif";
    context.textAlign = "center";
    context.textBaseline = "middle";
    context.lineWidth = 14;
    context.strokeStyle = colour("view");
    context.strokeText(text, 64, 64);
    context.fillStyle = style;
    context.fillText(text, 64, 64);
  }, 0.055);
}

// ---- heat ----------------------------------------------------------------------------------------------------------

/** From dark to bright, told apart by lightness alone. */
const HEAT = [
  [0.34, 0.06, 0.43],
  [0.58, 0.15, 0.4],
  [0.79, 0.26, 0.29],
  [0.95, 0.44, 0.12],
  [0.99, 0.65, 0.04],
  [0.96, 0.86, 0.35]
];
const CALM = [0.62, 0.66, 0.7];

/** The colour of an error between the tolerance and the greatest, on a logarithmic scale. */
function heat(error, tolerance, greatest) {
  if (!(error >= tolerance)) {
    return Number.isNaN(error) ? [0, 0, 0] : CALM;
  }
  const part = greatest > tolerance ? Math.log(error / tolerance) / Math.log(greatest / tolerance) : 1;
  const at = Math.min(Math.max(part, 0), 1) * (HEAT.length - 1);
  const low = Math.min(Math.floor(at), HEAT.length - 2);
  return HEAT[low].map((value, i) => value + (HEAT[low + 1][i] - value) * (at - low));
}

function cssColour(parts) {
  return `rgb(${parts.map((part) => Math.round(part * 255)).join(" ")})`;
}

function heatLegend(tolerance, greatest, hasControls) {
  return make(
    "div",
    {class: "legend"},
    make("span", {}, make("i", {style: `background:${cssColour(CALM)}`}), "within the tolerance"),
    make(
      "span",
      {},
      `${short(tolerance)} units`,
      make("i", {class: "ramp", style: `background:linear-gradient(90deg,${HEAT.map(cssColour).join(",")})`}),
      `${short(greatest)} units (logarithmic)`
    ),
    make(
      "span",
      {},
      make("i", {style: `height:0;border-top:2px solid ${colour("match")}`}),
      hasControls ? "Maya's, with its control points" : "Maya's shape"
    ),
    hasControls
      ? make("span", {}, make("i", {style: `height:0;border-top:2px solid ${colour("mismatch")}`}), "Zent's")
      : "",
    make("span", {}, "◯ worst point")
  );
}
