# -*- coding: utf-8 -*-
"""The scene of the example renders: a still life that has something of everything.

Glass and a transparent veil, a shadow catcher, glow, depth of field, a hidden object, nested
collections, and names with blanks, slashes and letters beyond ASCII.

Run (Blender 3.4, Cycles, CPU):
  blender -b --factory-startup -P scene.py -- --out DIR/still.exr --width 640 --height 360 \
          --samples 32 --depth 16 --codec ZIP [--frames 1-5] [--json DIR/scene.json]
          [--two-layers] [--stereo] [--no-catcher] [--catcher-in-combined] [--no-dof] [--crypto-levels 6]
          [--no-accurate] [--no-lightgroups] [--minimal] [--save-blend FILE] [--png]
          [--region x0,y0,x1,y1] [--composite FILEBASE] [--no-render]

--out with --frames A-B (A != B): "####" in the name is the frame number.
No external assets are used.  Everything is deterministic (fixed seed).
"""
import argparse
import json
import math
import os
import sys
import time

import bpy
from mathutils import Matrix, Vector

argv = sys.argv[sys.argv.index("--") + 1:] if "--" in sys.argv else []
ap = argparse.ArgumentParser(prog="scene.py")
ap.add_argument("--out", required=True)
ap.add_argument("--json", default="")
ap.add_argument("--width", type=int, default=640)
ap.add_argument("--height", type=int, default=360)
ap.add_argument("--samples", type=int, default=32)
ap.add_argument("--frames", default="1")
ap.add_argument("--depth", choices=["16", "32"], default="16")
ap.add_argument("--codec", default="ZIP")
ap.add_argument("--crypto-levels", type=int, default=6)
ap.add_argument("--no-accurate", action="store_true")
ap.add_argument("--two-layers", action="store_true")
ap.add_argument("--stereo", action="store_true")
ap.add_argument("--no-catcher", action="store_true")
ap.add_argument("--catcher-in-combined", action="store_true",
                help="no Shadow Catcher pass: the shadow then lies in Combined, as alpha")
ap.add_argument("--no-dof", action="store_true")
ap.add_argument("--no-lightgroups", action="store_true")
ap.add_argument("--minimal", action="store_true", help="Combined, Z and IndexOB only")
ap.add_argument("--save-blend", default="")
ap.add_argument("--png", action="store_true", help="also write a plain RGBA 8-bit and 16-bit PNG")
ap.add_argument("--region", default="", help="x0,y0,x1,y1 fractions: render border without crop")
ap.add_argument("--composite", default="",
                help="FILE base: also run the compositor (adds a Composite.* layer) and a multilayer File Output node")
ap.add_argument("--no-render", action="store_true")
A = ap.parse_args(argv)
f0, _, f1 = A.frames.partition("-")
F0, F1 = int(f0), int(f1 or f0)

# ---------------------------------------------------------------- empty file
bpy.ops.wm.read_factory_settings(use_empty=True)
scene = bpy.context.scene
scene.name = "Still"
scene.render.engine = "CYCLES"
scene.unit_settings.system = "METRIC"


# ---------------------------------------------------------------- collections
def collection(name, parent):
    c = bpy.data.collections.new(name)
    parent.children.link(c)
    return c


root = scene.collection
stage = collection("Stage", root)
still = collection("Still life", root)
glassware = collection("Glassware", still)      # nested


