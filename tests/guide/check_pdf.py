"""Checks the user's guide as a reader uses it: its pages, links, contents and bookmarks, and that it was made of
the present source.

Usage: check_pdf.py GUIDE.pdf GUIDE.html
"""

import hashlib
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

PAGES = range(12, 17)
A4 = (595.28, 841.89)
MOST_BYTES = 1_200_000


def text_of(token):
    """The text of a PDF string, literal or in hexadecimal."""
    if token.startswith(b"<"):
        return bytes.fromhex(token[1:-1].decode()).decode("utf-16")
    return re.sub(rb"\\(.)", rb"\1", token[1:-1]).decode("latin-1")


def strings(pattern, data):
    return [text_of(found) for found in re.findall(pattern + rb" (<[0-9a-f]*>|\((?:\\.|[^()\\])*\))", data)]


def objects(data):
    return [found.group(1) for found in re.finditer(rb"\d+ 0 obj\n(.*?)\nendobj", data, re.DOTALL)]


def main():
    data = pathlib.Path(sys.argv[1]).read_bytes()
    source_bytes = pathlib.Path(sys.argv[2]).read_bytes()
    source = ElementTree.fromstring(source_bytes)
    headings = {element.get("id"): "".join(element.itertext())
                for element in source.iter() if element.tag in ("h1", "h2") and "id" in element.attrib}
    wrong = []

    def check(holds, text):
        if not holds:
            wrong.append(text)

    check(data.startswith(b"%PDF-") and data.rstrip().endswith(b"%%EOF"), "it is no whole PDF file")
    check(len(data) <= MOST_BYTES, f"it has {len(data)} bytes")
    parts = objects(data)
    pages = [part for part in parts if re.search(rb"/Type /Page\n", part)]
    check(len(pages) in PAGES, f"it has {len(pages)} pages")
    for page in pages:
        box = [float(number) for number in re.search(rb"/MediaBox \[ ([^]]*)\]", page).group(1).split()]
        check(all(abs(a - b) < 0.1 for a, b in zip(box[2:], A4)), f"a page is {box}")

    places = set(strings(rb"", re.search(rb"/Dests <<\n/Names \[(.*?)\]\n>>", data, re.DOTALL).group(1)))
    links = [strings(rb"/Dest", part) for part in parts if b"/Subtype /Link" in part]
    check(links and all(link and link[0] in places for link in links), "a link leads nowhere")
    told = {link[0] for link in links if link}
    titles = [title for part in parts if b"/Parent" in part for title in strings(rb"/Title", part)]
    for name, heading in headings.items():
        check(name in places, f"no place is called {name}")
        check(name in told, f"the contents do not lead to {name}")
        check(heading in titles, f"no bookmark says {heading}")
    check(len(titles) == len(headings), f"{len(titles)} bookmarks for {len(headings)} headings")
    digest = hashlib.sha256(source_bytes).hexdigest().encode()
    check(b"/source (" + digest + b")" in data, "it was not made of the present source: run scripts/guide.sh")

    if wrong:
        sys.exit("\n".join(f"{sys.argv[1]}: {text}" for text in wrong))
    print(f"{len(pages)} pages, {len(links)} links, {len(titles)} bookmarks, {len(data)} bytes")


if __name__ == "__main__":
    main()
