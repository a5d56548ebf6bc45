#!/usr/bin/python3
"""Draws the textures of the sample model (tests/data/model), so that the
preview shows it textured.

Writes tests/data/model/textures/ (run from anywhere, plain python3):

  robot_body.bmp   steel panels with seams and rivets
  robot_face.bmp   a visor with a mouth grille
  Robot_Eyes.BMP   two glowing eyes; palette index 255 (blue) around them,
                   which a masked render mode leaves out
  helmet.bmp       a painted helmet with a stripe

All are 8-bit palette bitmaps of 32 x 32 pixels, as the model compiler
takes them.
"""
import os
import struct

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
OUT = os.path.join(ROOT, "tests", "data", "model", "textures")
SIZE = 32
MASK = (0, 0, 255)  # index 255: transparent where the render mode is masked


def write_bmp(name, palette, pixels):
    """palette: up to 256 (r, g, b); pixels: rows from the top of indexes."""
    palette = list(palette) + [(0, 0, 0)] * (256 - len(palette))
    height = len(pixels)
    width = len(pixels[0])
    stride = (width + 3) // 4 * 4
    data = b"".join(bytes(row) + b"\0" * (stride - width) for row in reversed(pixels))
    colours = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in palette)
    offset = 14 + 40 + len(colours)
    header = struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 0, len(data), 2835, 2835,
                       256, 0)
    with open(os.path.join(OUT, name), "wb") as f:
        f.write(header + info + colours + data)


def shades(base, count):
    """count shades of base from dark to light."""
    return [tuple(min(255, int(c * (0.45 + 0.75 * i / (count - 1)))) for c in base)
            for i in range(count)]


def body():
    palette = shades((150, 160, 175), 8)
    pixels = []
    for y in range(SIZE):
        row = []
        for x in range(SIZE):
            shade = 4 + ((x * 7 + y * 3) % 5 == 0)  # brushed steel
            if x % 16 in (0, 15) or y % 16 in (0, 15):
                shade = 1  # seams between panels
            if x % 16 in (3, 12) and y % 16 in (3, 12):
                shade = 7  # rivets
            row.append(shade)
        pixels.append(row)
    return palette, pixels


def face():
    palette = shades((90, 100, 110), 6) + [(40, 210, 230), (230, 70, 40)]
    pixels = []
    for y in range(SIZE):
        row = []
        for x in range(SIZE):
            value = 3
            if 6 <= y <= 13 and 4 <= x <= 27:
                value = 6  # the visor
            elif 20 <= y <= 26 and 9 <= x <= 22:
                value = 0 if x % 3 == 0 else 1  # the mouth grille
            elif x in (0, SIZE - 1) or y in (0, SIZE - 1):
                value = 0
            row.append(value)
        pixels.append(row)
    return palette, pixels


def eyes():
    palette = [(255, 240, 120), (255, 160, 40), (120, 40, 10)] + [(0, 0, 0)] * 252 + [MASK]
    pixels = []
    for y in range(SIZE):
        row = []
        for x in range(SIZE):
            value = 255
            for cx in (9, 22):
                d = (x - cx) ** 2 + (y - 16) ** 2
                if d <= 9:
                    value = 0
                elif d <= 25:
                    value = 1
                elif d <= 36 and value == 255:
                    value = 2
            row.append(value)
        pixels.append(row)
    return palette, pixels


def helmet():
    palette = shades((200, 60, 40), 6) + shades((240, 230, 210), 2)
    pixels = []
    for y in range(SIZE):
        row = []
        for x in range(SIZE):
            value = 2 + (y * 4) // SIZE
            if 13 <= x <= 18:
                value = 7 if (x + y) % 6 else 6  # the stripe
            row.append(value)
        pixels.append(row)
    return palette, pixels


def main():
    os.makedirs(OUT, exist_ok=True)
    for name, make in (("robot_body.bmp", body), ("robot_face.bmp", face),
                       ("Robot_Eyes.BMP", eyes), ("helmet.bmp", helmet)):
        write_bmp(name, *make())


if __name__ == "__main__":
    main()
