#!/usr/bin/python3
"""Builds the triangles of the sample model (tests/data/model), so that the
preview shows a small robot rather than specks beside its skeleton.

Rewrites only the triangles block of (run from anywhere, plain python3):

  robot_ref.smd     legs on the root, a torso and arms on the spine
  robot_head.smd    a head box on the head bone, eyes on its front
  robot_helmet.smd  the other head: a helmet box over the head bone

The nodes and skeleton blocks stay as they are. The skeleton has no
rotations: the root stands at z 36, the spine 8 above it and the head 12
above that, so the boxes are placed about z 36, 44 and 56 in model space,
which is where reference triangles give their corners. The model faces +X.

Each box is 12 triangles, its normals outward and wound counter-clockwise
seen from outside; a side face maps the whole texture with v rising with z.
"""
import os

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
MODEL = os.path.join(ROOT, "tests", "data", "model")

ROOT_BONE, SPINE, HEAD = 0, 1, 2


def quad(bone, texture, corners, normal):
    """Two triangles over four corners given counter-clockwise from outside,
    the first at uv (0, 0), then (1, 0), (1, 1), (0, 1)."""
    uvs = [(0, 0), (1, 0), (1, 1), (0, 1)]
    rows = []
    for tri in ((0, 1, 2), (0, 2, 3)):
        rows.append(texture)
        for i in tri:
            x, y, z = corners[i]
            u, v = uvs[i]
            rows.append("  %d %f %f %f %f %f %f %f %f" % (bone, x, y, z, *normal, u, v))
    return rows


def box(bone, texture, low, high):
    """The six faces of an axis-aligned box, 12 triangles."""
    (x0, y0, z0), (x1, y1, z1) = low, high
    rows = []
    # Sides, seen from outside: u runs to the viewer's right, v up.
    rows += quad(bone, texture, [(x1, y0, z0), (x1, y1, z0), (x1, y1, z1), (x1, y0, z1)], (1, 0, 0))
    rows += quad(bone, texture, [(x1, y1, z0), (x0, y1, z0), (x0, y1, z1), (x1, y1, z1)], (0, 1, 0))
    rows += quad(bone, texture, [(x0, y1, z0), (x0, y0, z0), (x0, y0, z1), (x0, y1, z1)], (-1, 0, 0))
    rows += quad(bone, texture, [(x0, y0, z0), (x1, y0, z0), (x1, y0, z1), (x0, y0, z1)], (0, -1, 0))
    rows += quad(bone, texture, [(x1, y0, z1), (x1, y1, z1), (x0, y1, z1), (x0, y0, z1)], (0, 0, 1))
    rows += quad(bone, texture, [(x0, y0, z0), (x0, y1, z0), (x1, y1, z0), (x1, y0, z0)], (0, 0, -1))
    return rows


def robot_ref():
    rows = []
    for side in (1, -1):  # the legs, up to the hips
        rows += box(ROOT_BONE, "robot_body.bmp", (-3.5, sorted((side * 1.5, side * 7))[0], 0),
                    (3.5, sorted((side * 1.5, side * 7))[1], 34))
    rows += box(SPINE, "robot_body.bmp", (-6, -9, 32), (6, 9, 54))  # the torso
    for side in (1, -1):  # the arms, hanging at the torso's sides
        rows += box(SPINE, "robot_body.bmp", (-2.5, sorted((side * 9, side * 13))[0], 28),
                    (2.5, sorted((side * 9, side * 13))[1], 53))
    return rows


def robot_head():
    rows = box(HEAD, "robot_face.bmp", (-6, -6, 54), (6, 6, 66))
    # The eyes just in front of the face, over its visor.
    rows += quad(HEAD, "Robot_Eyes.BMP",
                 [(6.1, -5, 59), (6.1, 5, 59), (6.1, 5, 65), (6.1, -5, 65)], (1, 0, 0))
    return rows


def robot_helmet():
    return box(HEAD, "helmet.bmp", (-7, -7, 53), (7, 7, 68))


def rewrite(name, rows):
    path = os.path.join(MODEL, name)
    with open(path, "rb") as f:
        text = f.read().decode("ascii")
    newline = "\r\n" if "\r\n" in text else "\n"
    head, marker, _ = text.partition(newline + "triangles" + newline)
    if not marker:
        raise SystemExit(name + ": no triangles block")
    body = newline.join(rows + ["end", ""])
    with open(path, "wb") as f:
        f.write((head + marker + body).encode("ascii"))


rewrite("robot_ref.smd", robot_ref())
rewrite("robot_head.smd", robot_head())
rewrite("robot_helmet.smd", robot_helmet())
