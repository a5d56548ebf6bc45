#!/usr/bin/env python3
"""Draws the picture buttons of the main window as PNG files.

Only the standard library: every picture is a stack of filled shapes
(polygons, circles, thick lines, pixel-font text), sampled 5 x 5 times per
pixel for smooth edges. Each picture is written at its size and at twice its
size (name@2x.png) for high-density screens.

Run from anywhere; it writes beside itself:  python3 make_icons.py
"""
import math
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
SS = 5  # samples per pixel along each axis


def png(path, width, height, rgba_rows):
    def chunk(tag, data):
        return (struct.pack(">I", len(data)) + tag + data
                + struct.pack(">I", zlib.crc32(tag + data) & 0xFFFFFFFF))
    raw = b"".join(b"\x00" + bytes(row) for row in rgba_rows)
    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n")
        f.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)))
        f.write(chunk(b"IDAT", zlib.compress(raw, 9)))
        f.write(chunk(b"IEND", b""))


# Shapes work in a 0..1 design square; (0, 0) is the top-left corner.
def polygon(points):
    def inside(x, y):
        hit = False
        n = len(points)
        for i in range(n):
            x1, y1 = points[i]
            x2, y2 = points[(i + 1) % n]
            if (y1 > y) != (y2 > y):
                if x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
                    hit = not hit
        return hit
    return inside


def rect(x0, y0, x1, y1):
    return lambda x, y: x0 <= x <= x1 and y0 <= y <= y1


def round_rect(x0, y0, x1, y1, r):
    def inside(x, y):
        if not (x0 <= x <= x1 and y0 <= y <= y1):
            return False
        cx = min(max(x, x0 + r), x1 - r)
        cy = min(max(y, y0 + r), y1 - r)
        return (x - cx) ** 2 + (y - cy) ** 2 <= r * r
    return inside


def circle(cx, cy, r):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r * r


def ring(cx, cy, r, w):
    return lambda x, y: abs(math.hypot(x - cx, y - cy) - r) <= w / 2


def ellipse_ring(cx, cy, rx, ry, w):
    # Approximate distance to the ellipse outline.
    def inside(x, y):
        dx, dy = (x - cx) / rx, (y - cy) / ry
        d = math.hypot(dx, dy)
        if d == 0:
            return False
        return abs(d - 1) * min(rx, ry) <= w / 2
    return inside


def line(x1, y1, x2, y2, w):
    def inside(x, y):
        vx, vy = x2 - x1, y2 - y1
        t = max(0.0, min(1.0, ((x - x1) * vx + (y - y1) * vy) / (vx * vx + vy * vy)))
        return math.hypot(x - (x1 + t * vx), y - (y1 + t * vy)) <= w / 2
    return inside


def union(*shapes):
    return lambda x, y: any(s(x, y) for s in shapes)


def minus(a, b):
    return lambda x, y: a(x, y) and not b(x, y)


def clip(a, b):
    return lambda x, y: a(x, y) and b(x, y)


FONT = {  # pixel letters, five rows high
    "A": ["010", "101", "111", "101", "101"],
    "B": ["110", "101", "110", "101", "110"],
    "K": ["101", "101", "110", "101", "101"],
    "L": ["100", "100", "100", "100", "111"],
    "N": ["1001", "1101", "1011", "1001", "1001"],
}


def text_width(word):
    return sum(len(FONT[ch][0]) for ch in word) + len(word) - 1


def text(word, x0, y0, cell):
    """Letters of cell x cell squares, one column apart."""
    boxes = []
    left = 0
    for ch in word:
        for row, bits in enumerate(FONT[ch]):
            for col, bit in enumerate(bits):
                if bit == "1":
                    x = x0 + (left + col) * cell
                    y = y0 + row * cell
                    boxes.append((x, y, x + cell, y + cell))
        left += len(FONT[ch][0]) + 1

    def inside(x, y):
        return any(a <= x < c and b <= y < d for a, b, c, d in boxes)
    return inside


def render(layers, size):
    rows = []
    n = SS * SS
    for py in range(size):
        row = []
        for px in range(size):
            r = g = b = a = 0.0  # premultiplied
            for sy in range(SS):
                for sx in range(SS):
                    x = (px + (sx + 0.5) / SS) / size
                    y = (py + (sy + 0.5) / SS) / size
                    cr = cg = cb = ca = 0.0
                    for shape, (lr, lg, lb, la) in layers:
                        if shape(x, y):
                            al = la / 255.0
                            cr = lr * al + cr * (1 - al)
                            cg = lg * al + cg * (1 - al)
                            cb = lb * al + cb * (1 - al)
                            ca = al + ca * (1 - al)
                    r += cr
                    g += cg
                    b += cb
                    a += ca
            if a > 0:
                row += [round(r / a), round(g / a), round(b / a), round(255 * a / n)]
            else:
                row += [0, 0, 0, 0]
        rows.append(row)
    return rows


def rgb(hexcode, alpha=255):
    return (int(hexcode[0:2], 16), int(hexcode[2:4], 16), int(hexcode[4:6], 16), alpha)


# ---------------------------------------------------------------------------
# The pictures


def arrow_right_points(x0, x1, yc, shaft, head, head_len):
    return [(x0, yc - shaft), (x1 - head_len, yc - shaft), (x1 - head_len, yc - head),
            (x1, yc), (x1 - head_len, yc + head), (x1 - head_len, yc + shaft), (x0, yc + shaft)]


