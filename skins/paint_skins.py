#!/usr/bin/python3
"""Paints the skins of the main form.

Reads layout.json (printed by the program export_layout from the form's own table) and writes, beside itself,
Corvantine_skin_<name>.bmp at the form's size and fine/Corvantine_skin_<name>.jpg at three times that size for
screens with a scale factor; a fine picture names the bitmap that it belongs to by its SHA-1. Needs Python 3 with numpy and Pillow and the Liberation fonts.

The program takes colours from a skin: a control sits in the colour of the pixel under its own centre, a knob
on a plate that is PLATE_STEP brighter. So every tray is flat where controls stand, and every plate continues
the ground of its knob. Everything outside the outline has the key colour, so has the top right pixel.
"""

import hashlib
import json
import pathlib
import sys
from dataclasses import dataclass

import numpy as np
from PIL import Image, ImageDraw, ImageFont

HERE = pathlib.Path(__file__).resolve().parent
KEY = (255, 255, 192)
PLATE_STEP = 0x20
FINE_SCALE = 3
FONT = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"
FONT_NARROW = "/usr/share/fonts/truetype/liberation/LiberationSansNarrow-Bold.ttf"
LIGHT = np.array([-0.55, -0.83])  # from above, a little from the left


@dataclass
class Rect:
    left: float
    top: float
    right: float
    bottom: float

    @staticmethod
    def around(places, pad=0.0):
        return Rect(
            min(p.left for p in places) - pad,
            min(p.top for p in places) - pad,
            max(p.right for p in places) + pad,
            max(p.bottom for p in places) + pad,
        )

    @property
    def centre(self):
        return (self.left + self.right) / 2, (self.top + self.bottom) / 2


@dataclass
class Skin:
    name: str
    face: tuple  # colour of the material
    texture: str  # "brushed", "grain", "enamel" or "flat"
    tray: tuple  # ground of the buttons
    knob: tuple  # ground of the knobs' value labels; their plates are PLATE_STEP brighter
    bezel: tuple  # ground of the display module
    bar: tuple  # cursor bars
    thumb: tuple  # thumbs of the pan sliders
    ink: tuple  # legends on the material
    tray_ink: tuple  # legends on dark ground
    accent: tuple  # line under the brand
    lines: tuple = None  # outlines of trays and plates, for the eyes that need them


SKINS = [
    Skin("Silver", (200, 203, 206), "brushed", (50, 53, 58), (72, 76, 82), (30, 31, 34), (58, 61, 66),
         (168, 172, 178), (38, 40, 44), (206, 210, 214), (196, 56, 44)),
    Skin("Anthracite", (66, 69, 74), "grain", (38, 40, 44), (48, 51, 56), (22, 23, 25), (46, 48, 53),
         (150, 154, 160), (226, 229, 232), (200, 204, 208), (240, 160, 48)),
    Skin("Blue", (44, 74, 122), "enamel", (22, 34, 58), (30, 50, 86), (16, 20, 30), (38, 50, 74),
         (158, 172, 196), (232, 238, 246), (202, 214, 232), (250, 210, 80)),
    Skin("Contrast", (10, 10, 10), "flat", (0, 0, 0), (92, 92, 92), (0, 0, 0), (48, 48, 48),
         (255, 255, 255), (255, 255, 255), (255, 255, 255), (255, 224, 0), (255, 255, 255)),
]


class Canvas:
    """A picture in linear float RGB, addressed in logical pixels, at `scale` device pixels to each."""

    def __init__(self, width, height, scale):
        self.scale = scale
        self.size = (width, height)
        self.pixels = np.zeros((height * scale, width * scale, 3), np.float32)

    def window(self, rect, margin):
        """Slices of a part of the picture, and the coordinates of its pixel centres."""
        s = self.scale
        h, w = self.pixels.shape[:2]
        x0 = max(0, int((rect.left - margin) * s))
        x1 = min(w, int((rect.right + margin) * s) + 1)
        y0 = max(0, int((rect.top - margin) * s))
        y1 = min(h, int((rect.bottom + margin) * s) + 1)
        ys, xs = np.mgrid[y0:y1, x0:x1].astype(np.float32)
        return (slice(y0, y1), slice(x0, x1)), (xs + 0.5) / s, (ys + 0.5) / s

    def blend(self, where, alpha, colour):
        part = self.pixels[where]
        a = np.clip(alpha, 0, 1)[..., None]
        part += a * (np.asarray(colour, np.float32) - part)

    def cover(self, distance):
        """How much of a pixel lies inside a shape of that signed distance (negative inside)."""
        return np.clip(0.5 - distance * self.scale, 0, 1)


