"""Makes the user's guide from docs/guide/guide.html and the pictures that the program took of itself.

Usage: guide.py PICTURES PDF, where PICTURES is the folder that guide_pictures has filled; called by guide.sh.

What ages is not written in the source but put in here:
  <figure data-picture="face" data-width="168">   a picture, that many millimetres wide
  <ol data-parts="face"> <li data-control="RunButton" data-at="n">   the picture's numbers: each item gets its
      number drawn at that corner or side of its control, the first of those named
  <table data-facts="timebase">   a table of the program's
  <pre data-run="NAME">, <pre data-output="NAME">   a Python program, and what it prints where the saved files lie
A control that somebody who sees the picture would ask about and no item names is an error, and so is an item
without a control, a number that lies over another, and a key of the program that stands in no <kbd>.
"""

import hashlib
import json
import pathlib
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCE = ROOT / "docs/guide/guide.html"
STYLE = ROOT / "docs/guide/guide.css"
BADGE = 4.3  # millimetres, with its rim
CORNERS = {"nw": (0, 0), "n": (0.5, 0), "ne": (1, 0), "w": (0, 0.5), "c": (0.5, 0.5), "e": (1, 0.5),
           "sw": (0, 1), "s": (0.5, 1), "se": (1, 1)}


def fail(text):
    sys.exit(f"guide.py: {text}")


def contains(outer, inner):
    return (outer[0] <= inner[0] and outer[1] <= inner[1] and outer[0] + outer[2] >= inner[0] + inner[2]
            and outer[1] + outer[3] >= inner[1] + inner[3])


def put_pictures(body, pictures, folder):
    """The images, and nothing on them yet: name to the box that holds them and its size."""
    boxes = {}
    for figure in body.iter("figure"):
        name = figure.attrib.pop("data-picture")
        width = float(figure.attrib.pop("data-width"))
        if name not in pictures:
            fail(f"there is no picture {name}")
        height = width * pictures[name]["height"] / pictures[name]["width"]
        box = ElementTree.Element("div", {"class": "picture", "style": f"width:{width}mm;height:{height:.2f}mm"})
        file = next(name + ending for ending in (".png", ".jpg") if (folder / (name + ending)).exists())
        ElementTree.SubElement(box, "img", {"src": file, "alt": figure.findtext("figcaption", name)})
        figure.insert(0, box)
        figure.set("style", f"width:{width}mm")
        boxes[name] = (box, width, height)
    return boxes


def put_numbers(body, pictures, boxes):
    for parts in body.iter("ol"):
        name = parts.attrib.pop("data-parts", None)
        if name is None:
            continue
        controls = pictures[name]["controls"]
        box, width, height = boxes[name]
        told = []
        centres = []
        for number, item in enumerate(parts.findall("li"), 1):
            named = item.attrib.pop("data-control").split()
            for control in named:
                if control not in controls:
                    fail(f"{name} shows no control {control}")
                told.append(controls[control]["place"])
            left, top, across, down = controls[named[0]]["place"]
            x, y = CORNERS[item.attrib.pop("data-at", "nw")]
            dx, dy = (float(d) for d in item.attrib.pop("data-by", "0 0").split())
            centre = complex((left + across * x) * width + dx, (top + down * y) * height + dy)
            if any(abs(centre - other) < 0.9 * BADGE for other in centres):
                fail(f"number {number} of {name} lies over another")
            centres.append(centre)
            place = f"left:{centre.real - BADGE / 2:.2f}mm;top:{centre.imag - BADGE / 2:.2f}mm"
            ElementTree.SubElement(box, "span", {"style": place}).text = str(number)
        untold = [control for control, facts in controls.items()
                  if facts["asked"] and not any(contains(place, facts["place"]) for place in told)]
        if untold:
            fail(f"of {name} nobody tells what these are: {', '.join(untold)}")


def time(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6), ("ns", 1e-9)):
        if seconds >= size * 0.9999:
            return f"{seconds / size:.6g} {unit}"
    return fail(f"no unit for {seconds} s")


def timebase_rows(facts):
    depth = 3000
    yield ("Time base", "Mode", "A sample every", "Record", "In view at H x1")
    for row in facts["timebase"]:
        mode = {"RIS": "interleaved", "refresh": "refresh", "roll": "roll"}[row["mode"]]
        record = row["period"] * depth
        yield (row["label"], mode, time(row["period"]), time(record), time(record / row["expansion"]))


def put_facts(body, facts):
    for table in body.iter("table"):
        if table.attrib.pop("data-facts", None) != "timebase":
            continue
        for i, row in enumerate(timebase_rows(facts)):
            line = ElementTree.SubElement(table, "tr")
            for text in row:
                ElementTree.SubElement(line, "td" if i else "th").text = text


def put_output(body, saved):
    """Runs the guide's programs on what the instrument has saved, and shows what they print."""
    programs = {pre.attrib.pop("data-run"): "".join(pre.itertext())
                for pre in body.iter("pre") if "data-run" in pre.attrib}
    for pre in body.iter("pre"):
        name = pre.attrib.pop("data-output", None)
        if name is not None:
            run = subprocess.run([sys.executable, "-c", programs[name]], cwd=saved, capture_output=True, text=True)
            if run.returncode != 0:
                fail(f"the guide's program {name} failed:\n{run.stderr}")
            pre.text = run.stdout.rstrip()


def put_contents(body):
    contents = body.find(".//nav")
    lines = ElementTree.SubElement(contents, "ol")
    for heading in body.iter():
        if heading.tag in ("h1", "h2") and "id" in heading.attrib:
            kind = "part" if heading.tag == "h1" else "section"
            line = ElementTree.SubElement(lines, "li", {"class": kind})
            ElementTree.SubElement(line, "a", {"href": f"#{heading.get('id')}"}).text = "".join(heading.itertext())


def check_keys(body, keys):
    told = {"".join(key.itertext()) for key in body.iter("kbd")}
    missing = [key for key in keys if key not in told]
    if missing:
        fail(f"the guide tells nothing of the keys {', '.join(missing)}")


def main():
    pictures_folder, pdf = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    facts = json.loads((pictures_folder / "fast.json").read_text())
    pictures = facts["pictures"] | json.loads((pictures_folder / "slow.json").read_text())["pictures"]
    tree = ElementTree.parse(SOURCE)
    body = tree.getroot()
    boxes = put_pictures(body, pictures, pictures_folder)
    put_numbers(body, pictures, boxes)
    put_facts(body, facts)
    put_output(body, pictures_folder / "saved")
    check_keys(body, facts["shortcuts"])
    put_contents(body)

    head = body.find("head")
    digest = hashlib.sha256(SOURCE.read_bytes()).hexdigest()
    ElementTree.SubElement(head, "meta", {"name": "source", "content": digest})
    made = pictures_folder / "guide.html"
    made.write_text("<!DOCTYPE html>\n" + ElementTree.tostring(body, encoding="unicode", method="html"))
    subprocess.run(["weasyprint", "--custom-metadata", "--optimize-size", "all", "--stylesheet", STYLE, made, pdf],
                   check=True)


if __name__ == "__main__":
    main()
