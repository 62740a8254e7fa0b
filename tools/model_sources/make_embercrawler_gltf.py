#!/usr/bin/env python3
"""Writes embercrawler.gltf: the ember crawler as a glTF 2.0 file with its
buffers embedded (base64), using only the Python standard library.

The crawler is three boxy segments along Z (its front is +Z), each moved by
one bone: "Body" (the root, the middle segment), "Head" (the front segment)
and "Tail" (the back one), both children of Body. The faces of a segment that
look at its neighbour are weighted 0.75 to their own bone and 0.25 to the
neighbour's, so that the joints bend softly. The boxes carry normals and
texture coordinates but no tangents. Two clips:

  Crawl  1 second, looping: the head and tail sway from side to side
         (rotation keys every 0.25 s) while the body bobs (translation keys
         every 0.5 s).
  Lunge  0.6 seconds: the body leaps forward and the head rears up and swells
         (translation, rotation and scale keys at differing times).

Run it again to regenerate the file; the output is the same every time.
"""
import base64
import json
import math
import os
import struct
import sys

# Rest translations of the bones, each relative to its parent.
BODY_AT = (0.0, 0.1, 0.0)
HEAD_AT = (0.0, 0.0, 0.2)
TAIL_AT = (0.0, 0.0, -0.2)

# The segments: (bone, neighbour bone, z from, z to, half width, y from, y to).
SEGMENTS = [
    (2, 0, -0.5, -0.24, 0.28, -0.5, -0.05),  # tail
    (0, None, -0.2, 0.2, 0.4, -0.5, 0.1),  # body
    (1, 0, 0.24, 0.5, 0.32, -0.45, 0.05),  # head
]
JOINT_NAMES = ["Body", "Head", "Tail"]


def box(bone, neighbour, z0, z1, half, y0, y1):
    """24 vertices (4 per face, counter-clockwise seen from outside) and 36 indices."""
    x0, x1 = -half, half
    faces = [
        ((0, 0, 1), [(x0, y0, z1), (x1, y0, z1), (x1, y1, z1), (x0, y1, z1)]),
        ((0, 0, -1), [(x1, y0, z0), (x0, y0, z0), (x0, y1, z0), (x1, y1, z0)]),
        ((1, 0, 0), [(x1, y0, z1), (x1, y0, z0), (x1, y1, z0), (x1, y1, z1)]),
        ((-1, 0, 0), [(x0, y0, z0), (x0, y0, z1), (x0, y1, z1), (x0, y1, z0)]),
        ((0, 1, 0), [(x0, y1, z1), (x1, y1, z1), (x1, y1, z0), (x0, y1, z0)]),
        ((0, -1, 0), [(x0, y0, z0), (x1, y0, z0), (x1, y0, z1), (x0, y0, z1)]),
    ]
    # glTF texture coordinates start at the top left.
    uvs = [(0, 1), (1, 1), (1, 0), (0, 0)]
    vertices, indices = [], []
    for normal, corners in faces:
        base = len(vertices)
        # A face looking at the neighbour segment shares a little of its bone.
        toward = neighbour is not None and normal[2] != 0 and (normal[2] > 0) == (z0 < 0)
        for corner, uv in zip(corners, uvs):
            if toward:
                joints, weights = (bone, neighbour, 0, 0), (0.75, 0.25, 0.0, 0.0)
            else:
                joints, weights = (bone, 0, 0, 0), (1.0, 0.0, 0.0, 0.0)
            vertices.append((corner, normal, uv, joints, weights))
        indices += [base, base + 1, base + 2, base, base + 2, base + 3]
    return vertices, indices


def quat_axis_angle(axis, degrees):
    half = math.radians(degrees) / 2
    s = math.sin(half)
    return (axis[0] * s, axis[1] * s, axis[2] * s, math.cos(half))


def translation_matrix(t):
    """Column-major 4x4, as glTF stores matrices."""
    return [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, t[0], t[1], t[2], 1]


class Buffer:
    def __init__(self):
        self.data = bytearray()
        self.views = []
        self.accessors = []

    def add(self, fmt, rows, kind, component, target=None, minmax=False):
        while len(self.data) % 4:
            self.data.append(0)
        offset = len(self.data)
        for row in rows:
            self.data += struct.pack("<" + fmt, *row)
        view = {"buffer": 0, "byteOffset": offset, "byteLength": len(self.data) - offset}
        if target:
            view["target"] = target
        self.views.append(view)
        accessor = {"bufferView": len(self.views) - 1, "componentType": component, "count": len(rows), "type": kind}
        if minmax:
            accessor["min"] = [min(r[i] for r in rows) for i in range(len(rows[0]))]
            accessor["max"] = [max(r[i] for r in rows) for i in range(len(rows[0]))]
        self.accessors.append(accessor)
        return len(self.accessors) - 1