# ---------------------------------------------------------------- materials
def material(name, index, color, rough=0.5, metal=0.0, aov=None, **kw):
    m = bpy.data.materials.new(name)
    m.use_nodes = True
    m.pass_index = index
    nt = m.node_tree
    nt.nodes.clear()
    out = nt.nodes.new("ShaderNodeOutputMaterial")
    kind = kw.get("kind", "principled")
    if kind == "principled":
        s = nt.nodes.new("ShaderNodeBsdfPrincipled")
        s.inputs["Base Color"].default_value = (*color, 1)
        s.inputs["Roughness"].default_value = rough
        s.inputs["Metallic"].default_value = metal
        s.inputs["Clearcoat"].default_value = kw.get("coat", 0.0)
        if kw.get("noise"):
            n = nt.nodes.new("ShaderNodeTexNoise")
            n.inputs["Scale"].default_value = kw["noise"]
            n.inputs["Detail"].default_value = 6
            r = nt.nodes.new("ShaderNodeValToRGB")
            r.color_ramp.elements[0].color = (*[c * 0.55 for c in color], 1)
            r.color_ramp.elements[0].position = 0.35
            r.color_ramp.elements[1].color = (*[min(1, c * 1.3) for c in color], 1)
            r.color_ramp.elements[1].position = 0.68
            nt.links.new(n.outputs["Fac"], r.inputs["Fac"])
            nt.links.new(r.outputs["Color"], s.inputs["Base Color"])
            b = nt.nodes.new("ShaderNodeBump")
            b.inputs["Strength"].default_value = 0.12
            nt.links.new(n.outputs["Fac"], b.inputs["Height"])
            nt.links.new(b.outputs["Normal"], s.inputs["Normal"])
        surf = s.outputs["BSDF"]
    elif kind == "glass":
        s = nt.nodes.new("ShaderNodeBsdfGlass")
        s.inputs["Color"].default_value = (*color, 1)
        s.inputs["Roughness"].default_value = rough
        s.inputs["IOR"].default_value = 1.45
        surf = s.outputs["BSDF"]
    elif kind == "emission":
        s = nt.nodes.new("ShaderNodeEmission")
        s.inputs["Color"].default_value = (*color, 1)
        s.inputs["Strength"].default_value = kw.get("strength", 6.0)
        surf = s.outputs["Emission"]
    elif kind == "veil":
        d = nt.nodes.new("ShaderNodeBsdfTranslucent")
        d.inputs["Color"].default_value = (*color, 1)
        d2 = nt.nodes.new("ShaderNodeBsdfDiffuse")
        d2.inputs["Color"].default_value = (*color, 1)
        a = nt.nodes.new("ShaderNodeAddShader")
        nt.links.new(d.outputs[0], a.inputs[0])
        nt.links.new(d2.outputs[0], a.inputs[1])
        t = nt.nodes.new("ShaderNodeBsdfTransparent")
        mx = nt.nodes.new("ShaderNodeMixShader")
        mx.inputs[0].default_value = kw.get("opacity", 0.5)
        nt.links.new(t.outputs[0], mx.inputs[1])
        nt.links.new(a.outputs[0], mx.inputs[2])
        surf = mx.outputs[0]
        m.blend_method = "BLEND"
    nt.links.new(surf, out.inputs["Surface"])
    # custom AOVs: one colour, one value
    for nm, typ in (("albedo_flat", "Color"), ("gloss_id", "Value")):
        o = nt.nodes.new("ShaderNodeOutputAOV")
        o.name = nm                      # Blender 3.4: the node name is the AOV name
        if typ == "Color":
            o.inputs["Color"].default_value = (*color, 1)
        else:
            o.inputs["Value"].default_value = 1.0 - rough
    return m


M_CONC = material("Concrete", 1, (0.52, 0.49, 0.45), rough=0.75, noise=3.0)
M_RED = material("Red lacquer", 2, (0.62, 0.035, 0.03), rough=0.18, coat=1.0)
M_GLASS = material("Glass", 3, (0.86, 0.97, 0.95), rough=0.0, kind="glass")
M_GLOW = material("Glow", 0, (1.0, 0.62, 0.24), kind="emission", strength=9.0)
M_GOLD = material("Brushed gold", 0, (0.95, 0.62, 0.22), rough=0.27, metal=1.0)
M_IVORY = material("Ivory", 0, (0.83, 0.77, 0.62), rough=0.4)
M_RUB = material("Blue rubber", 2, (0.04, 0.16, 0.55), rough=0.45)   # shares index 2
M_VEIL = material("Veil 50%", 0, (0.55, 0.75, 0.38), kind="veil", opacity=0.5)


