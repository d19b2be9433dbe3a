// Pictures of a deformer's shapes, and of curves and surfaces: Maya's and Zent's in one view.

/** Triangles of polygons, each as a fan; and their edges. */
function facesOf(polygons, pointCount) {
  const counts = numbersOf(polygons.counts, Int32Array);
  const vertices = numbersOf(polygons.vertices, Int32Array);
  const triangles = [];
  const edges = [];
  let first = 0;
  for (const count of counts) {
    if (count < 0 || first + count > vertices.length) {
      break;
    }
    const face = vertices.subarray(first, first + count);
    first += count;
    if (face.some((vertex) => vertex < 0 || vertex >= pointCount)) {
      continue;
    }
    for (let i = 0; i < count; ++i) {
      edges.push(face[i], face[(i + 1) % count]);
      if (i >= 2) {
        triangles.push(face[0], face[i - 1], face[i]);
      }
    }
  }
  return {triangles, edges};
}

function gridFaces(width, height) {
  const triangles = [];
  for (let row = 0; row + 1 < height; ++row) {
    for (let column = 0; column + 1 < width; ++column) {
      const a = row * width + column;
      triangles.push(a, a + 1, a + width, a + 1, a + width + 1, a + width);
    }
  }
  return triangles;
}

/** Lines between neighbours of a grid whose first direction is fastest. */
function gridEdges(sizes, pointCount) {
  const edges = [];
  if (sizes.reduce((product, size) => product * size, 1) !== pointCount) {
    return edges;
  }
  let stride = 1;
  for (const size of sizes) {
    for (let point = 0; point < pointCount; ++point) {
      if ((Math.floor(point / stride) % size) + 1 < size) {
        edges.push(point, point + stride);
      }
    }
    stride *= size;
  }
  return edges;
}

function distances(a, b) {
  return Float32Array.from({length: a.length / 3}, (_, i) =>
    Math.hypot(a[3 * i] - b[3 * i], a[3 * i + 1] - b[3 * i + 1], a[3 * i + 2] - b[3 * i + 2])
  );
}

/** Points that are no points would spoil the whole picture: they stand where the other side has them. */
function drawable(points, others) {
  return points.map((value, i) => (Number.isFinite(value) ? value : Number.isFinite(others[i]) ? others[i] : 0));
}

/** What of a shape is drawn besides its points: derived points, triangles over them, and edges over its own points. */
function formOf(shape) {
  const {kind, count} = shape;
  if (kind === "mesh" && shape.polygons) {
    const faces = facesOf(shape.polygons, count);
    return {derive: (points) => points, triangles: faces.triangles, edges: faces.edges, control: false};
  }
  if (kind === "curve" && isCurve(shape.degree, shape.knots, count)) {
    return {
      derive: (points) => curvePoints(shape.degree, shape.knots, points),
      triangles: null,
      edges: gridEdges([count], count),
      control: true
    };
  }
  if (kind === "surface" && Array.isArray(shape.knotsU) && Array.isArray(shape.knotsV)) {
    const countU = shape.knotsU.length - shape.degreeU + 1;
    const countV = shape.knotsV.length - shape.degreeV + 1;
    if (
      countU * countV === count &&
      isCurve(shape.degreeU, shape.knotsU, countU) &&
      isCurve(shape.degreeV, shape.knotsV, countV)
    ) {
      const grid = surfaceGrid(shape, new Float32Array(3 * count));
      return {
        derive: (points) => surfaceGrid(shape, points).positions,
        triangles: gridFaces(grid.width, grid.height),
        edges: gridEdges([countV, countU], count),
        control: true
      };
    }
  }
  const divisions = Array.isArray(shape.divisions) ? shape.divisions : [];
  return {derive: null, triangles: null, edges: gridEdges(divisions, count), control: true};
}

function slider(label, attributes, show, onChange) {
  const output = make("output", {}, show(Number(attributes.value)));
  const input = make(
    "input",
    Object.assign(
      {
        type: "range",
        oninput: () => {
          output.textContent = show(Number(input.value));
          onChange(Number(input.value));
        }
      },
      attributes
    )
  );
  return make("label", {}, label, input, output);
}

