#!/usr/bin/python3
"""Draws Quarle, the frog of the assistant and the wizards.

Writes beside the program's data (run from anywhere, with Debian's
python3-pil):

  data/assistant/quarle0.png .. quarle9.png   the ten frames, 100 x 100,
      16 colours, background red 252 green 254 blue 252 (cut away on screen)
  data/assistant/close_up.png, close_down.png the speech box's close box, 8 x 8
  data/bilder/quarle.jpg                      the wizard pages' picture

Frames: 0 resting, 1 content (after the speech box is closed), 2..5 pointing
up-right, down-right, down-left, up-left, 6/7 croaking, 8/9 waving.
Pointing frames reach for the spot the main window places the target at:
(68, 20), (68, 68), (24, 68), (32, 20).
"""
import math
import os

from PIL import Image, ImageDraw

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))

BG = (252, 254, 252)
OUT = (30, 62, 36)
GREEN = (96, 184, 74)
DGREEN = (62, 142, 56)
BELLY = (206, 236, 156)
WHITE = (255, 255, 255)
BLACK = (24, 24, 28)
MOUTH = (150, 40, 52)
PINK = (242, 138, 150)
ORANGE = (246, 148, 36)
DORANGE = (196, 98, 20)
BLUE = (84, 140, 222)
GREY = (128, 128, 128)
LGREY = (212, 212, 212)
YELLOW = (252, 222, 70)
CREAM = (238, 246, 222)
PALETTE = [BG, OUT, GREEN, DGREEN, BELLY, WHITE, BLACK, MOUTH, PINK, ORANGE, DORANGE,
           BLUE, GREY, LGREY, YELLOW, CREAM]


class Pen:
    """Draws in a 100-unit design square placed at (ox, oy) with scale s,
    on a canvas k pixels per unit (k > 1 for the smooth wizard picture)."""

    def __init__(self, draw, k, ox=0.0, oy=0.0, s=1.0):
        self.d, self.k, self.ox, self.oy, self.s = draw, k, ox, oy, s

    def pt(self, x, y):
        return ((self.ox + x * self.s) * self.k, (self.oy + y * self.s) * self.k)

    def r(self, v):
        return v * self.s * self.k

    def ellipse(self, cx, cy, rx, ry, fill, grow=0.0):
        x, y = self.pt(cx, cy)
        rx, ry = self.r(rx) + grow * self.k, self.r(ry) + grow * self.k
        self.d.ellipse([x - rx, y - ry, x + rx, y + ry], fill=fill)

    def capsule(self, x1, y1, x2, y2, rad, fill, grow=0.0):
        a, b = self.pt(x1, y1), self.pt(x2, y2)
        w = self.r(rad) + grow * self.k
        self.d.line([a, b], fill=fill, width=max(1, round(2 * w)))
        for (x, y) in (a, b):
            self.d.ellipse([x - w, y - w, x + w, y + w], fill=fill)

    def arc(self, cx, cy, rx, ry, start, end, width, fill):
        x, y = self.pt(cx, cy)
        rx, ry = self.r(rx), self.r(ry)
        self.d.arc([x - rx, y - ry, x + rx, y + ry], start, end, fill=fill,
                   width=max(1, round(self.r(width))))


def outlined(pen, shapes, line=1.3):
    """Shapes as one silhouette: every outline first, then every fill."""
    for kind, args, fill in shapes:
        getattr(pen, kind)(*args, OUT, grow=line)
    for kind, args, fill in shapes:
        getattr(pen, kind)(*args, fill)


