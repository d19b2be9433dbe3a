"""Expressions: a text of Maya's expression language as byte code."""
from __future__ import annotations

from . import _zent, nodes


class Program:
    """A compiled expression. Called with the values of its inputs, (n,) floats or (rows, n), it gives its outputs."""

    def __init__(self, text, inputs, outputs, frames_per_second=0.0):
        self.inputs, self.outputs = list(inputs), list(outputs)
        self.code, self.constants, self.listing = _zent.compile_expression(
            text, self.inputs, self.outputs, frames_per_second)

    def __call__(self, inputs):
        return nodes.expression(inputs, self.code, self.constants)


def compile_expression(text, inputs=None, outputs=None, frames_per_second=0.0):
    """The program of an expression's text.

    `inputs` and `outputs` are the names of its slots, as the text writes them; where they are left out, those that the
    text reads and writes, in its order. Raises Error with line and column for a text that cannot be compiled.
    """
    if inputs is None or outputs is None:
        found = _zent.names_in_expression(text)
        inputs = found[0] if inputs is None else inputs
        outputs = found[1] if outputs is None else outputs
    return Program(text, inputs, outputs, frames_per_second)