FLOAT, USHORT = 5126, 5123


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "embercrawler.gltf")
    vertices, indices = [], []
    for segment in SEGMENTS:
        v, i = box(*segment)
        indices += [len(vertices) + k for k in i]
        vertices += v

    buf = Buffer()
    position = buf.add("3f", [v[0] for v in vertices], "VEC3", FLOAT, 34962, minmax=True)
    normal = buf.add("3f", [v[1] for v in vertices], "VEC3", FLOAT, 34962)
    texcoord = buf.add("2f", [v[2] for v in vertices], "VEC2", FLOAT, 34962)
    joints = buf.add("4H", [v[3] for v in vertices], "VEC4", USHORT, 34962)
    weights = buf.add("4f", [v[4] for v in vertices], "VEC4", FLOAT, 34962)
    index = buf.add("H", [(k,) for k in indices], "SCALAR", USHORT, 34963)

    body_global = BODY_AT
    head_global = tuple(a + b for a, b in zip(BODY_AT, HEAD_AT))
    tail_global = tuple(a + b for a, b in zip(BODY_AT, TAIL_AT))
    inverse_binds = buf.add(
        "16f", [translation_matrix([-c for c in g]) for g in (body_global, head_global, tail_global)], "MAT4", FLOAT
    )

    def times(values):
        return buf.add("f", [(t,) for t in values], "SCALAR", FLOAT, minmax=True)

    def sampler(input_accessor, rows, kind):
        fmt = "4f" if kind == "VEC4" else "3f"
        return {"input": input_accessor, "output": buf.add(fmt, rows, kind, FLOAT), "interpolation": "LINEAR"}

    # Nodes: 0 EmberCrawler, 1 CrawlerMesh, 2 Body, 3 Head, 4 Tail.
    BODY, HEAD, TAIL = 2, 3, 4
    up, side = (1, 0, 0), (0, 1, 0)

    sway_times = times([0.0, 0.25, 0.5, 0.75, 1.0])
    bob_times = times([0.0, 0.5, 1.0])
    sway = [0, 15, 0, -15, 0]
    crawl = {
        "name": "Crawl",
        "samplers": [
            sampler(sway_times, [quat_axis_angle(side, a) for a in sway], "VEC4"),
            sampler(sway_times, [quat_axis_angle(side, -a) for a in sway], "VEC4"),
            sampler(bob_times, [BODY_AT, (BODY_AT[0], BODY_AT[1] + 0.05, BODY_AT[2]), BODY_AT], "VEC3"),
        ],
        "channels": [
            {"sampler": 0, "target": {"node": HEAD, "path": "rotation"}},
            {"sampler": 1, "target": {"node": TAIL, "path": "rotation"}},
            {"sampler": 2, "target": {"node": BODY, "path": "translation"}},
        ],
    }

    leap_times = times([0.0, 0.3, 0.6])
    rear_times = times([0.0, 0.2, 0.4, 0.6])
    swell_times = times([0.1, 0.3, 0.5])
    lunge = {
        "name": "Lunge",
        "samplers": [
            sampler(leap_times, [BODY_AT, (0.0, 0.2, 0.4), BODY_AT], "VEC3"),
            sampler(rear_times, [quat_axis_angle(up, a) for a in (0, -25, -10, 0)], "VEC4"),
            sampler(swell_times, [(1, 1, 1), (1.2, 1.2, 1.2), (1, 1, 1)], "VEC3"),
        ],
        "channels": [
            {"sampler": 0, "target": {"node": BODY, "path": "translation"}},
            {"sampler": 1, "target": {"node": HEAD, "path": "rotation"}},
            {"sampler": 2, "target": {"node": HEAD, "path": "scale"}},
        ],
    }

    gltf = {
        "asset": {"version": "2.0", "generator": "make_embercrawler_gltf.py"},
        "scene": 0,
        "scenes": [{"nodes": [0]}],
        "nodes": [
            {"name": "EmberCrawler", "children": [1, BODY]},
            {"name": "CrawlerMesh", "mesh": 0, "skin": 0},
            {"name": "Body", "translation": list(BODY_AT), "children": [HEAD, TAIL]},
            {"name": "Head", "translation": list(HEAD_AT)},
            {"name": "Tail", "translation": list(TAIL_AT)},
        ],
        "meshes": [
            {
                "name": "Crawler",
                "primitives": [
                    {
                        "attributes": {
                            "POSITION": position,
                            "NORMAL": normal,
                            "TEXCOORD_0": texcoord,
                            "JOINTS_0": joints,
                            "WEIGHTS_0": weights,
                        },
                        "indices": index,
                        "mode": 4,
                    }
                ],
            }
        ],
        "skins": [{"name": "CrawlerSkeleton", "joints": [BODY, HEAD, TAIL], "skeleton": BODY,
                   "inverseBindMatrices": inverse_binds}],
        "animations": [crawl, lunge],
        "accessors": buf.accessors,
        "bufferViews": buf.views,
        "buffers": [{"byteLength": len(buf.data),
                     "uri": "data:application/octet-stream;base64," + base64.b64encode(bytes(buf.data)).decode()}],
    }
    with open(out, "w") as f:
        json.dump(gltf, f, indent=1)
        f.write("\n")


if __name__ == "__main__":
    main()
