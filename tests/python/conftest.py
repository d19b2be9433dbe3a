"""What the tests of the package share."""
import json
import os
import pathlib
import subprocess
import sys

from zent import nodes

HERE = pathlib.Path(__file__).parent
ROOT = HERE.parent.parent
ARM = ROOT / "examples/arm"
RECORDS = json.loads((HERE / "records.json").read_text())
sys.modules.setdefault("conftest", sys.modules[__name__])


def listed_methods():
    text = subprocess.run([os.environ["ZENTCHECK"], "--list-methods", "--json"], stdout=subprocess.PIPE, check=True)
    return json.loads(text.stdout)["methods"]


METHODS = {method["name"]: method for method in listed_methods()}


def arguments_of(record):
    """The keyword arguments that a record's entries come to."""
    method, given = METHODS[record["method"]], {}
    for number, (name, info) in enumerate(zip(nodes.ARGUMENTS[record["method"]], method["arguments"])):
        entries = [entry for entry in record["arguments"] if entry["attribute"] == number]
        values = [entry["value"] for entry in entries]
        if "{}{}" in info["type"]:
            given[name] = {tuple(entry["indices"][:2]): entry["value"] for entry in entries}
        elif "{}" in info["type"]:
            given[name] = {entry["indices"][0]: entry["value"] for entry in entries}
        elif "[]" in info["type"]:
            given[name] = values
        elif info["type"] in ("Int", "Bool") or name.startswith("unused"):
            given[name] = int(values[0])
        else:
            given[name] = values[0]
    return given