# ---------------------------------------------------------------- objects
def move_to(obj, coll):
    for c in list(obj.users_collection):
        c.objects.unlink(obj)
    coll.objects.link(obj)


def prim(op, name, coll, index, mats, loc=(0, 0, 0), rot=(0, 0, 0), smooth=True, **kw):
    getattr(bpy.ops.mesh, op)(location=loc, rotation=[math.radians(a) for a in rot], **kw)
    o = bpy.context.object
    o.name = name
    o.data.name = name + " mesh"
    o.pass_index = index
    for m in mats:
        o.data.materials.append(m)
    for p in o.data.polygons:
        p.use_smooth = smooth
    move_to(o, coll)
    return o


def bevel(o, w, seg=4):
    b = o.modifiers.new("Bevel", "BEVEL")
    b.width = w
    b.segments = seg
    b.limit_method = "ANGLE"
    o.data.use_auto_smooth = True
    o.data.auto_smooth_angle = math.radians(35)


def subsurf(o, n=2):
    s = o.modifiers.new("Subsurf", "SUBSURF")
    s.levels = s.render_levels = n


# table top: a thick disc, so that the film stays transparent around it
ground = prim("primitive_cylinder_add", "Ground", stage, 1, [M_CONC], loc=(0, 0, -0.1),
              radius=2.75, depth=0.2, vertices=160)
bevel(ground, 0.045)

catcher = None
if not A.no_catcher:
    catcher = prim("primitive_plane_add", "Floor catcher", stage, 0, [M_CONC],
                   loc=(0, 0, -0.201), size=8.4)   # ends inside the picture: the rest is truly empty
    catcher.is_shadow_catcher = True

crate = prim("primitive_cube_add", "Hidden crate", stage, 4, [M_RED], loc=(0.2, -0.9, 0.5), size=1.0,
             smooth=False)
crate.hide_render = True

cube = prim("primitive_cube_add", "W\u00fcrfel", still, 3, [M_RED, M_IVORY], loc=(-1.12, 0.22, 0.48),
            rot=(0, 0, 27), size=0.96)
for i, p in enumerate(cube.data.polygons):
    p.material_index = 1 if p.normal.z > 0.9 else 0      # ivory top: two materials on one object
bevel(cube, 0.05)