def frog(pen, look=(0.0, 0.0), eyes="open", mouth="smile", sac=0.0, arms=("rest", "rest")):
    """The frog in its design square; arms: "rest", "up", "wave" or None
    (an arm drawn by the caller)."""
    outlined(pen, [
        ("ellipse", (31, 92, 13, 5), DGREEN),
        ("ellipse", (69, 92, 13, 5), DGREEN),
        ("ellipse", (50, 69, 28, 23), GREEN),
        ("ellipse", (35, 28, 12, 12), GREEN),
        ("ellipse", (65, 28, 12, 12), GREEN),
        ("ellipse", (50, 42, 31, 19), GREEN),
    ])
    pen.ellipse(50, 75, 18, 15, BELLY)
    # Neckerchief with its knot.
    outlined(pen, [("ellipse", (50, 59, 20, 4.5), ORANGE)], 1.0)
    outlined(pen, [("ellipse", (50, 64, 4.5, 5), DORANGE)], 1.0)
    # Eyes.
    for cx in (35, 65):
        if eyes == "happy":
            pen.arc(cx, 31, 7, 6, 200, 340, 2.2, OUT)
        else:
            outlined(pen, [("ellipse", (cx, 28, 8, 8), WHITE)], 1.0)
            px, py = cx + look[0] * 3.2, 28 + look[1] * 3.2
            pen.ellipse(px, py, 4.2, 4.2, BLACK)
            pen.ellipse(px - 1.5, py - 1.6, 1.4, 1.4, WHITE)
    # Cheeks and mouth.
    pen.ellipse(26, 47, 4.5, 2.6, PINK)
    pen.ellipse(74, 47, 4.5, 2.6, PINK)
    if sac > 0:
        outlined(pen, [("ellipse", (50, 54, 12 * sac, 8 * sac), BELLY)], 1.0)
    if mouth == "open":
        outlined(pen, [("ellipse", (50, 49, 8, 5), MOUTH)], 1.0)
        pen.ellipse(50, 51.5, 5, 2.2, PINK)
    else:
        pen.arc(50, 41, 15, 10, 25, 155, 2.0, OUT)
    for side, arm in zip((-1, 1), arms):
        if arm is None:
            continue
        sx = 50 + side * 24
        if arm == "rest":
            hand = (50 + side * 17, 79)
        elif arm == "up":
            hand = (50 + side * 40, 44)
        else:  # "wave"
            hand = (50 + side * 33, 36)
        outlined(pen, [("capsule", (sx, 63, hand[0], hand[1], 4.2), GREEN),
                       ("ellipse", (hand[0], hand[1], 5.2, 5.2), GREEN)], 1.2)


def point(pen_frame, shoulder, target):
    """An arm from the shoulder (frame units) that ends a little short of the
    target, with the finger toward it."""
    sx, sy = shoulder
    tx, ty = target
    dx, dy = tx - sx, ty - sy
    n = math.hypot(dx, dy)
    ux, uy = dx / n, dy / n
    hx, hy = tx - ux * 10, ty - uy * 10
    fx, fy = tx - ux * 4, ty - uy * 4
    outlined(pen_frame, [("capsule", (sx, sy, hx, hy, 3.4), GREEN),
                         ("capsule", (hx, hy, fx, fy, 1.7), GREEN),
                         ("ellipse", (hx, hy, 4.4, 4.4), GREEN)], 1.1)


# Where each pointing frame puts the frog and at what size, which shoulder it
# points with, and the spot the main window aims at. The frog keeps clear of
# the corner where the speech box will stand (left of the spot and below it
# when the spot is up-right, right of it when up-left), so the tip's text
# stays readable.
POINTING = {
    2: dict(at=(12, 39), s=0.6, side=1, target=(68, 20)),
    3: dict(at=(0, 0), s=0.66, side=1, target=(68, 68)),
    4: dict(at=(34, 0), s=0.66, side=-1, target=(24, 68)),
    5: dict(at=(25, 39), s=0.6, side=-1, target=(32, 20)),
}


def draw_frame(n):
    img = Image.new("RGB", (100, 100), BG)
    d = ImageDraw.Draw(img)
    full = Pen(d, 1, 9, 4, 0.82)
    if n == 0:
        frog(full)
    elif n == 1:
        frog(full, eyes="happy")
    elif n in POINTING:
        p = POINTING[n]
        ox, oy = p["at"]
        small = p["s"]
        pen = Pen(d, 1, ox, oy, small)
        tx, ty = p["target"]
        cx, cy = ox + 50 * small, oy + 28 * small
        look = ((tx - cx) / max(abs(tx - cx), abs(ty - cy)), (ty - cy) / max(abs(tx - cx), abs(ty - cy)))
        arms = ("rest", None) if p["side"] == 1 else (None, "rest")
        shoulder = (ox + (50 + p["side"] * 24) * small, oy + 63 * small)
        frog(pen, look=look, mouth="open", arms=arms)
        point(Pen(d, 1), shoulder, p["target"])
    elif n == 6:
        frog(full, look=(0, -0.6), sac=1.0)
    elif n == 7:
        frog(full, look=(0, -0.6), mouth="open", sac=0.55)
    elif n == 8:
        frog(full, look=(0.7, -0.2), mouth="open", arms=("rest", "up"))
    elif n == 9:
        frog(full, look=(0.7, -0.2), mouth="open", arms=("rest", "wave"))
    return img


