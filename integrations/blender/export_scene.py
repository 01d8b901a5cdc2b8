"""Writes the veltrane scene file of the open Blender scene: what its renders don't tell.

As an add-on: Edit > Preferences > Add-ons > Install, then File > Export > veltrane Scene (.json).
From a shell:

    blender -b shot.blend -P export_scene.py -- --out shot.scene.json

docs/scene-file.md in veltrane's sources describes the file.
"""
import argparse
import json
import math
import os
import sys

import bpy
from bpy.props import StringProperty
from bpy_extras.io_utils import ExportHelper

bl_info = {
    "name": "veltrane scene",
    "description": "Writes objects, collections and numbers for layered documents",
    "version": (1, 1, 0),
    "blender": (3, 0, 0),
    "location": "File > Export > veltrane Scene (.json)",
    "category": "Import-Export",
}

VERSION = 1
KINDS = {"CAMERA": "camera", "LIGHT": "light", "EMPTY": "helper"}
LARGEST_OBJECT_ID = 65535


def is_linked(each):
    """The object is another file's."""
    return getattr(each, "library") is not None


def unique_objects(scene):
    """The scene's objects by name, in the order of their names. Of a linked object and one of the
    file's own that share a name, the file's own: pixels can't tell them apart either."""
    found = {}
    for each in scene.objects:
        known = found.get(each.name)
        if known is None or (is_linked(known) and not is_linked(each)):
            found[each.name] = each
    if len(found) < len(scene.objects):
        print(f"veltrane: {len(scene.objects) - len(found)} objects share the name of another and "
              "are left out", file=sys.stderr)
    return [found[name] for name in sorted(found)]


def parent_of(each, objects):
    """None for a parent that isn't in the file."""
    return each.parent if each.parent in objects else None


def group_heads(objects):
    """Empties that hold other objects together, as groups do."""
    parents = {parent_of(each, objects) for each in objects}
    return {each for each in objects if each.type == "EMPTY" and each in parents}


def is_group_member(each, objects, heads):
    """A group's head stands somewhere above it."""
    while each := parent_of(each, objects):
        if each in heads:
            return True
    return False


def properties_text(each):
    """Custom properties, a line each: "name = value"."""
    lines = []
    for name in sorted(each.keys()):
        value = each[name]
        # Panels and add-ons keep groups of their own there.
        if not isinstance(value, (bool, int, float, str)) or name.startswith("_"):
            continue
        if isinstance(value, bool):
            value = "true" if value else "false"
        lines.append(" ".join(f"{name} = {value}".replace("\0", " ").split("\n")))
    return "\n".join(lines)


def transform_rows(matrix):
    """Four rows of four numbers; None when one isn't finite."""
    # Nine digits are all that 32 bits hold; adding 0 takes the sign from a zero.
    rows = [[float(f"{value:.9g}") + 0.0 for value in row] for row in matrix]
    if not all(math.isfinite(value) for row in rows for value in row):
        return None
    rows[3] = [0.0, 0.0, 0.0, 1.0]
    return rows


def rounded(value):
    """The digits that Blender's floats are sure of."""
    return float(f"{value:.7g}")


def mist_range(scene, view_layer):
    """Where the surroundings begin and end; empty without mist."""
    if scene.world is None:
        return {}
    mist = scene.world.mist_settings
    if not mist.use_mist and not view_layer.use_pass_mist:
        return {}
    return {"near": rounded(mist.start), "far": rounded(mist.start + mist.depth)}


def view_of(camera, scene, view_layer):
    """What the frame shows through the camera, an object; None for a panorama."""
    if camera.data.type not in {"PERSP", "ORTHO"}:
        return None
    # The frame's corners before the camera, as Blender fits the sensor to the render's size.
    corners = camera.data.view_frame(scene=scene)
    across = [corner.x for corner in corners]
    width = max(across) - min(across)
    render = scene.render
    if render.use_border and render.use_crop_to_border:
        width *= render.border_max_x - render.border_min_x
    if camera.data.type == "ORTHO":
        view = {"width": rounded(width)}
    else:
        half = width / 2 / abs(corners[0].z)
        view = {"fov": rounded(math.degrees(2 * math.atan(half)))}
    if not all(value > 0 for value in view.values()):
        return None
    return {**view, **mist_range(scene, view_layer)}


def node_of(each, objects, heads):
    node = {"name": each.name}
    if each.type in KINDS:
        node["type"] = KINDS[each.type]
    if each.pass_index:
        node["objectID"] = min(each.pass_index, LARGEST_OBJECT_ID)
    if each.hide_render:
        node["hidden"] = True
    parent = parent_of(each, objects)
    if parent:
        node["parent"] = parent.name
    if each in heads:
        node["groupHead"] = True
    if is_group_member(each, objects, heads):
        node["groupMember"] = True
    text = properties_text(each)
    if text:
        node["properties"] = text
    rows = transform_rows(each.matrix_world)
    if rows:
        node["transform"] = rows
    return node


def nodes_of(listed, heads, scene, view_layer):
    """Of cameras, with what the frame shows through them."""
    objects = set(listed)
    nodes = []
    for each in listed:
        node = node_of(each, objects, heads)
        view = view_of(each, scene, view_layer) if each.type == "CAMERA" else None
        if view:
            node["view"] = view
        nodes.append(node)
    return nodes