# a pot with a lid: lathe
def lathe(name, profile, coll, index, mats, loc, steps=96):
    verts, faces = [], []
    n = len(profile)
    for s in range(steps):
        a = 2 * math.pi * s / steps
        for r, z in profile:
            verts.append((r * math.cos(a), r * math.sin(a), z))
    for s in range(steps):
        t = (s + 1) % steps
        for k in range(n - 1):
            faces.append((s * n + k, t * n + k, t * n + k + 1, s * n + k + 1))
    me = bpy.data.meshes.new(name + " mesh")
    me.from_pydata(verts, [], faces)
    uv = me.uv_layers.new(name="UVMap")
    for poly in me.polygons:
        for li in poly.loop_indices:
            vi = me.loops[li].vertex_index
            uv.data[li].uv = ((vi // n) / steps, (vi % n) / (n - 1))
    for m in mats:
        me.materials.append(m)
    for p in me.polygons:
        p.use_smooth = True
    o = bpy.data.objects.new(name, me)
    o.pass_index = index
    o.location = loc
    coll.objects.link(o)
    me.use_auto_smooth = True
    me.auto_smooth_angle = math.radians(40)
    return o


pot = lathe("Pot/Lid", [(0.001, 0.0), (0.30, 0.0), (0.34, 0.02), (0.50, 0.22), (0.56, 0.44), (0.50, 0.66),
                        (0.38, 0.78), (0.36, 0.82), (0.41, 0.86), (0.40, 0.90), (0.24, 0.99), (0.08, 1.03),
                        (0.07, 1.08), (0.12, 1.13), (0.10, 1.19), (0.001, 1.21)],
            still, 5, [M_IVORY], (0.22, 0.95, 0.0))
ring = prim("primitive_torus_add", "Ring", still, 5, [M_GOLD], loc=(0.22, 0.95, 0.44),
            major_radius=0.575, minor_radius=0.045, major_segments=96, minor_segments=24)
bpy.context.view_layer.update()
ring.parent = pot
ring.matrix_parent_inverse = pot.matrix_world.inverted()

bpy.ops.mesh.primitive_monkey_add(size=0.95, location=(1.33, 0.30, 0.44),
                                  rotation=(math.radians(-20), 0, math.radians(34)))
suz = bpy.context.object
suz.name = "Suzanne"
suz.data.name = "Suzanne mesh"
suz.data.materials.append(M_GOLD)
for p in suz.data.polygons:
    p.use_smooth = True
subsurf(suz)
move_to(suz, still)                                  # pass_index stays 0: not numbered by the user

veil = prim("primitive_grid_add", "Veil", still, 0, [M_VEIL], loc=(-0.62, 1.45, 0.76),
            rot=(90, 0, 14), x_subdivisions=96, y_subdivisions=4, size=1.0)
veil.scale = (1.5, 1.5, 1.0)
for v in veil.data.vertices:
    v.co.z = 0.055 * math.sin(v.co.x * 26.0)

ball = prim("primitive_uv_sphere_add", "Kugel 07", still, 8, [M_RUB], loc=(-0.42, -1.12, 0.30), radius=0.30,
            segments=64, ring_count=32)

gsph = prim("primitive_uv_sphere_add", "Glass sphere", glassware, 6, [M_GLASS], loc=(0.52, -0.62, 0.44),
            radius=0.44, segments=96, ring_count=48)
lamp = prim("primitive_uv_sphere_add", "Lamp bulb", glassware, 7, [M_GLOW], loc=(-0.20, 0.02, 0.17),
            radius=0.17, segments=48, ring_count=24)


# ---------------------------------------------------------------- helpers
def empty(name, loc, coll, parent=None, display="PLAIN_AXES"):
    e = bpy.data.objects.new(name, None)
    e.empty_display_type = display
    e.location = loc
    e.parent = parent
    coll.objects.link(e)
    return e


h1 = empty("Point helper", (0.52, -0.62, 0.95), root)
h2 = empty("Label anchor", (0, 0, 1.35), still, parent=pot, display="SPHERE")


# ---------------------------------------------------------------- lights, world
def look(obj, target, roll=0.0):
    d = Vector(target) - obj.location
    obj.rotation_mode = "QUATERNION"
    q = d.to_track_quat("-Z", "Y")
    obj.rotation_quaternion = (q.to_matrix() @ Matrix.Rotation(math.radians(roll), 3, "Z")).to_quaternion()


def area(name, loc, target, size, power, color):
    li = bpy.data.lights.new(name, "AREA")
    li.size = size
    li.energy = power
    li.color = color
    o = bpy.data.objects.new(name, li)
    o.location = loc
    root.objects.link(o)
    look(o, target)
    return o


key = area("Key light", (-3.6, -2.2, 4.6), (0, 0, 0.2), 1.6, 420, (1.0, 0.93, 0.84))
fill = area("Fill light", (4.4, -1.6, 2.6), (0, 0, 0.4), 2.6, 110, (0.72, 0.84, 1.0))
rim = area("Rim light", (1.2, 4.4, 3.2), (0, 0, 0.6), 1.8, 210, (1.0, 1.0, 1.0))

w = bpy.data.worlds.new("World")
scene.world = w
w.use_nodes = True
bg = w.node_tree.nodes["Background"]
sky = w.node_tree.nodes.new("ShaderNodeTexGradient")
tc = w.node_tree.nodes.new("ShaderNodeTexCoord")
mp = w.node_tree.nodes.new("ShaderNodeMapping")
mp.inputs["Rotation"].default_value = (0, math.radians(90), 0)
rmp = w.node_tree.nodes.new("ShaderNodeValToRGB")
rmp.color_ramp.elements[0].color = (0.16, 0.20, 0.28, 1)
rmp.color_ramp.elements[1].color = (0.75, 0.80, 0.90, 1)
lk = w.node_tree.links
lk.new(tc.outputs["Generated"], mp.inputs["Vector"])
lk.new(mp.outputs["Vector"], sky.inputs["Vector"])
lk.new(sky.outputs["Fac"], rmp.inputs["Fac"])
lk.new(rmp.outputs["Color"], bg.inputs["Color"])
bg.inputs["Strength"].default_value = 0.45
w.mist_settings.start = 5.0
w.mist_settings.depth = 6.5
w.mist_settings.falloff = "LINEAR"

# ---------------------------------------------------------------- camera
cam_d = bpy.data.cameras.new("Camera")
cam_d.lens = 46
cam_d.sensor_width = 36
cam_d.sensor_height = 20.25
cam_d.clip_start = 0.1
cam_d.clip_end = 60
cam = bpy.data.objects.new("Camera", cam_d)
cam.location = (2.25, -7.15, 3.55)
root.objects.link(cam)
look(cam, (0.10, 0.10, 0.40), roll=3.5)
scene.camera = cam
if not A.no_dof:
    cam_d.dof.use_dof = True
    cam_d.dof.focus_object = gsph
    cam_d.dof.aperture_fstop = 1.6

# ---------------------------------------------------------------- animation of "Kugel 07"
# frames 1..3 inside, from frame 4 on outside of the picture (to the left)
if F1 > F0:
    for f, x, y in ((1, -0.42, -1.12), (2, -0.95, -1.28), (3, -1.75, -1.50), (4, -6.5, -2.6), (5, -9.0, -3.2)):
        ball.location = (x, y, 0.30)
        ball.keyframe_insert("location", frame=f)
    for fc in ball.animation_data.action.fcurves:
        for kp in fc.keyframe_points:
            kp.interpolation = "LINEAR"
    # the lamp flickers, Suzanne turns: every frame differs
    for f in range(F0, F1 + 1):
        suz.rotation_euler = (math.radians(-20), 0, math.radians(34 - 9 * (f - 1)))
        suz.keyframe_insert("rotation_euler", frame=f)

# ---------------------------------------------------------------- light groups
scene.frame_start, scene.frame_end = F0, F1
vl = scene.view_layers[0]
vl.name = "ViewLayer"


def passes(v, lightgroups=True):
    v.use_pass_combined = True
    v.use_pass_z = True
    v.use_pass_object_index = True
    if A.minimal:
        return
    for n in ("mist", "position", "normal", "vector", "uv", "diffuse_direct", "diffuse_indirect",
              "diffuse_color", "glossy_direct", "glossy_indirect", "glossy_color",
              "transmission_direct", "transmission_indirect", "transmission_color",
              "subsurface_direct", "emit", "environment", "shadow", "ambient_occlusion",
              "material_index", "cryptomatte_object", "cryptomatte_material", "cryptomatte_asset"):
        if n == "subsurface_direct":
            continue
        setattr(v, "use_pass_" + n, True)
    v.pass_cryptomatte_depth = A.crypto_levels
    v.use_pass_cryptomatte_accurate = not A.no_accurate
    v.cycles.denoising_store_passes = True
    v.cycles.use_pass_shadow_catcher = catcher is not None and not A.catcher_in_combined
    for nm, typ in (("albedo_flat", "COLOR"), ("gloss_id", "VALUE")):
        a = v.aovs.add()
        a.name = nm
        a.type = typ
    if lightgroups and not A.no_lightgroups:
        for g in ("key", "fill", "glow"):
            v.lightgroups.add(name=g)


passes(vl)
if not A.no_lightgroups and not A.minimal:
    key.lightgroup = "key"
    fill.lightgroup = "fill"
    rim.lightgroup = "fill"
    lamp.lightgroup = "glow"

if A.two_layers:
    v2 = scene.view_layers.new("Glass only")
    for lc in v2.layer_collection.children:
        lc.exclude = True                        # also excludes the nested collections ...
        for sub in lc.children:
            sub.exclude = sub.name != "Glassware"    # ... so bring this one back
    passes(v2, lightgroups=False)
    v2.use_pass_cryptomatte_asset = False

# ---------------------------------------------------------------- render settings
r = scene.render
r.resolution_x, r.resolution_y, r.resolution_percentage = A.width, A.height, 100
r.film_transparent = True
r.filter_size = 1.5
r.use_file_extension = True
r.use_overwrite = True
r.dither_intensity = 0.0
r.image_settings.file_format = "OPEN_EXR_MULTILAYER"
r.image_settings.color_depth = A.depth
r.image_settings.exr_codec = A.codec
r.image_settings.color_mode = "RGBA"
r.use_stamp = False              # True would BURN the text into Combined; the metadata is written anyway
r.use_stamp_note = True
r.stamp_note_text = "still life \u2013 synthetic test scene"
r.metadata_input = "SCENE"
r.use_compositing = False
r.use_sequencer = False
r.threads_mode = "AUTO"
r.use_persistent_data = True
if A.stereo:
    r.use_multiview = True
    r.views_format = "STEREO_3D"
    r.image_settings.views_format = "MULTIVIEW"
    cam_d.stereo.convergence_mode = "OFFAXIS"
    cam_d.stereo.interocular_distance = 0.12
if A.region:
    x0, y0, x1, y1 = (float(t) for t in A.region.split(","))
    r.use_border = True
    r.use_crop_to_border = False
    r.border_min_x, r.border_min_y, r.border_max_x, r.border_max_y = x0, y0, x1, y1

if A.composite:
    r.use_compositing = True
    scene.use_nodes = True
    nt = scene.node_tree
    nt.nodes.clear()
    rl = nt.nodes.new("CompositorNodeRLayers")
    co = nt.nodes.new("CompositorNodeComposite")
    nt.links.new(rl.outputs["Image"], co.inputs["Image"])
    fo = nt.nodes.new("CompositorNodeOutputFile")
    fo.format.file_format = "OPEN_EXR_MULTILAYER"
    fo.format.color_depth = "16"
    fo.base_path = os.path.abspath(A.composite)
    fo.layer_slots.clear()
    for slot, sock in (("beauty", "Image"), ("Glanz/direkt", "GlossDir"), ("depth.far", "Depth"), ("K\u00f6rper", "IndexOB"),
                       ("N", "Normal"), ("CryptoObject00", "CryptoObject00")):
        fo.layer_slots.new(slot)
        nt.links.new(rl.outputs[sock], fo.inputs[slot])

c = scene.cycles
c.device = "CPU"
c.samples = A.samples
c.use_adaptive_sampling = False
c.use_denoising = False
c.seed = 7
c.max_bounces = 10
c.transparent_max_bounces = 10
c.caustics_reflective = False
c.caustics_refractive = False
c.sample_clamp_indirect = 6.0
c.blur_glossy = 0.6
c.pixel_filter_type = "BLACKMAN_HARRIS"
scene.view_settings.view_transform = "Standard"

# ---------------------------------------------------------------- scene description
def rows(m):
    return [[round(x, 9) for x in row] for row in m]


def coll_tree(c):
    return {"name": c.name, "hide_render": c.hide_render, "objects": [o.name for o in c.objects],
            "children": [coll_tree(k) for k in c.children]}


def coll_path(o):
    found = []

    def walk(c, path):
        p = path + [c.name]
        if o.name in c.objects:
            found.append(p)
        for k in c.children:
            walk(k, p)
    walk(root, [])
    return found[0] if found else []


def obj_state(o):
    d = {"name": o.name, "type": o.type, "collections": coll_path(o), "pass_index": o.pass_index,
         "materials": [{"slot": i, "name": s.material.name, "pass_index": s.material.pass_index}
                       for i, s in enumerate(o.material_slots) if s.material],
         "hide_render": o.hide_render, "shadow_catcher": bool(o.is_shadow_catcher),
         "parent": o.parent.name if o.parent else None,
         "lightgroup": o.lightgroup, "matrix_world": rows(o.matrix_world)}
    if o.type == "MESH":
        d["bound_box"] = [list(map(float, v)) for v in o.bound_box]
    if o.type == "LIGHT":
        d["light"] = {"kind": o.data.type, "energy": o.data.energy, "color": list(o.data.color)}
    return d


def screen(o):
    """Centre of the object in pixels (0,0 = top left), and its depth."""
    from bpy_extras.object_utils import world_to_camera_view
    v = world_to_camera_view(scene, cam, o.matrix_world.translation)
    return [v.x * A.width, (1 - v.y) * A.height, v.z]


def dump(path):
    frames = {}
    for f in range(F0, F1 + 1):
        scene.frame_set(f)
        bpy.context.view_layer.update()
        frames[str(f)] = {o.name: {"matrix_world": rows(o.matrix_world), "screen_xyz": screen(o)}
                          for o in scene.objects}
    scene.frame_set(F0)
    bpy.context.view_layer.update()
    doc = {
        "schema": "scene-dump-1", "generator": "Blender " + bpy.app.version_string, "scene": scene.name,
        "renderer": "Cycles", "units": "m", "up_axis": "Z", "samples": A.samples,
        "resolution": [A.width, A.height], "frame_range": [F0, F1], "film_transparent": True,
        "collections": coll_tree(root),
        "view_layers": [{"name": v.name} for v in scene.view_layers],
        "lightgroups": [g.name for g in vl.lightgroups],
        "objects": [obj_state(o) for o in scene.objects if o.type not in {"EMPTY", "CAMERA"}],
        "helpers": [{"name": o.name, "collections": coll_path(o), "parent": o.parent.name if o.parent else None,
                     "display": o.empty_display_type, "matrix_world": rows(o.matrix_world),
                     "screen_xyz": screen(o)} for o in scene.objects if o.type == "EMPTY"],
        "materials": [{"name": m.name, "pass_index": m.pass_index} for m in bpy.data.materials],
        "camera": {"name": cam.name, "matrix_world": rows(cam.matrix_world), "lens_mm": cam_d.lens,
                   "fov_x_deg": math.degrees(cam_d.angle_x), "fov_y_deg": math.degrees(cam_d.angle_y),
                   "sensor_mm": [cam_d.sensor_width, cam_d.sensor_height], "sensor_fit": cam_d.sensor_fit,
                   "clip_start": cam_d.clip_start, "clip_end": cam_d.clip_end,
                   "dof": {"use": cam_d.dof.use_dof, "fstop": cam_d.dof.aperture_fstop,
                           "focus_object": cam_d.dof.focus_object.name if cam_d.dof.focus_object else None}},
        "mist": {"start": w.mist_settings.start, "depth": w.mist_settings.depth},
        "frames": frames,
    }
    with open(path, "w", encoding="utf-8") as fh:
        json.dump(doc, fh, indent=1, ensure_ascii=False)
    print("scene json:", path)


if A.json:
    dump(A.json)
if A.save_blend:
    bpy.ops.wm.save_as_mainfile(filepath=A.save_blend)
if not A.no_render:
    os.makedirs(os.path.dirname(os.path.abspath(A.out)), exist_ok=True)
    t0 = time.time()
    if F1 > F0:
        r.filepath = os.path.abspath(A.out)
        bpy.ops.render.render(animation=True)
    else:
        scene.frame_set(F0)
        r.filepath = os.path.abspath(A.out)
        bpy.ops.render.render(write_still=True)
    print("RENDER SECONDS %.1f for frames %d-%d at %dx%d, %d samples" %
          (time.time() - t0, F0, F1, A.width, A.height, A.samples))
    if A.png:
        img = bpy.data.images["Render Result"]
        s = r.image_settings
        s.file_format = "PNG"
        base = os.path.splitext(os.path.abspath(A.out))[0]
        for dep in ("8", "16"):
            s.color_depth = dep
            s.color_mode = "RGBA"
            img.save_render(base + "_rgba%s.png" % dep, scene=scene)