def round_rect(x, y, rect, radius):
    """Signed distance to a rounded rectangle and its outward direction."""
    cx, cy = rect.centre
    hx, hy = (rect.right - rect.left) / 2 - radius, (rect.bottom - rect.top) / 2 - radius
    px, py = x - cx, y - cy
    qx, qy = np.abs(px) - hx, np.abs(py) - hy
    ox, oy = np.maximum(qx, 0), np.maximum(qy, 0)
    outside = np.hypot(ox, oy)
    distance = outside + np.minimum(np.maximum(qx, qy), 0) - radius
    along_x = qx > qy
    nx = np.where(outside > 0, ox / np.maximum(outside, 1e-6), along_x.astype(np.float32)) * np.sign(px)
    ny = np.where(outside > 0, oy / np.maximum(outside, 1e-6), (~along_x).astype(np.float32)) * np.sign(py)
    return distance, nx, ny


def lit(nx, ny):
    """How much an edge that faces outward along (nx, ny) looks into the light, -1 to 1."""
    return nx * LIGHT[0] + ny * LIGHT[1]


def tint(colour, amount):
    """Towards white for a positive amount, towards black for a negative one."""
    c = np.asarray(colour, np.float32)
    return c + (255 - c) * amount if amount > 0 else c * (1 + amount)


def outline_rect(width, height):
    return Rect(0, 0, width, height)


OUTLINE_RADIUS = 26


def outline_distance(x, y, width, height):
    return round_rect(x, y, outline_rect(width, height), OUTLINE_RADIUS)