def layer_of(layer_collection, objects, taken):
    """The collection with those in it, as a view layer shows them. An object is in one scene layer
    only: in the first of its collections."""
    collection = layer_collection.collection
    layer = {"name": collection.name}
    if collection.hide_render or layer_collection.exclude:
        layer["hidden"] = True
    members = []
    for each in collection.objects:
        if each in objects and each not in taken:
            taken.add(each)
            members.append(each.name)
    if members:
        layer["nodes"] = sorted(members)
    children = [layer_of(child, objects, taken) for child in layer_collection.children]
    if children:
        layer["children"] = children
    return layer


def unique_layers(layers, known):
    """A collection that is linked in several places is a layer in the first of them; so are
    collections of one name."""
    kept = []
    for layer in layers:
        children = layer.pop("children", [])
        first = known.setdefault(layer["name"], layer)
        if first is layer:
            kept.append(layer)
        elif "nodes" in layer:
            first["nodes"] = sorted(first.get("nodes", []) + layer["nodes"])
        children = unique_layers(children, known)
        if children:
            first["children"] = first.get("children", []) + children
    return kept


def layers_of(view_layer, objects):
    """The collections, and beside them a layer of what is in none."""
    root = layer_of(view_layer.layer_collection, objects, set())
    layers = root.pop("children", [])
    if "nodes" in root:
        layers.insert(0, root)
    return unique_layers(layers, {})


def frame_rate(scene):
    return min(max(round(scene.render.fps / scene.render.fps_base), 1), 4800)


def describe(scene, view_layer):
    """The scene file's content."""
    view_layer.update()
    listed = unique_objects(scene)
    objects = set(listed)
    heads = group_heads(objects)
    render = {"frameRate": frame_rate(scene)}
    if scene.camera in objects and scene.camera.type == "CAMERA":
        render["camera"] = scene.camera.name
    return {
        "veltrane": VERSION,
        "nodes": nodes_of(listed, heads, scene, view_layer),
        "layers": layers_of(view_layer, objects),
        "render": render,
    }


def to_text(value, indent=0):
    """JSON with a line a member; lists of names or numbers stand on one line."""
    pad = "  " * (indent + 1)
    if isinstance(value, dict) and value:
        lines = [f"{pad}{json.dumps(key, ensure_ascii=False)}: {to_text(member, indent + 1)}"
                 for key, member in value.items()]
        return "{\n" + ",\n".join(lines) + "\n" + "  " * indent + "}"
    if isinstance(value, list) and any(isinstance(each, (dict, list)) for each in value):
        lines = [pad + to_text(each, indent + 1) for each in value]
        return "[\n" + ",\n".join(lines) + "\n" + "  " * indent + "]"
    return json.dumps(value, ensure_ascii=False, allow_nan=False)


def export(path, scene, view_layer):
    """Writes the whole file or leaves the old one."""
    text = to_text(describe(scene, view_layer)) + "\n"
    unfinished = path + ".part"
    with open(unfinished, "w", encoding="utf-8", newline="\n") as file:
        file.write(text)
    os.replace(unfinished, path)


class ExportVeltraneScene(bpy.types.Operator, ExportHelper):
    """Write objects, collections and numbers for veltrane"""

    bl_idname = "export_scene.veltrane"
    bl_label = "Export veltrane Scene"
    filename_ext = ".json"
    filter_glob: StringProperty(default="*.json", options={"HIDDEN"})

    def execute(self, context):
        try:
            export(self.filepath, context.scene, context.view_layer)
        except (OSError, ValueError) as fault:
            self.report({"ERROR"}, f"Not exported: {fault}")
            return {"CANCELLED"}
        self.report({"INFO"}, f"Exported {self.filepath}")
        return {"FINISHED"}


def menu_entry(self, _context):
    self.layout.operator(ExportVeltraneScene.bl_idname, text="veltrane Scene (.json)")


def register():
    bpy.utils.register_class(ExportVeltraneScene)
    bpy.types.TOPBAR_MT_file_export.append(menu_entry)


def unregister():
    bpy.types.TOPBAR_MT_file_export.remove(menu_entry)
    bpy.utils.unregister_class(ExportVeltraneScene)


def main(arguments):
    parser = argparse.ArgumentParser(
        prog="blender -b FILE.blend -P export_scene.py --",
        description="Writes the veltrane scene file of the blend file's scene.")
    parser.add_argument("--out", required=True, metavar="FILE.json")
    parser.add_argument("--scene", help="name of the scene; the file's active one by default")
    options = parser.parse_args(arguments)
    scene = bpy.context.scene
    if options.scene is not None:
        scene = bpy.data.scenes.get(options.scene)
        if scene is None:
            parser.error(f"there is no scene {options.scene!r}; there are "
                         + ", ".join(sorted(each.name for each in bpy.data.scenes)))
    view_layer = bpy.context.view_layer if scene == bpy.context.scene else scene.view_layers[0]
    try:
        export(options.out, scene, view_layer)
    except (OSError, ValueError) as fault:
        print(f"veltrane: error: {options.out}: {fault}", file=sys.stderr)
        # Blender would go on, and end with success.
        sys.stderr.flush()
        os._exit(1)


# An add-on's module has another name. In the text editor, the menu entry is what is wanted.
if __name__ == "__main__":
    if "--" in sys.argv or bpy.app.background:
        main(sys.argv[sys.argv.index("--") + 1:] if "--" in sys.argv else [])
    else:
        register()