def to_16_colours(img):
    pal = Image.new("P", (1, 1))
    flat = [c for rgb in PALETTE for c in rgb]
    pal.putpalette(flat + [0] * (768 - len(flat)))
    return img.quantize(palette=pal, dither=Image.Dither.NONE)


def close_box(pressed):
    img = Image.new("RGB", (8, 8), LGREY)
    d = ImageDraw.Draw(img)
    d.rectangle([0, 0, 7, 7], outline=GREY)
    if pressed:
        d.line([(0, 0), (7, 0)], fill=BLACK)
        d.line([(0, 0), (0, 7)], fill=BLACK)
    else:
        d.line([(7, 0), (7, 7)], fill=BLACK)
        d.line([(0, 7), (7, 7)], fill=BLACK)
    o = 1 if pressed else 0
    d.line([(2 + o, 2 + o), (5 + o, 5 + o)], fill=BLACK)
    d.line([(5 + o, 2 + o), (2 + o, 5 + o)], fill=BLACK)
    return img


def wizard_picture(width=120, height=240, k=4):
    """The frog waving from a lily pad, for the side of the wizard pages."""
    W, H = width * k, height * k
    img = Image.new("RGB", (W, H))
    d = ImageDraw.Draw(img)
    top, bottom = (206, 230, 250), (246, 250, 240)
    for y in range(H):
        t = y / (H - 1)
        d.line([(0, y), (W, y)], fill=tuple(round(a + (b - a) * t) for a, b in zip(top, bottom)))
    # Pond and lily pad.
    d.ellipse([-40 * k, 168 * k, 160 * k, 290 * k], fill=(120, 176, 228))
    d.ellipse([-20 * k, 178 * k, 140 * k, 270 * k], fill=(98, 156, 216))
    d.ellipse([6 * k, 186 * k, 114 * k, 218 * k], fill=(46, 120, 52))
    d.ellipse([8 * k, 184 * k, 112 * k, 214 * k], fill=(78, 162, 66))
    d.polygon([(60 * k, 199 * k), (100 * k, 186 * k), (112 * k, 196 * k)], fill=(98, 156, 216))
    # A flower on the pad, and the frog above it.
    for a in range(5):
        ang = a * 2 * math.pi / 5
        cx, cy = 24 + 5 * math.cos(ang), 196 + 3 * math.sin(ang)
        d.ellipse([(cx - 4) * k, (cy - 3) * k, (cx + 4) * k, (cy + 3) * k], fill=(250, 190, 210))
    d.ellipse([21 * k, 194 * k, 27 * k, 198 * k], fill=YELLOW)
    frog(Pen(d, k, 2, 106, 1.16), look=(0.2, -0.1), arms=("rest", "wave"))
    return img.resize((width, height), Image.LANCZOS)


def main():
    frames = os.path.join(ROOT, "data", "assistant")
    os.makedirs(frames, exist_ok=True)
    for n in range(10):
        to_16_colours(draw_frame(n)).save(os.path.join(frames, f"quarle{n}.png"), bits=4)
    to_16_colours(close_box(False)).save(os.path.join(frames, "close_up.png"), bits=4)
    to_16_colours(close_box(True)).save(os.path.join(frames, "close_down.png"), bits=4)
    pictures = os.path.join(ROOT, "data", "bilder")
    os.makedirs(pictures, exist_ok=True)
    wizard_picture().save(os.path.join(pictures, "quarle.jpg"), quality=92, optimize=True)


if __name__ == "__main__":
    main()
