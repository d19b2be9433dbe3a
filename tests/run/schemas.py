"""Holds the documents' schemas against files that they describe: validates scenes and manifests, and refuses mistakes.

    schemas.py DOCS EXAMPLES
"""
import json
import pathlib
import re
import sys

import jsonschema


def scene(attribute):
    return {"nodes": {"|a|n": {"v": attribute}}}


def record(**changes):
    return [{"node_name": "n", "method": "m", "arguments": [{"attribute": 0, "value": 1}], **changes}]


WRONG_SCENES = [
    {"node": {}}, {"nodes": []}, {"nodes": {"a|b": {}}}, {"nodes": {"n": 3}}, {"nodes": {"n": {"v.w": None}}},
    {"nodes": {}, "connections": [["a.b"]]}, {"nodes": {}, "time": "now"}, {"nodes": {}, "selected": "n"},
    scene(None), scene([1]), scene([1, 2, 3, 4, 5]), scene({}), scene({"angle": 1, "time": 1}), scene({"angle": "x"}),
    scene({"angle": 1, "unit": "film"}), scene({"angle": 1, "type": 567}), scene({"number": 1, "unit": "film"}),
    scene({"multi": {"x": 1}}), scene({"float3": [1, 2]}), scene({"matrix": [1]}), scene({"mesh": {"id": -1}}),
    scene({"mesh": {"points": [[0, 0, 0]], "knots": []}}), scene({"curve": {"degree": 0}}), scene({"message": 1}),
    scene({"compound": {"a.b": 1}}), scene({"components": ["vtx[0:7]x"]}), scene({"points": [[1, 2]]}),
]
WRONG_MANIFESTS = [
    3, [3], [{"method": "m"}], record(method=3), record(arguments=[{"value": 1}]), record(arguments=[{"attribute": 0}]),
    record(arguments=[{"attribute": -1, "value": 1}]), record(results=[{"attribute": 0, "indices": [-1], "value": 1}]),
    record(results=[{"attribute": 0, "value": {"id": "x"}}]), record(results=[{"attribute": 0, "value": ["x"]}]),
]


def main(docs, examples):
    faults = []

    def check(schema, files, wrong):
        validator = jsonschema.Draft202012Validator(json.loads((docs / schema).read_text()))
        validator.check_schema(validator.schema)
        assert files
        for name, content in files:
            faults.extend(f"{schema}: {name}: {error.message}" for error in validator.iter_errors(content))
        faults.extend(f"{schema} takes {json.dumps(one)}" for one in wrong if validator.is_valid(one))

    in_document = re.findall(r"```json\n(.*?)```", (docs / "scene-file.md").read_text(), re.S)
    scenes = [(f"example {i} of the document", json.loads(text)) for i, text in enumerate(in_document)]
    scenes += [(str(path), json.loads(path.read_text())) for path in examples.glob("*/scene*.json")]
    manifests = [(str(path), json.loads(path.read_text()))
                 for name in ("manifest.json", "faults.json") for path in examples.glob(f"*/{name}")]
    manifests += [("example of the document", json.loads(text)) for text in
                  re.findall(r"```json\n(\[.*?)```", (docs / "manifest-format.md").read_text(), re.S)]
    check("scene-file.schema.json", scenes, WRONG_SCENES)
    check("manifest.schema.json", manifests, WRONG_MANIFESTS)
    print("\n".join(faults) or f"{len(scenes)} scenes, {len(manifests)} manifests")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])))
