#!/usr/bin/python3
"""Makes the desktop icons of an installed Quarle from the mascot's resting
frame: the background colour becomes transparent, the figure is cut to its
outline, centred on a square and scaled to each size of the icon theme.

Needs Debian's python3-pil. The results are committed, so a build needs
nothing of this:  /usr/bin/python3 packaging/make_icons.py
"""
import os

from PIL import Image

HERE = os.path.dirname(os.path.abspath(__file__))
FRAME = os.path.join(HERE, "..", "data", "assistant", "quarle0.png")
SIZES = (16, 32, 48, 64, 128, 256)


def main():
    frame = Image.open(FRAME).convert("RGBA")
    background = frame.getpixel((0, 0))
    pixels = [(0, 0, 0, 0) if p == background else p for p in frame.getdata()]
    frame.putdata(pixels)
    figure = frame.crop(frame.getbbox())
    side = max(figure.size) + 4
    square = Image.new("RGBA", (side, side), (0, 0, 0, 0))
    square.paste(figure, ((side - figure.width) // 2, (side - figure.height) // 2))
    for size in SIZES:
        icon = square.resize((size, size), Image.LANCZOS if size < side else Image.NEAREST)
        icon.save(os.path.join(HERE, "icons", "quarle-%d.png" % size), optimize=True)


if __name__ == "__main__":
    main()