def material(canvas, skin, rng):
    width, height = canvas.size
    h, w = canvas.pixels.shape[:2]
    y = ((np.arange(h) + 0.5) / canvas.scale / height)[:, None]
    x = ((np.arange(w) + 0.5) / canvas.scale / width)[None, :]
    shade = 0.05 - 0.13 * y + 0 * x
    if skin.texture == "brushed":
        # Long horizontal scratches, and the soft bands that a brushed sheet reflects.
        scratches = np.zeros((h, w), np.float32)
        for length, strength in ((160, 0.010), (60, 0.008)):
            cells = rng.standard_normal((h, w // length + 3)).astype(np.float32)
            at = np.arange(w) / length + rng.random((h, 1))
            left = np.floor(at).astype(int)
            t = (at - left).astype(np.float32)
            rows = np.arange(h)[:, None]
            scratches += strength * (cells[rows, left] * (1 - t) + cells[rows, left + 1] * t)
        shade = shade + scratches + 0.045 * np.exp(-((x - 0.22 - 0.08 * y) / 0.14) ** 2)
        shade = shade + 0.035 * np.exp(-((x - 0.80 - 0.08 * y) / 0.10) ** 2)
    elif skin.texture == "grain":
        shade = shade + 0.010 * rng.standard_normal((h, w)).astype(np.float32)
        shade = shade + 0.05 * np.exp(-(((x - 0.3) / 0.5) ** 2 + (y / 0.35) ** 2))
    elif skin.texture == "enamel":
        shade = shade + 0.10 * np.exp(-(((x - 0.35) / 0.55) ** 2 + (y / 0.30) ** 2))
        cells = rng.standard_normal((height // 3 + 2, width // 3 + 2)).astype(np.float32)
        soft = np.asarray(Image.fromarray(cells).resize((w, h), Image.BICUBIC))
        shade = shade + 0.006 * soft
    else:
        shade = np.zeros((h, w), np.float32)
    base = np.asarray(skin.face, np.float32)
    up = np.maximum(shade, 0)[..., None]
    down = np.minimum(shade, 0)[..., None]
    canvas.pixels[:] = base * (1 + down) + (255 - base) * up


def edge_of_face(canvas, skin):
    """The rolled edge of the sheet: a dark rim, a lit chamfer, a fine shadow where the flat begins."""
    width, height = canvas.size
    where, x, y = canvas.window(outline_rect(width, height), 0)
    d, nx, ny = outline_distance(x, y, width, height)
    light = lit(nx, ny)
    for inner, outer, strength in ((-5, -1.2, 0.55), (-6.2, -5, -0.25)):
        band = canvas.cover(d - outer) * (1 - canvas.cover(d - inner))
        amount = light * strength
        canvas.blend(where, band * np.clip(amount, 0, 1), (255, 255, 255))
        canvas.blend(where, band * np.clip(-amount, 0, 1) * 0.9, (0, 0, 0))
    rim = 1 - canvas.cover(d + 1.2)
    canvas.blend(where, rim * 0.85, tint(skin.face, -0.75) if skin.lines is None else skin.lines)


def tray(canvas, skin, rect, colour, radius=7.0, reach=4.0):
    """A flat recess: lip outside, and inside a shadow that ends `reach` from the edge."""
    where, x, y = canvas.window(rect, 6)
    d, nx, ny = round_rect(x, y, rect, radius)
    light = lit(nx, ny)
    lip = canvas.cover(d - 1.3) * (1 - canvas.cover(d))
    canvas.blend(where, lip * np.clip(-light, 0, 1) * 0.55, (255, 255, 255))
    canvas.blend(where, lip * np.clip(light, 0, 1) * 0.60, (0, 0, 0))
    inside = canvas.cover(d)
    canvas.blend(where, inside, colour)
    fall = np.clip(1 + (d + 0.5 / canvas.scale) / reach, 0, 1) ** 2 * inside
    canvas.blend(where, fall * np.clip(light * 0.75 + 0.25, 0, 1) * 0.62, (0, 0, 0))
    canvas.blend(where, fall * np.clip(-light, 0, 1) * 0.10, (255, 255, 255))
    if skin.lines is not None:
        ring = canvas.cover(np.abs(d + 0.75) - 0.75)
        canvas.blend(where, ring, skin.lines)


def plate(canvas, skin, rect, colour, radius=7.0):
    """A raised plate with a chamfered edge and a shadow on the face."""
    where, x, y = canvas.window(rect, 10)
    shadow, _, _ = round_rect(x - 1.2, y - 2.4, rect, radius)
    canvas.blend(where, np.clip(1 - shadow / 5.0, 0, 1) ** 2 * 0.38, (0, 0, 0))
    d, nx, ny = round_rect(x, y, rect, radius)
    light = lit(nx, ny)
    canvas.blend(where, canvas.cover(d - 0.8), tint(colour, -0.7))
    canvas.blend(where, canvas.cover(d), colour)
    chamfer = canvas.cover(d) * (1 - canvas.cover(d + 1.6))
    canvas.blend(where, chamfer * np.clip(light, 0, 1) * 0.55, (255, 255, 255))
    canvas.blend(where, chamfer * np.clip(-light, 0, 1) * 0.55, (0, 0, 0))
    if skin.lines is not None:
        canvas.blend(where, canvas.cover(np.abs(d + 0.75) - 0.75), skin.lines)


def spot(canvas, rect, colour):
    """A plain rectangle of whole pixels."""
    s = canvas.scale
    canvas.pixels[int(rect.top * s):int(rect.bottom * s), int(rect.left * s):int(rect.right * s)] = colour


def text(canvas, words, left, centre_y, size, colour, font=FONT_NARROW, spacing=0.0, anchor="left", relief=None):
    """Words in capitals height `size`, letters `spacing` apart; relief is the colour of an engraving's edge."""
    s = canvas.scale
    over = 4  # glyphs are drawn larger and brought down, so that spacing is not bound to whole pixels
    face = ImageFont.truetype(font, round(size * s * over))
    advances = [face.getlength(c) + spacing * s * over for c in words]
    width = sum(advances) - spacing * s * over
    box = face.getbbox("H")
    mask = Image.new("L", (int(width) + 4 * over * s, (box[3] + 8 * over)), 0)
    draw = ImageDraw.Draw(mask)
    x = 2 * over
    for c, advance in zip(words, advances):
        draw.text((x, 0), c, fill=255, font=face)
        x += advance
    mask = mask.resize((max(1, mask.width // over), max(1, mask.height // over)), Image.LANCZOS)
    alpha = np.asarray(mask, np.float32) / 255
    logical = width / over / s
    if anchor == "centre":
        left -= logical / 2
    elif anchor == "right":
        left -= logical
    x0 = round((left) * s) - 2
    y0 = round(centre_y * s - (box[1] + box[3]) / 2 / over)

    def put(dx, dy, strength, ink):
        top, start = y0 + dy, x0 + dx
        where = (slice(top, top + alpha.shape[0]), slice(start, start + alpha.shape[1]))
        part = alpha[: max(0, canvas.pixels.shape[0] - top), : max(0, canvas.pixels.shape[1] - start)]
        canvas.blend(where, part * strength, ink)

    if relief is not None:
        put(0, max(1, round(s * 0.75)), 0.5, relief)
    put(0, 0, 1.0, colour)
    return logical


def mark(canvas, x0, y0, size, skin):
    """The sign of the house: an open ring, read as a C and as a knob, with a trace running through it."""
    rect = Rect(x0, y0, x0 + size, y0 + size)
    where, x, y = canvas.window(rect, 2)
    cx, cy = rect.centre
    r = np.hypot(x - cx, y - cy)
    angle = np.degrees(np.arctan2(y - cy, x - cx))
    ring = canvas.cover(np.abs(r - size * 0.38) - size * 0.085) * (np.abs(angle) > 34)
    canvas.blend(where, ring, skin.ink)
    u = (x - cx) / size
    wave = cy - size * 0.20 * np.sin(2 * np.pi * u * 1.55) * np.exp(-(u / 0.42) ** 2)
    slope = np.gradient(wave, axis=1) * canvas.scale
    trace = canvas.cover((np.abs(y - wave) / np.sqrt(1 + slope**2)) - size * 0.055)
    canvas.blend(where, trace * (u > -0.26) * (u < 0.55), skin.accent)


def legend(canvas, skin, words, x, y, anchor="centre", on_tray=False):
    ink = skin.tray_ink if on_tray else skin.ink
    light_ink = sum(ink) > 380
    relief = None if on_tray or skin.lines else ((0, 0, 0) if light_ink else (255, 255, 255))
    text(canvas, words, x, y, 9.5, ink, spacing=0.9, anchor=anchor, relief=relief)


def paint(skin, layout, scale):
    width, height = layout["size"]
    places = {
        name: Rect(l, t, l + w, t + h)
        for name, (l, t, w, h) in ((n, c["place"]) for n, c in layout["controls"].items())
    }
    at = lambda *names: [places[n] for n in names]
    canvas = Canvas(width, height, scale)
    rng = np.random.default_rng(2026)
    material(canvas, skin, rng)
    edge_of_face(canvas, skin)

    # The display module with what belongs to the plot.
    plot = places["MainPlotCanvas"]
    module = Rect.around(at("PretriggerSlider", "MainPlotCanvas", "HorizPanSlider", "VertPanSlider",
                            "NormaliseButton"), 8)
    tray(canvas, skin, module, skin.bezel, radius=10, reach=8)
    tray(canvas, skin, Rect.around([plot], 1), (0, 0, 0), radius=1.5, reach=1)
    for name in ("VertCursorBar", "HorizCursorBar"):
        spot(canvas, places[name], skin.bar)
    # A slider's thumb takes the colour of the mark in the middle of its groove.
    for name, colour in (("PretriggerSlider", (226, 44, 36)), ("HorizPanSlider", skin.thumb),
                         ("VertPanSlider", skin.thumb)):
        slider = places[name]
        cx, cy = np.rint(slider.centre[0]), np.rint(slider.centre[1])
        along = slider.right - slider.left > slider.bottom - slider.top
        if along:
            spot(canvas, Rect(cx, slider.top + 1, cx + 1, slider.bottom - 1), colour)
        else:
            spot(canvas, Rect(slider.left + 1, cy, slider.right - 1, cy + 1), colour)

    # Status glass.
    glass = Rect.around(at("TriggerStatusLabel", "AcqModeLabel", "DemoLabel"), 4)
    glass = Rect(module.left, glass.top, module.right, glass.bottom)
    tray(canvas, skin, glass, (10, 13, 14), radius=7)

    # Knobs on plates; the plate continues the ground of the square control.
    raised = tuple(min(255, c + PLATE_STEP) for c in skin.knob)
    time_base, trigger = places["TimeBaseKnob"], places["TriggerKnob"]
    column = 48
    for knob, words in ((time_base, "TIME BASE"), (trigger, "TRIGGER")):
        cx = round(knob.centre[0] + 0.5)
        rect = Rect(cx - column, time_base.top - 4, cx + column, time_base.bottom + 4)
        plate(canvas, skin, rect, raised)
        spot(canvas, knob, raised)
        legend(canvas, skin, words, cx, rect.top - 9)
    zooms = at("HorizZoomKnob", "VertZoomKnob")
    cx = round(time_base.centre[0] + 0.5)
    rect = Rect(cx - column, zooms[0].top - 4, cx + column, zooms[1].bottom + 4)
    plate(canvas, skin, rect, raised)
    legend(canvas, skin, "ZOOM", cx, rect.top - 9)
    for knob, words in zip(zooms, "HV"):
        text(canvas, words, knob.left - 10, knob.top + 30, 12, skin.tray_ink, anchor="centre")
    for knob in [time_base, trigger, *zooms]:
        x, y = (int(v) for v in np.rint(knob.centre))
        spot(canvas, Rect(x - 2, y - 2, x + 3, y + 3), skin.knob)

    # Trays of the buttons.
    def button_tray(names, words, pad=4, left=None, right=None):
        rect = Rect.around(at(*names), pad)
        if left is not None:
            rect.left, rect.right = left, right
        tray(canvas, skin, rect, skin.tray, radius=6, reach=3)
        for name, word in zip(names, words):
            legend(canvas, skin, word, places[name].centre[0], rect.top - 7)
        return rect

    right_column = round(trigger.centre[0] + 0.5)
    button_tray(["TrigModeButton", "TrigTypeButton"], ["MODE", "TYPE"], 4, right_column - column,
                right_column + column)
    button_tray(["SampleDotsButton", "SkinColourImage"], ["DOTS", "SKIN"], 4, right_column - column,
                right_column + column)
    window_buttons = ["UsersGuideButton", "FullScreenButton", "MinimiseMostlyButton", "MinimiseButton",
                      "CloseButton"]
    tray(canvas, skin, Rect.around(at(*window_buttons), 4), skin.tray, radius=6, reach=3)
    run = places["RunButton"]
    rect = Rect(cx - column, glass.bottom - 108, right_column + column, glass.bottom)
    tray(canvas, skin, rect, skin.tray, radius=10, reach=8)

    # Brand.
    top = places["CloseButton"]
    y = top.centre[1]
    mark(canvas, module.left + 4, y - 12, 24, skin)
    relief = None if skin.lines else ((0, 0, 0) if sum(skin.ink) > 380 else (255, 255, 255))
    run_on = module.left + 36
    w = text(canvas, "CORVANTINE", run_on, y, 17, skin.ink, font=FONT, spacing=3.0, relief=relief)
    text(canvas, "USB OSCILLOSCOPE", run_on + w + 14, y + 2.5, 9, skin.ink, spacing=1.4, relief=relief)
    return canvas


def save_bmp(canvas, path):
    width, height = canvas.size
    xs, ys = np.meshgrid(np.arange(width) + 0.5, np.arange(height) + 0.5)
    d, _, _ = outline_distance(xs, ys, width, height)
    pixels = np.clip(np.rint(canvas.pixels), 0, 255).astype(np.uint8)
    inside = d <= 0
    # A pixel of the face may not have the key colour by chance.
    clash = inside & (pixels == KEY).all(axis=2)
    pixels[clash] = (254, 254, 192)
    pixels[~inside] = KEY
    Image.fromarray(pixels, "RGB").save(path, "BMP")


def main():
    layout = json.loads((HERE / "layout.json").read_text())
    only = sys.argv[1:]
    (HERE / "fine").mkdir(exist_ok=True)
    for skin in SKINS:
        if only and skin.name not in only:
            continue
        stem = f"Corvantine_skin_{skin.name}"
        bitmap = HERE / f"{stem}.bmp"
        save_bmp(paint(skin, layout, 1), bitmap)
        fine = paint(skin, layout, FINE_SCALE)
        pixels = np.clip(np.rint(fine.pixels), 0, 255).astype(np.uint8)
        Image.fromarray(pixels, "RGB").save(HERE / "fine" / f"{stem}.jpg", quality=92, subsampling=0,
                                             comment="Skin: " + hashlib.sha1(bitmap.read_bytes()).hexdigest())
        print(stem)


if __name__ == "__main__":
    main()
