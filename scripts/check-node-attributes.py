#!/usr/bin/env python3
"""Asks a real Maya whether the plugs exist that the table of nodes names, and prints those that do not.

    zentcheck --list-methods --json > methods.json
    mayapy scripts/check-node-attributes.py methods.json
"""
import json
import sys


def attribute_path(plug):
    """The attributes of a plug without their indices."""
    return [part.split("[")[0] for part in plug.split(".")]


def main(path):
    import maya.standalone
    maya.standalone.initialize()
    from maya import cmds
    for plugin in ("quatNodes", "matrixNodes"):
        cmds.loadPlugin(plugin, quiet=True)

    with open(path) as file:
        plugs = json.load(file)["plugs"]
    nodes, wrong = {}, 0
    for asked in plugs:
        kind = asked["type"]
        if kind not in nodes:
            try:
                nodes[kind] = cmds.createNode(kind, skipSelect=True)
            except RuntimeError:
                nodes[kind] = None
            if nodes[kind] is not None and cmds.nodeType(nodes[kind]) != kind:  # Maya made an "unknown" of it
                nodes[kind] = None
            if nodes[kind] is None:
                wrong += 1
                print(f"no node type {kind}")
        if nodes[kind] is None:
            continue
        missing = [name for name in attribute_path(asked["plug"])
                   if not cmds.attributeQuery(name, node=nodes[kind], exists=True)]
        doubt = " (doubtful in the table)" if asked["doubtful"] else ""
        for name in missing:
            wrong += 1
            print(f"{kind} has no {name}: {asked['plug']}{doubt}")
    print(f"{len(plugs)} plugs of {len(nodes)} node types, {wrong} not found")
    return 1 if wrong else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
