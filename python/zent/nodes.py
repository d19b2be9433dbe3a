"""The node functions, by the names of Maya's nodes; `help(zent.nodes.clamp)` tells of one.

ARGUMENTS has for each function the names of its arguments in the order in which a manifest's records number them.
"""
from . import _zent

ARGUMENTS = dict(_zent.nodes.ARGUMENTS)
globals().update({name: getattr(_zent.nodes, name) for name in ARGUMENTS})
__all__ = ["ARGUMENTS", *ARGUMENTS]
