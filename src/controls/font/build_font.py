#!/usr/bin/python3
"""Builds Corvantine.ttf from the drawings in glyphs/. Needs Debian's python3-fontforge.

Each drawing is 1000 by 1000 units with its middle at (500, 500), made of filled shapes without strokes; its file
name is the character.
"""

import os
import pathlib
import sys

# The same sources give the same file on every day.
os.environ["SOURCE_DATE_EPOCH"] = "1577836800"

import fontforge  # noqa: E402  (reads the variable above)

HERE = pathlib.Path(__file__).resolve().parent
EM = 1000
DESCENT = 200  # a caption is centred by its height, so the middle of the em is the middle of the button


def build(target):
    font = fontforge.font()
    font.encoding = "UnicodeFull"
    font.em = EM
    font.ascent = EM - DESCENT
    font.descent = DESCENT
    font.fontname = font.familyname = font.fullname = "Corvantine"
    font.weight = "Regular"
    font.version = "1.0"
    font.copyright = "Drawn for Corvantine."
    font.os2_typoascent = font.hhea_ascent = font.os2_winascent = EM - DESCENT
    font.os2_typodescent = font.hhea_descent = -DESCENT
    font.os2_windescent = DESCENT
    font.os2_typolinegap = font.hhea_linegap = 0
    for metric in ("os2_typoascent", "os2_typodescent", "hhea_ascent", "hhea_descent", "os2_winascent", "os2_windescent"):
        setattr(font, metric + "_add", False)  # the values stand as they are

    blank = font.createChar(ord(" "), "space")
    blank.width = EM
    for drawing in sorted((HERE / "glyphs").glob("*.svg")):
        glyph = font.createChar(ord(drawing.stem))
        glyph.importOutlines(str(drawing))
        glyph.removeOverlap()
        glyph.correctDirection()
        glyph.round()
        glyph.width = EM
    font.generate(str(target), flags=("opentype", "no-FFTM-table"))


if __name__ == "__main__":
    build(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "Corvantine.ttf")