def thick_arrow(direction, fill, edge):
    """A thick arrow; the rim is the same arrow drawn slightly larger."""
    outer = arrow_right_points(0.06, 0.96, 0.5, 0.17, 0.40, 0.42)
    inner = arrow_right_points(0.12, 0.87, 0.5, 0.11, 0.31, 0.33)
    highlight = [(0.12, 0.39), (0.55, 0.39), (0.55, 0.47), (0.12, 0.47)]
    if direction == "left":
        outer = [(1 - x, y) for x, y in outer]
        inner = [(1 - x, y) for x, y in inner]
        highlight = [(1 - x, y) for x, y in highlight]
    return [
        (polygon(outer), edge),
        (polygon(inner), fill),
        (polygon(highlight), (255, 255, 255, 70)),
    ]


def bin_picture():
    edge = rgb("4a4f57")
    body = polygon([(0.20, 0.30), (0.80, 0.30), (0.73, 0.94), (0.27, 0.94)])
    body_in = polygon([(0.26, 0.35), (0.74, 0.35), (0.685, 0.885), (0.315, 0.885)])
    ribs = union(line(0.40, 0.42, 0.41, 0.83, 0.045), line(0.50, 0.42, 0.50, 0.83, 0.045),
                 line(0.60, 0.42, 0.59, 0.83, 0.045))
    lid = round_rect(0.12, 0.17, 0.88, 0.27, 0.03)
    handle = minus(round_rect(0.38, 0.06, 0.62, 0.19, 0.04), rect(0.44, 0.11, 0.56, 0.19))
    return [
        (body, edge),
        (body_in, rgb("c9ced6")),
        (ribs, rgb("7d848f")),
        (handle, edge),
        (lid, edge),
        (round_rect(0.16, 0.195, 0.84, 0.245, 0.02), rgb("d7dbe1")),
    ]


def blank_picture():
    # A sheet wide enough for the word; the letters sit on whole pixels of
    # the small picture (a cell is 1/24), so they stay sharp at both sizes.
    edge = rgb("5a6270")
    fold = 0.22
    left, right, top, bottom = 0.01, 0.99, 0.04, 0.96
    sheet = polygon([(left, top), (right - fold, top), (right, top + fold), (right, bottom),
                     (left, bottom)])
    sheet_in = polygon([(left + 0.045, top + 0.045), (right - fold - 0.02, top + 0.045),
                        (right - 0.045, top + fold + 0.02), (right - 0.045, bottom - 0.045),
                        (left + 0.045, bottom - 0.045)])
    corner = polygon([(right - fold, top), (right - fold, top + fold), (right, top + fold)])
    cell = 1 / 24
    word = text("BLANK", 2 * cell, 10 * cell, cell)
    lines_ = union(rect(0.17, 0.22, 0.55, 0.26), rect(0.17, 0.72, 0.83, 0.76),
                   rect(0.17, 0.81, 0.70, 0.85))
    return [
        (sheet, edge),
        (sheet_in, (255, 255, 255, 255)),
        (corner, rgb("c5cbd5")),
        (line(right - fold, top, right - fold, top + fold, 0.04), edge),
        (line(right - fold, top + fold, right, top + fold, 0.04), edge),
        (lines_, rgb("c9ced6")),
        (word, rgb("2b55a8")),
    ]


def small_arrow(direction):
    # A plain triangle that reads well at 16 pixels.
    pts = [(0.30, 0.16), (0.78, 0.5), (0.30, 0.84)]
    inner = [(0.37, 0.30), (0.66, 0.5), (0.37, 0.70)]
    if direction == "left":
        pts = [(1 - x, y) for x, y in pts]
        inner = [(1 - x, y) for x, y in inner]
    return [(polygon(pts), rgb("1f4f99")), (polygon(inner), rgb("3c7ddb"))]


def localise_picture():
    # A globe with a speech bubble tail: "translate this form".
    globe = circle(0.45, 0.45, 0.38)
    lines_ = union(
        ellipse_ring(0.45, 0.45, 0.17, 0.38, 0.05),
        line(0.45, 0.07, 0.45, 0.83, 0.05),
        line(0.07, 0.45, 0.83, 0.45, 0.05),
        clip(line(0.10, 0.27, 0.80, 0.27, 0.045), globe),
        clip(line(0.10, 0.63, 0.80, 0.63, 0.045), globe),
    )
    bubble = round_rect(0.52, 0.52, 0.98, 0.90, 0.08)
    tail = polygon([(0.60, 0.86), (0.70, 0.86), (0.56, 0.99)])
    return [
        (globe, rgb("1f5fa8")),
        (circle(0.45, 0.45, 0.33), rgb("5fa3e8")),
        (clip(lines_, circle(0.45, 0.45, 0.33)), rgb("e8f2fc")),
        (union(bubble, tail), rgb("3a3f47")),
        (round_rect(0.555, 0.555, 0.945, 0.865, 0.05), rgb("ffd257")),
        (text("A", 0.75 - 1.5 * 0.05, 0.71 - 2.5 * 0.05, 0.05), rgb("3a3f47")),
    ]


PICTURES = {
    # name: (layers, size in pixels at 1x)
    "add": (thick_arrow("right", rgb("3aa655"), rgb("1f6b33")), 24),
    "delete": (bin_picture(), 24),
    "blank": (blank_picture(), 24),
    "arrow_left": (small_arrow("left"), 16),
    "arrow_right": (small_arrow("right"), 16),
    "localise": (localise_picture(), 21),
}


def main():
    for name, (layers, size) in PICTURES.items():
        for scale, suffix in ((1, ""), (2, "@2x")):
            n = size * scale
            png(os.path.join(HERE, f"{name}{suffix}.png"), n, n, render(layers, n))
            print(f"{name}{suffix}.png {n}x{n}")


if __name__ == "__main__":
    main()
