"""Makes results files out of nothing, for the tests of zentreport and of its page.

    makeResults.py pictures FILE      one record for each kind of picture, and one for each outcome
    makeResults.py many COUNT FILE    that many records, one in a thousand a mismatch
"""
import base64
import json
import math
import struct
import sys

TOLERANCE = 0.001
HEADER = {"format": "zent-results", "version": 1, "program": "ZentMayaTools 1.0.0", "host": "stand-in",
          "manifest": "pictures.json", "resource": None, "scene": "scene.json", "frame": 12, "time": "2026-11-25T08:00:00Z",
          "records": 0, "tolerance": TOLERANCE, "warn": 0.0001, "relative": 0, "flags": {"stopOnFirstError": False}}


def chained(count):
    """Records in five layers, each of which is off and reads one of the layer before."""
    for i in range(count):
        layer = count // 5
        chain = {"outcome": "mismatch", "own": i < layer, "reads": [i - layer] if i >= layer else [], "why": f"node{i} is off",
                 "statistics": [{"output": "o", "type": "Float", "unit": "value", "greatest": 0.01 * (1 + i % 50)}]}
        yield {"index": i, "node": f"node{i}", "method": "clamp", "outcome": "mismatch" if i < layer else "match",
               "seconds": 1e-6, "statistics": [], "chain": chain}


def floats(points):
    return base64.b64encode(struct.pack(f"<{3 * len(points)}f", *[x for p in points for x in p])).decode()


def integers(numbers):
    return base64.b64encode(struct.pack(f"<{len(numbers)}i", *numbers)).decode()


def statistics(output, kind, unit, errors, at=None, limit=TOLERANCE):
    greatest = max(errors)
    one = {"output": output, "type": kind, "unit": unit, "count": len(errors), "mean": sum(errors) / len(errors),
           "rms": math.sqrt(sum(e * e for e in errors) / len(errors)), "greatest": greatest,
           "at": at or [errors.index(greatest)], "over": sum(e >= limit for e in errors), "notFinite": 0}
    if len(errors) > 16:
        bins = [0] * 20
        below = 0
        for error in errors:
            place = math.floor(2 * (math.log10(error) + 7)) if error > 0 else -1
            if place < 0:
                below += 1
            else:
                bins[min(place, 19)] += 1
        one["histogram"] = {"below": below, "from": -7, "perDecade": 2, "counts": bins}
    return one


def shapes_record(node, method, shape, maya, zent):
    errors = [math.dist(a, b) for a, b in zip(maya, zent)]
    worst = errors.index(max(errors))
    return {"node": node, "method": method, "outcome": "mismatch", "seconds": 0.0021,
            "statistics": [statistics("outputGeometry[0]", "Vertex", "distance", errors)], "point": worst,
            "plugs": [f"{node}.outputGeometry[0]"],
            "maya": [{"name": "outputGeometry[0]", "type": "Vertex", "value": maya[worst]}],
            "zent": [{"type": "Vertex", "value": zent[worst]}],
            "closure": {"inputs": [{"name": "envelope", "type": "Float", "value": 1.0},
                                   {"name": "matrix", "type": "Mat4[]", "value": [IDENTITY, moved(1, 2, 3)]},
                                   {"name": "weight", "type": "Float[]", "value": [i / 40 for i in range(40)]}],
                        "node": "skinCluster"},
            "shapes": dict(shape, count=len(maya), maya=floats(maya), zent=floats(zent))}


IDENTITY = [1.0, 0, 0, 0, 0, 1.0, 0, 0, 0, 0, 1.0, 0, 0, 0, 0, 1.0]


def moved(x, y, z):
    return IDENTITY[:12] + [x, y, z, 1.0]


def off_around(point, centre, radius, amount):
    """The point, pushed off where it is near the centre; elsewhere off by what single precision leaves."""
    near = max(0.0, 1 - math.dist(point, centre) / radius)
    return [x + amount * near * near * d + 1e-6 * math.sin(9 * x) for x, d in zip(point, (0.3, 1.0, 0.2))]


