"""Vectors, matrices, rotations and NURBS in double precision.

Maya's conventions: a point is a row and stands left of its matrix, row 3 of a matrix is the translation, and of a
product the first factor acts first. Angles are radians.
"""
from math import acos, asin, atan2, copysign, cos, pi, sin, sqrt

# ---------------------------------------------------------------------------------------------------------------------
# Vectors


def add(*vectors):
    return [sum(components) for components in zip(*vectors)]


def sub(a, b):
    return [x - y for x, y in zip(a, b)]


def scaled(v, factor):
    return [x * factor for x in v]


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def length(v):
    return sqrt(dot(v, v))


def unit(v):
    return scaled(v, 1 / length(v))


def across(v, direction):
    """The part of v that is perpendicular to a direction, as a unit vector."""
    return unit(sub(v, scaled(direction, dot(v, direction) / dot(direction, direction))))


def angle_between(a, b):
    return atan2(length(cross(a, b)), dot(a, b))


# ---------------------------------------------------------------------------------------------------------------------
# Matrices

IDENTITY = [[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]]


def product(*matrices):
    result = matrices[0]
    for m in matrices[1:]:
        result = [[sum(row[k] * m[k][j] for k in range(4)) for j in range(4)] for row in result]
    return result


def translation(v):
    return IDENTITY[:3] + [[*v, 1]]


def scaling(v):
    return [[v[0], 0, 0, 0], [0, v[1], 0, 0], [0, 0, v[2], 0], [0, 0, 0, 1]]


def frame(x, y, z, at=(0, 0, 0)):
    """The matrix of three axes and an origin."""
    return [[*x, 0], [*y, 0], [*z, 0], [*at, 1]]


def origin(m):
    return m[3][:3]


def linear(m):
    """A matrix without its translation."""
    return frame(m[0][:3], m[1][:3], m[2][:3])


def inverse(m):
    """Of any matrix of three axes and an origin."""
    x, y, z, o = (row[:3] for row in m)
    rows = [cross(y, z), cross(z, x), cross(x, y)]
    volume = dot(x, rows[0])
    columns = [[row[i] / volume for row in rows] for i in range(3)]
    back = frame(*columns)
    return frame(*columns, scaled(vector_by(o, back), -1))


def vector_by(v, m):
    return [sum(v[k] * m[k][j] for k in range(3)) for j in range(3)]


def point_by(p, m):
    return add(vector_by(p, m), origin(m))


# ---------------------------------------------------------------------------------------------------------------------
# Rotations

ORDERS = ["xyz", "yzx", "zxy", "xzy", "yxz", "zyx"]


def turn(axis, angle):
    """The rotation about a unit axis, counterclockwise for who looks against the axis."""
    c, s = cos(angle), sin(angle)
    rows = [add(scaled(e, c), scaled(cross(axis, e), s), scaled(axis, (1 - c) * dot(axis, e)))
            for e in ([1, 0, 0], [0, 1, 0], [0, 0, 1])]
    return frame(*rows)


def axis_and_angle(rotation):
    """The reverse of turn, for angles from 0 up to half a turn."""
    m = rotation
    doubled = [m[1][2] - m[2][1], m[2][0] - m[0][2], m[0][1] - m[1][0]]
    angle = atan2(length(doubled), m[0][0] + m[1][1] + m[2][2] - 1)
    return (unit(doubled) if angle > 1e-12 else [1, 0, 0]), angle


def between(a, b, share):
    """The rotation on the shortest way from rotation a to rotation b."""
    axis, angle = axis_and_angle(product(inverse(a), b))
    return product(a, turn(axis, angle * share))


def euler_matrix(angles, order=0):
    axes = {"x": [1, 0, 0], "y": [0, 1, 0], "z": [0, 0, 1]}
    return product(*[turn(axes[letter], angles["xyz".index(letter)]) for letter in ORDERS[order]])


