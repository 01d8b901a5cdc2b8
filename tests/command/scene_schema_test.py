#!/usr/bin/python3
"""The JSON schema of scene files takes the page's example, which has every key, and the one that
Blender wrote, and refuses what the reader refuses, as far as a schema can.

Without the module jsonschema the keys alone are compared, and the exit status is 77."""
import copy
import json
import pathlib
import re
import sys
import unittest

try:
    import jsonschema
except ImportError:
    jsonschema = None

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCHEMA = json.loads((ROOT / "docs/scene-file.schema.json").read_text(encoding="utf-8"))
PAGE = (ROOT / "docs/scene-file.md").read_text(encoding="utf-8")
EXAMPLE = json.loads(re.search(r"```json\n(.*?)```", PAGE, re.DOTALL)[1])

# What is changed in the page's example: the way to a value, and the value.
BREAKS = {
    "another version": (["veltrane"], 2),
    "an unknown key": (["node"], []),
    "an unknown key of a node": (["nodes", 0, "objectId"], 1),
    "a node without a name": (["nodes", 0], {}),
    "an empty name": (["nodes", 0, "name"], ""),
    "a control character in a name": (["nodes", 0, "name"], "a\nb"),
    "a number out of range": (["nodes", 0, "objectID"], 65536),
    "an id out of range": (["nodes", 0, "id"], 65534),
    "a number that isn't whole": (["nodes", 0, "objectID"], 1.5),
    "another type of node": (["nodes", 0, "type"], "lamp"),
    "a number for a switch": (["nodes", 0, "hidden"], 1),
    "a transform of three rows": (["nodes", 0, "transform"], [[1, 0, 0, 0]] * 3),
    "a perspective transform": (["nodes", 0, "transform"], [[1, 0, 0, 0]] * 4),
    "a view of what is no camera": (["nodes", 1, "view"], {"fov": 30}),
    "a view of a helper": (["nodes", 4], {"name": "Table", "type": "helper", "view": {}}),
    "a field of view of 0": (["nodes", 0, "view", "fov"], 0),
    "a field of view of 180": (["nodes", 0, "view", "fov"], 180),
    "a width of 0": (["nodes", 6, "view", "width"], 0),
    "a negative range": (["nodes", 0, "view", "near"], -1),
    "a perspective that is parallel": (["nodes", 0, "view", "width"], 3),
    "an unknown key of a view": (["nodes", 0, "view", "lens"], 35),
    "a node twice in a layer": (["layers", 0, "nodes"], ["Table", "Table"]),
    "a set without nodes": (["selectionSets", 0], {"name": "a"}),
    "another colour of a matte": (["elements", 2, "multiMatte", "rot"], {}),
    "a frame rate of 0": (["render", "frameRate"], 0),
    "a parameter without a value": (["effect", "parameters", "bitDepth"], None),
    "an element's setting that is none": (["effect", "elements", "Reflections"], True),
}


def keys_of(value):
    if isinstance(value, dict):
        return set(value).union(*map(keys_of, value.values()))
    return set().union(*map(keys_of, value)) if isinstance(value, list) else set()


def keys_of_schema(schema):
    properties = schema.get("properties", {})
    inner = [*properties.values(), *schema.get("definitions", {}).values()]
    return set(properties).union(*map(keys_of_schema, inner))


class TheSchema(unittest.TestCase):
    def test_has_no_key_that_the_example_lacks(self):
        self.assertEqual(keys_of_schema(SCHEMA) - keys_of(EXAMPLE), set())

    def test_has_every_key_of_the_page(self):
        rows = set(re.findall(r"^\| `(\w+)` \|", PAGE, re.MULTILINE))
        self.assertEqual(keys_of_schema(SCHEMA) - {"red", "green", "blue"}, rows)

    @unittest.skipUnless(jsonschema, "no module jsonschema")
    def test_takes_the_examples(self):
        jsonschema.Draft7Validator.check_schema(SCHEMA)
        jsonschema.validate(EXAMPLE, SCHEMA, cls=jsonschema.Draft7Validator)
        written = (ROOT / "examples/still.scene.json").read_text(encoding="utf-8")
        jsonschema.validate(json.loads(written), SCHEMA, cls=jsonschema.Draft7Validator)

    @unittest.skipUnless(jsonschema, "no module jsonschema")
    def test_refuses_what_is_broken(self):
        for title, (way, value) in BREAKS.items():
            broken = copy.deepcopy(EXAMPLE)
            target = broken
            for step in way[:-1]:
                target = target[step]
            target[way[-1]] = value
            with self.subTest(title), self.assertRaises(jsonschema.ValidationError):
                jsonschema.validate(broken, SCHEMA, cls=jsonschema.Draft7Validator)


if __name__ == "__main__":
    result = unittest.main(exit=False).result
    if not result.wasSuccessful():
        sys.exit(1)
    sys.exit(0 if jsonschema else 77)