def tube():
    """A bent tube of quads, like a limb."""
    around, along = 32, 60
    points, counts, vertices = [], [], []
    for i in range(along):
        t = i / (along - 1)
        centre = (20 * t, 6 * math.sin(1.6 * t), 0)
        radius = 2.6 - 1.4 * t + 0.5 * math.sin(7 * t)
        for k in range(around):
            a = 2 * math.pi * k / around
            points.append([centre[0] - 0.4 * radius * math.cos(a) * math.cos(1.6 * t), centre[1] + radius * math.cos(a),
                           radius * math.sin(a)])
            if i + 1 < along:
                counts.append(4)
                vertices += [i * around + k, i * around + (k + 1) % around, (i + 1) * around + (k + 1) % around,
                             (i + 1) * around + k]
    return points, {"kind": "mesh", "polygons": {"counts": integers(counts), "vertices": integers(vertices)}}


def open_knots(points, degree):
    return [0.0] * degree + [float(i) for i in range(1, points - degree)] + [float(points - degree)] * degree


def grid_of(u, v):
    return [[1.5 * i, 1.2 * math.sin(0.9 * i) * math.cos(0.7 * k), 1.5 * k] for i in range(u) for k in range(v)]


def pictures():
    points, shape = tube()
    yield shapes_record("armSkin", "skinMesh", shape, points, [off_around(p, (12, 7, 1), 4, 1.1) for p in points])

    strap = [[2.0 * i, 3 * math.sin(0.8 * i), math.cos(0.6 * i)] for i in range(9)]
    yield shapes_record("strapWire", "wireCurve", {"kind": "curve", "degree": 3, "form": 1, "knots": open_knots(9, 3)},
                        strap, [off_around(p, strap[5], 4, 0.8) for p in strap])
    sheet = grid_of(7, 6)
    surface = {"degreeU": 3, "degreeV": 3, "formU": 1, "formV": 1, "knotsU": open_knots(7, 3), "knotsV": open_knots(6, 3)}
    yield shapes_record("sleeveCluster", "clusterSurface", dict(surface, kind="surface"), sheet,
                        [off_around(p, sheet[22], 4, 1.5) for p in sheet])
    box = [[3.0 * s, 2.0 * t, 2.0 * u] for u in range(3) for t in range(5) for s in range(3)]
    yield shapes_record("elbowCluster", "clusterLattice", {"kind": "lattice", "divisions": [3, 5, 3]}, box,
                        [off_around(p, box[-1], 5, 1.2) for p in box])

    for node, method, name, kind, value, moves in (
            ("cuff", "curveFromSurfaceIso", "outputCurve", "Curve",
             {"degree": 3, "form": 1, "knots": open_knots(9, 3), "cv": strap, "matrix": moved(0, 5, 0)}, strap),
            ("sleeve", "worldSurface", "worldSpace", "Surface", dict(surface, cv=sheet, matrix=IDENTITY), sheet)):
        zent = dict(value, cv=[off_around(p, moves[len(moves) // 2], 3, 0.9) for p in moves])
        errors = [math.dist(a, b) for a, b in zip(value["cv"], zent["cv"])]
        yield {"node": node, "method": method, "outcome": "mismatch", "seconds": 0.0004,
               "statistics": [statistics(name, kind, "distance", errors)],
               "maya": [{"name": name, "type": kind, "value": value}], "zent": [{"type": kind, "value": zent}],
               "closure": {"node": method}}

    yield {"node": "wristTurns", "method": "orientConstraint", "outcome": "mismatch", "seconds": 0.00012,
           "statistics": [statistics("constraintRotate", "Euler", "degrees", [33.82], [2], math.degrees(TOLERANCE))],
           "maya": [{"name": "constraintRotate", "type": "Euler", "value": [48.3141, 38.8062, -11.4325]}],
           "zent": [{"type": "Euler", "value": [51.05097, 33.24386, 22.38799]}],
           "closure": {"inputs": [{"name": "constraintRotateOrder", "type": "Int", "value": 0},
                                  {"name": "offset", "type": "Euler", "value": [0.0872664600610733, 0.0, -0.1745329]},
                                  {"name": "target[{}].targetRotate", "type": "Euler[]",
                                   "value": [[0.0, -1.56365, 0.0], [0.2618, -0.61087, 0.34907]]}],
                       "node": "orientConstraint"}}
    turned = [0.8, 0.6, 0, 0, -0.6, 0.8, 0, 0, 0, 0, 1, 0, 4, 5, 6, 1]
    yield {"node": "hand", "method": "worldMatrix", "outcome": "mismatch", "seconds": 0.00009,
           "statistics": [statistics("worldMatrix[0]", "Mat4", "value",
                                     [abs(a - b) for a, b in zip(moved(4, 5, 6.5), turned)])],
           "maya": [{"name": "worldMatrix[0]", "type": "Mat4", "value": moved(4, 5, 6.5)}],
           "zent": [{"type": "Mat4", "value": turned}], "closure": {"node": "transform"}}
    ease = [[i / 8, 3 * (i / 80) ** 2 * (3 - 2 * i / 80)] for i in range(-16, 97)]
    yield {"node": "elbowBend", "method": "animCurve", "outcome": "mismatch", "seconds": 0.00003,
           "statistics": [statistics("output", "Float", "value", [0.4])],
           "maya": [{"name": "output", "type": "Float", "value": 1.9}], "zent": [{"type": "Float", "value": 1.5}],
           "inputs": [{"name": "input", "type": "Float", "value": 5.0, "plug": "time1.outTime"},
                      {"name": "keyTime", "type": "Float[]", "value": [0.0, 10.0]}],
           "closure": {"node": "elbowBend", "method": "animCurve"},
           "samples": {"points": ease, "keys": [[0, 0], [10, 3]], "at": 5.0}}
    yield {"node": "broken", "method": "multMatrix", "outcome": "mismatch", "seconds": 0.00002,
           "statistics": [dict(statistics("matrixSum", "Float", "value", [0.0]), mean=None, rms=None, greatest=None,
                               at=None, notFinite=1)],
           "maya": [{"name": "matrixSum", "type": "Float", "value": "NaN"}], "zent": [{"type": "Float", "value": 1.5}],
           "closure": {"node": "<script>alert(1)</script>"}}
    yield {"node": "aim", "method": "aimConstraint", "outcome": "error", "seconds": 0.00001,
           "error": "Cannot find plug \"ctrl.txx\""}
    yield {"node": "limit", "method": "clmap", "outcome": "ignored", "seconds": 0, "nearest": "clamp"}
    yield {"node": "old", "method": "remapValue", "outcome": "skipped", "seconds": 0}
    yield {"node": "sum", "method": "plusMinusAverage1D", "outcome": "match", "warning": True, "seconds": 0.00001,
           "statistics": [statistics("output1D", "Float", "value", [0.0004])]}
    for i in range(8):
        yield {"node": f"add{i}", "method": "addDoubleLinear", "outcome": "match", "seconds": 0.00001,
               "statistics": [statistics("output", "Float", "value", [i * 2e-8])]}


def many(count):
    for i in range(count):
        bad = i % 1000 == 500
        error = 0.01 * (1 + i / count) if bad else 1e-7 * (i % 97)
        record = {"node": f"character:part_{i % 311}|joint{i}", "method": f"method{i % 90}",
                  "outcome": "mismatch" if bad else "match", "seconds": 1e-5,
                  "statistics": [statistics("output", "Float", "value", [error])]}
        if bad:
            record.update({"maya": [{"name": "output", "type": "Float", "value": 1.0}],
                           "zent": [{"type": "Float", "value": 1.0 + error}], "closure": {"node": "x"}})
        yield record


def write(path, records, count=None):
    outcomes = dict.fromkeys(("match", "mismatch", "error", "ignored", "skipped"), 0)
    warnings = 0
    if count is None:
        records = list(records)
        count = len(records)
    with open(path, "w", encoding="utf-8") as file:
        file.write(json.dumps(dict(HEADER, records=count)) + "\n")
        for index, record in enumerate(records):
            outcomes[record["outcome"]] += 1
            warnings += record.get("warning", False)
            file.write(json.dumps(dict({"index": index}, **record)) + "\n")
        file.write(json.dumps({"summary": dict(outcomes, records=count, warnings=warnings, seconds=0.01, worst=None)}) + "\n")


if __name__ == "__main__":
    if sys.argv[1] == "pictures":
        write(sys.argv[2], pictures())
    else:
        write(sys.argv[3], many(int(sys.argv[2])), int(sys.argv[2]))