/** Both shapes in one view: Maya's as lines, Zent's with its error as heat. `worst` is a point's number. */
function shapesPicture(place, shape, tolerance, worst) {
  const mayaFile = numbersOf(shape.maya, Float32Array);
  const zentFile = numbersOf(shape.zent, Float32Array);
  const count = Math.min(mayaFile.length, zentFile.length) / 3;
  const form = formOf(Object.assign({}, shape, {count}));
  const errors = distances(mayaFile, zentFile);
  const greatest = errors.reduce((most, error) => (error > most ? error : most), 0);
  const over = errors.reduce((sum, error) => sum + (error >= tolerance ? 1 : 0), 0);
  const maya = drawable(mayaFile, zentFile);
  const zent = drawable(zentFile, mayaFile);

  const frame = make("div", {
    class: "view",
    role: "img",
    tabindex: 0,
    "aria-label": `${plural(count, shape.kind + " point")}, the error as heat`
  });
  const figure = make("figure", {class: "picture"}, frame);
  place.append(figure);
  const view = makeView(frame);
  const marks = ring();
  let blend = 1;
  let exaggeration = 1;
  const shown = new Float32Array(maya);

  if (view !== null) {
    const shownPoints = dots(shown, form.control ? 7 : 3, {vertexColors: THREE.VertexColors});
    const colours = Float32Array.from([...errors].flatMap((error) => heat(error, tolerance, greatest)));
    shownPoints.geometry.setAttribute("color", attribute(colours));
    const parts = [];
    const mayaStyle = {color: colour("match"), transparent: true, opacity: form.control ? 0.9 : 0.45};
    const addDerived = (draw) => {
      const object = draw(form.derive(shown));
      view.scene.add(object);
      parts.push(() => {
        object.geometry.attributes.position.copyArray(form.derive(shown));
        object.geometry.attributes.position.needsUpdate = true;
        if (form.triangles) {
          object.geometry.computeVertexNormals();
        }
      });
    };
    if (form.triangles) {
      addDerived((positions) => {
        const geometry = new THREE.BufferGeometry();
        geometry.setAttribute("position", attribute(new Float32Array(positions)));
        geometry.setIndex(form.triangles);
        const isMesh = !form.control;
        if (isMesh) {
          geometry.setAttribute("color", attribute(colours));
        } else {
          const a = form.derive(maya);
          const b = form.derive(zent);
          geometry.setAttribute(
            "color",
            attribute([...distances(a, b)].flatMap((error) => heat(error, tolerance, greatest)))
          );
        }
        return new THREE.Mesh(
          geometry,
          new THREE.MeshLambertMaterial({
            vertexColors: THREE.VertexColors,
            side: THREE.DoubleSide,
            polygonOffset: true,
            polygonOffsetFactor: 1,
            polygonOffsetUnits: 1
          })
        );
      });
      view.scene.children[view.scene.children.length - 1].frustumCulled = false;
    } else if (form.derive) {
      addDerived((positions) => lines(positions, {color: colour("mismatch"), linewidth: 2}));
      view.scene.add(lines(form.derive(maya), mayaStyle));
    }
    if (form.edges.length > 0) {
      view.scene.add(lines(maya, mayaStyle, form.edges));
      if (form.control) {
        const hull = lines(shown, {color: colour("mismatch"), transparent: true, opacity: 0.7}, form.edges);
        view.scene.add(hull);
        parts.push(() => {
          hull.geometry.attributes.position.copyArray(shown);
          hull.geometry.attributes.position.needsUpdate = true;
        });
      }
    }
    if (form.control || !form.triangles) {
      view.scene.add(dots(maya, 5, {color: colour("match")}), shownPoints);
    }
    const stretch = lines([0, 0, 0, 0, 0, 0], {color: colour("ink"), depthTest: false});
    stretch.renderOrder = 9;
    const hasWorst = worst >= 0 && worst < count;
    if (hasWorst) {
      view.scene.add(marks, stretch);
    }
    const update = () => {
      for (let i = 0; i < shown.length; ++i) {
        shown[i] = maya[i] + blend * exaggeration * (zent[i] - maya[i]);
      }
      shownPoints.geometry.attributes.position.copyArray(shown);
      shownPoints.geometry.attributes.position.needsUpdate = true;
      parts.forEach((part) => part());
      if (hasWorst) {
        const place3 = shown.subarray(3 * worst, 3 * worst + 3);
        marks.position.fromArray(place3);
        stretch.geometry.attributes.position.copyArray([...maya.subarray(3 * worst, 3 * worst + 3), ...place3]);
        stretch.geometry.attributes.position.needsUpdate = true;
      }
      view.draw();
    };
    const whole = () => view.frameAll([...maya, ...shown], new THREE.Vector3(0.55, 0.35, 1));
    const toWorst = () =>
      view.frame(
        marks.position.clone(),
        Math.max(greatest * exaggeration * 1.5, boxOf(maya).getSize(new THREE.Vector3()).length() / 24)
      );
    const wires = make("input", {
      type: "checkbox",
      checked: true,
      onchange: () => {
        view.scene.traverse((object) => {
          if (object.isLineSegments && object.material.color.equals(new THREE.Color(mayaStyle.color))) {
            object.visible = wires.checked;
          }
        });
        view.draw();
      }
    });
    figure.append(
      make(
        "div",
        {class: "tools"},
        slider(
          "Maya ↔ Zent",
          {min: 0, max: 1, step: 0.01, value: 1, "aria-label": "From Maya's shape to Zent's"},
          (value) => `${Math.round(value * 100)}%`,
          (value) => {
            blend = value;
            update();
          }
        ),
        slider(
          "Exaggerate",
          {min: 0, max: 3, step: 0.05, value: 0, "aria-label": "Exaggerate the difference"},
          (value) => `×${short(10 ** value, 2)}`,
          (value) => {
            exaggeration = 10 ** value;
            update();
          }
        ),
        hasWorst ? make("button", {type: "button", onclick: toWorst}, "Worst point") : null,
        make("button", {type: "button", onclick: whole}, "Whole shape"),
        form.edges.length > 0 ? make("label", {}, wires, "Maya's lines") : null
      )
    );
    update();
    whole();
  }
  figure.append(heatLegend(tolerance, greatest, form.control));
  figure.append(
    make(
      "figcaption",
      {},
      `Maya's ${shape.kind} (blue ${form.edges.length > 0 ? "lines" : "points"}) and ` +
      `Zent's${form.control ? "" : " (heat)"}: ` +
        `${over.toLocaleString("en")} of ${plural(count, "point")} over ${short(tolerance)}` +
        (worst >= 0 && worst < count ? `; point ${worst} is furthest off, by ${short(errors[worst])} units.` : ".") +
        " Drag to turn, scroll to zoom."
    )
  );
}

/** Points by a matrix in Maya's row order, flat. */
function transformed(points, m) {
  return Float32Array.from(
    points.flatMap((p) => [0, 1, 2].map((i) => p[0] * m[i] + p[1] * m[4 + i] + p[2] * m[8 + i] + m[12 + i]))
  );
}

function base64Of(numbers) {
  return btoa(Array.from(new Uint8Array(numbers.buffer), (byte) => String.fromCharCode(byte)).join(""));
}

/** The outputs of a type Curve or Surface as shapes, or null where the two cannot be laid over one another. */
function shapesOfOutput(maya, zent, type) {
  const read = (value) => {
    const points = value.cv.map((point) => point.map(toNumber));
    return transformed(points, (value.matrix || [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]).map(toNumber));
  };
  if (!maya || !zent || !Array.isArray(maya.cv) || !Array.isArray(zent.cv) || maya.cv.length !== zent.cv.length) {
    return null;
  }
  return Object.assign({}, maya, {
    kind: type.toLowerCase(),
    count: maya.cv.length,
    maya: base64Of(read(maya)),
    zent: base64Of(read(zent))
  });
}
