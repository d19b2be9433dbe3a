// Curves and surfaces as Maya tells them: no knot for the ends' doubles, periodic shapes with their overlap.

/** The basis functions at u that are not zero: the first one's number, and their values. */
function basisAt(degree, knots, pointCount, u) {
  const full = [knots[0], ...knots, knots[knots.length - 1]];
  let span = degree;
  while (span < pointCount - 1 && u >= full[span + 1]) {
    ++span;
  }
  const values = [1];
  for (let order = 1; order <= degree; ++order) {
    let saved = 0;
    for (let i = 0; i < order; ++i) {
      const right = full[span + i + 1];
      const left = full[span + 1 - order + i];
      const part = right === left ? 0 : values[i] / (right - left);
      values[i] = saved + (right - u) * part;
      saved = (u - left) * part;
    }
    values[order] = saved;
  }
  return {first: span - degree, values};
}

function domainOf(degree, knots) {
  return [knots[degree - 1], knots[knots.length - degree]];
}

function parametersOf(degree, knots, pointCount, perSpan) {
  const [low, high] = domainOf(degree, knots);
  const steps = Math.min(Math.max((pointCount - degree) * perSpan, 1), 400);
  return Array.from({length: steps + 1}, (_, i) => low + ((high - low) * i) / steps);
}

function isCurve(degree, knots, pointCount) {
  return (
    degree >= 1 &&
    pointCount > degree &&
    Array.isArray(knots) &&
    knots.length === pointCount + degree - 1 &&
    knots.every(Number.isFinite)
  );
}

/** Points of a curve, flat, of the flat control points. */
function curvePoints(degree, knots, points) {
  const count = points.length / 3;
  const result = [];
  for (const u of parametersOf(degree, knots, count, 12)) {
    const basis = basisAt(degree, knots, count, u);
    for (let axis = 0; axis < 3; ++axis) {
      result.push(basis.values.reduce((sum, value, i) => sum + value * points[(basis.first + i) * 3 + axis], 0));
    }
  }
  return result;
}

/** A grid of a surface's points, flat, V fastest. */
function surfaceGrid(surface, points) {
  const countU = surface.knotsU.length - surface.degreeU + 1;
  const countV = surface.knotsV.length - surface.degreeV + 1;
  const us = parametersOf(surface.degreeU, surface.knotsU, countU, 6).map((u) =>
    basisAt(surface.degreeU, surface.knotsU, countU, u)
  );
  const vs = parametersOf(surface.degreeV, surface.knotsV, countV, 6).map((v) =>
    basisAt(surface.degreeV, surface.knotsV, countV, v)
  );
  const result = new Float32Array(us.length * vs.length * 3);
  let at = 0;
  for (const u of us) {
    for (const v of vs) {
      for (let axis = 0; axis < 3; ++axis) {
        let sum = 0;
        u.values.forEach((a, i) =>
          v.values.forEach((b, j) => {
            sum += a * b * points[((u.first + i) * countV + v.first + j) * 3 + axis];
          })
        );
        result[at++] = sum;
      }
    }
  }
  return {positions: result, width: vs.length, height: us.length};
}