def euler_angles(rotation, order=0):
    """Of the two triples of angles that make a rotation, the one with less turning in all."""
    i, j, k = ("xyz".index(letter) for letter in ORDERS[order])
    sign = 1 if (j - i) % 3 == 1 else -1
    m = rotation
    first = atan2(sign * m[j][k], m[k][k])
    middle = asin(max(-1, min(1, -sign * m[i][k])))
    last = atan2(sign * m[i][j], m[i][i])
    triples = [(first, middle, last),
               (first - copysign(pi, first), copysign(pi, middle) - middle, last - copysign(pi, last))]
    best = min(triples, key=lambda triple: sum(abs(a) for a in triple))
    angles = [0, 0, 0]
    angles[i], angles[j], angles[k] = best
    return angles


# ---------------------------------------------------------------------------------------------------------------------
# NURBS


def basis(knots, degree, i, u, derivative=False):
    """The i-th B-spline of a degree at u, or its slope, by the recursion of Cox and de Boor on Maya's knots."""
    padded = [knots[0], *knots, knots[-1]]

    def share(top, bottom):
        return top / bottom if bottom else 0

    def spline(i, p):
        if p == 0:
            return 1 if padded[i] <= u < padded[i + 1] else 0
        return (share(u - padded[i], padded[i + p] - padded[i]) * spline(i, p - 1) +
                share(padded[i + p + 1] - u, padded[i + p + 1] - padded[i + 1]) * spline(i + 1, p - 1))

    if not derivative:
        return spline(i, degree)
    return (share(degree, padded[i + degree] - padded[i]) * spline(i, degree - 1) -
            share(degree, padded[i + degree + 1] - padded[i + 1]) * spline(i + 1, degree - 1))


def into_domain(knots, degree, u):
    """The splines are 0 at the very end of the domain: step back from it by a hair."""
    return min(max(u, knots[degree - 1]), knots[-degree] - 1e-9)


class Curve:
    def __init__(self, degree, knots, points, world=IDENTITY):
        self.degree, self.knots, self.points, self.world = degree, knots, points, world

    def _sum(self, u, derivative):
        u = into_domain(self.knots, self.degree, u)
        return add(*[scaled(p, basis(self.knots, self.degree, i, u, derivative)) for i, p in enumerate(self.points)])

    def point(self, u):
        """In world space, as is the tangent."""
        return point_by(self._sum(u, False), self.world)

    def tangent(self, u):
        return vector_by(self._sum(u, True), self.world)

    def arc_length(self, start, end):
        """By Simpson's rule."""
        steps = 120
        speeds = [length(self.tangent(start + (end - start) * i / steps)) for i in range(steps + 1)]
        return (speeds[0] + speeds[-1] + 4 * sum(speeds[1:-1:2]) + 2 * sum(speeds[2:-1:2])) * (end - start) / steps / 3


    def at_fraction(self, fraction):
        """The parameter at a fraction of the length, by Newton's steps."""
        start, end = self.knots[self.degree - 1], self.knots[-self.degree]
        wanted = fraction * self.arc_length(start, end)
        u = start + fraction * (end - start)
        for _ in range(6):
            u += (wanted - self.arc_length(start, u)) / length(self.tangent(u))
        return u


class Surface:
    """Degrees and knots are pairs, for U and V; the points run along V first."""

    def __init__(self, degrees, knots, points, world=IDENTITY):
        self.degrees, self.knots, self.points, self.world = degrees, knots, points, world

    def _sum(self, parameters, derivatives):
        in_u, in_v = ([basis(knots, degree, i, into_domain(knots, degree, parameter), derivative)
                       for i in range(len(knots) - degree + 1)]
                      for knots, degree, parameter, derivative in
                      zip(self.knots, self.degrees, parameters, derivatives))
        return add(*[scaled(p, in_u[i // len(in_v)] * in_v[i % len(in_v)]) for i, p in enumerate(self.points)])

    def point(self, u, v):
        return point_by(self._sum((u, v), (False, False)), self.world)

    def tangents(self, u, v):
        return [vector_by(self._sum((u, v), derivatives), self.world) for derivatives in ((True, False), (False, True))]
