"""The documents: each is reached from the README by links that lead somewhere, and the pictures stay small.

Usage: documents.py ROOT
"""

import pathlib
import re
import sys
from urllib.parse import unquote

MOST_PICTURES = 2_000_000  # bytes in all: every new set stays in the history beside the old ones
PICTURES = {".png", ".jpg", ".jpeg", ".gif", ".webp"}
LINK = re.compile(r'\]\(([^)\s]+)\)|(?:href|src)="([^"]+)"')


def links_of(document):
    for found in LINK.finditer(document.read_text(encoding="utf-8")):
        link = unquote((found[1] or found[2]).partition("#")[0])
        if link and not re.match("[a-z]+:", link):
            yield link


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    wrong = []
    reached = set()
    ahead = [root / "README.md"]
    while ahead:
        document = ahead.pop()
        if document in reached:
            continue
        reached.add(document)
        # What the guide shows is taken by the program itself, when the guide is made.
        if document.suffix != ".md":
            continue
        for link in links_of(document):
            target = (document.parent / link).resolve()
            if target.exists():
                ahead.append(target)
            else:
                wrong.append(f"{document.relative_to(root)} leads to {link}, which is not there")
    files = [file for file in sorted((root / "docs").rglob("*")) if file.is_file()]
    wrong += [f"nothing leads to {file.relative_to(root)}" for file in files if file not in reached]
    pictures = [file for folder in ("docs", "skins/fine", "packaging") for file in (root / folder).rglob("*")
                if file.suffix in PICTURES]
    weight = sum(file.stat().st_size for file in pictures)
    if not pictures or weight > MOST_PICTURES:
        wrong.append(f"{len(pictures)} pictures weigh {weight} bytes")
    print("\n".join(wrong) or f"{len(files)} documents, {weight} bytes of pictures")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
