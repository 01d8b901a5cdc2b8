#!/usr/bin/python3
"""The JSON schema of scene files takes the page's examples, which have every key, those of the tests
and the one that Blender wrote, and refuses what the reader refuses, as far as a schema can.

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
# What people write, and what the application saves.
EXAMPLE, SAVED = map(json.loads, re.findall(r"```json\n(.*?)```", PAGE, re.DOTALL))

# What is changed in the page's first example: the way to a value, and the value.
BREAKS = {
    "another version": (["veltrane"], 3),
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
    "a handle in version 1": (["nodes", 0, "handle"], 1),
    "a node named by a handle in version 1": (["nodes", 2, "parent"], 1),
    "a text of units in version 1": (["nodes", 0, "name"], {"utf16": "0041"}),
    "a layer's parent in version 1": (["layers", 1, "parent"], "Furniture"),
    "a draft element in version 1": (["elements", 0, "draft"], True),
    "a class of numbers in version 1": (["elements", 0, "class"], [1, 2]),
    "a size in version 1": (["render", "width"], 100),
    "objects in version 1": (["objects"], []),
    "a set without nodes": (["selectionSets", 0], {"name": "a"}),
    "another colour of a matte": (["elements", 2, "multiMatte", "rot"], {}),
    "a frame rate of 0": (["render", "frameRate"], 0),
    "a parameter without a value": (["effect", "parameters", "bitDepth"], None),
    "an element's setting that is none": (["effect", "elements", "Reflections"], True),
}

# The same for the second.
BREAKS_OF_SAVED = {
    "another version": (["veltrane"], 3),
    "a handle of 0": (["nodes", 0, "handle"], 0),
    "a handle beyond 32 bits": (["nodes", 0, "handle"], 4294967296),
    "half a unit": (["selectionSets", 0, "name", "utf16"], "d8"),
    "an element with a handle and no class": (["elements", 0], {"handle": 6, "name": "a"}),
    "a class of three numbers": (["elements", 0, "class"], [1, 2, 3]),
    "half a byte": (["layers", 1, "appData", 0, "data"], "000"),
    "a letter that is no digit": (["layers", 1, "appData", 0, "data"], "0g"),
    "a width of 0": (["render", "width"], 0),
    "an object without a class": (["objects", 0], {"handle": 9, "superClass": 512}),
    "a chunk without an id": (["objects", 1, "chunks", 0], {}),
    "a reference that is a name": (["objects", 0, "references", 1], "Reflections"),
    "a block without a version": (["objects", 0, "references", 0, "block"],
                                  {"id": 0, "parameters": []}),
    "another type of parameter":
        (["objects", 0, "references", 0, "block", "parameters", 0, "type"], "double"),
    "a value and values":
        (["objects", 0, "references", 0, "block", "parameters", 0, "values"], []),
    "the same effect twice": (["effects"], [10, 10]),
}


def keys_of(value):
    if isinstance(value, dict):
        return set(value).union(*map(keys_of, value.values()))
    return set().union(*map(keys_of, value)) if isinstance(value, list) else set()


def keys_of_schema(schema):
    if isinstance(schema, bool):
        return set()
    properties = schema.get("properties", {})
    inner = [*properties.values(), *schema.get("definitions", {}).values()]
    return set(properties).union(*map(keys_of_schema, inner))


class TheSchema(unittest.TestCase):
    def test_has_no_key_that_the_examples_lack(self):
        self.assertEqual(keys_of_schema(SCHEMA) - keys_of([EXAMPLE, SAVED]), set())

    def test_has_every_key_of_the_page(self):
        rows = set(re.findall(r"^\| `(\w+)` \|", PAGE, re.MULTILINE))
        self.assertEqual(keys_of_schema(SCHEMA) - {"red", "green", "blue", "utf16", "block"}, rows)

    @unittest.skipUnless(jsonschema, "no module jsonschema")
    def test_takes_the_examples(self):
        jsonschema.Draft7Validator.check_schema(SCHEMA)
        jsonschema.validate(EXAMPLE, SCHEMA, cls=jsonschema.Draft7Validator)
        jsonschema.validate(SAVED, SCHEMA, cls=jsonschema.Draft7Validator)
        for path in (ROOT / "tests/command/files").glob("*.json"):
            with self.subTest(path.name):
                jsonschema.validate(json.loads(path.read_text(encoding="utf-8")), SCHEMA,
                                    cls=jsonschema.Draft7Validator)
        written = (ROOT / "examples/still.scene.json").read_text(encoding="utf-8")
        jsonschema.validate(json.loads(written), SCHEMA, cls=jsonschema.Draft7Validator)

    @unittest.skipUnless(jsonschema, "no module jsonschema")
    def test_refuses_what_is_broken(self):
        for example, breaks in ((EXAMPLE, BREAKS), (SAVED, BREAKS_OF_SAVED)):
            for title, (way, value) in breaks.items():
                broken = copy.deepcopy(example)
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
