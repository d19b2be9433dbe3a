"""What Maya's rigging nodes evaluate, without Maya: single precision, many rows at once.

`zent.nodes` has a function for each node, by the node's name; Mesh, Curve, Surface and Lattice are the shapes that they
take. Angles are radians; a matrix is (4, 4), row by row as Maya prints it. `zent.check` holds a manifest's records
against the node functions, and `zent.read_results` reads what a run wrote; `zent.Manifest` and `zent.Resource` write its
files. `zent.Rig` evaluates a manifest as one rig.
"""
import copyreg
import enum

from . import nodes
from ._zent import Curve, Error, Lattice, Mesh, Surface, __version__, set_threads
from .files import Block, Manifest, Resource, methods
from .nodes import skin
from .program import Program, compile_expression
from .results import CheckError, Record, Results, RunningCheck, Statistics, check, read_results
from .rig import Plug, Rig, RigRecord


class RotateOrder(enum.IntEnum):
    """Maya's rotate orders; the first letter is the axis that acts first on a point."""
    XYZ = 0
    YZX = 1
    ZXY = 2
    XZY = 3
    YXZ = 4
    ZYX = 5


copyreg.pickle(Mesh, lambda s: (Mesh, (s.points, s.matrix)))
copyreg.pickle(Curve, lambda s: (Curve, (s.points, s.degree, s.form, s.knots, s.matrix)))
copyreg.pickle(Surface, lambda s: (Surface, (s.points, s.degrees, s.forms, s.knots_u, s.knots_v, s.matrix)))
copyreg.pickle(Lattice, lambda s: (Lattice, (s.points, s.divisions, s.matrix)))

__all__ = ["Block", "CheckError", "Curve", "Error", "Lattice", "Manifest", "Mesh", "Plug", "Program", "Record", "Resource",
           "Results", "Rig", "RigRecord", "RotateOrder", "RunningCheck", "Statistics", "Surface", "check", "compile_expression",
           "methods", "nodes", "read_results", "set_threads", "skin"]
