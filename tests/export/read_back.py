"""Reads a saved data file as a spreadsheet of the user's locale does, and compares it with the record.

Usage: read_back.py WRITER, where WRITER is write_data_file; the locale is that of the environment.
"""

import array
import csv
import os
import pathlib
import subprocess
import sys
import tempfile

COMMA = {"de_DE.UTF-8"}
DEPTH = 3000


def main():
    locale = os.environ["LC_ALL"]
    point = "," if locale in COMMA else "."
    with tempfile.TemporaryDirectory() as folder:
        data, reals = pathlib.Path(folder) / "data.txt", pathlib.Path(folder) / "reals"
        subprocess.run([sys.argv[1], data, reals], check=True)
        raw = data.read_bytes()
        assert raw.endswith(b"\r\n") and raw.count(b"\r") == raw.count(b"\n") == raw.count(b"\r\n")
        with open(data, newline="", encoding="cp1252") as file:
            rows = list(csv.reader(file, delimiter=";" if point == "," else ","))
        expected = array.array("f", reals.read_bytes())

    assert len(rows) == DEPTH + 7, len(rows)
    assert len(expected) == DEPTH
    texts = [row[0] for row in rows[:DEPTH]]
    for text in texts:
        whole, decimals = text.split(point)
        assert len(decimals) == 4 and decimals.isdigit() and whole.lstrip("-").isdigit(), text
    values = [float(text.replace(point, ".")) for text in texts]
    assert min(values) < -2.9 and max(values) > 2.9
    worst = max(abs(value - real) for value, real in zip(values, expected))
    assert worst < 0.00005, worst

    facts = [row[0] if row else "" for row in rows[DEPTH:]]
    assert facts[:5] == [
        "",
        "DATA FOR CH: 1",
        f"VERTICAL FULL SCALE (+/-v): 0{point}3",
        f"SAMPLE PERIOD (s): 2{point}5E-08",
        "BANDWIDTH LIMIT: False",
    ], facts
    assert facts[5].startswith("DATE: ") and len(facts[5]) > len("DATE: ")
    assert facts[6] == "SOFTWARE: Corvantine Ver2.0.6"
    print(f"{locale}: off by {worst:.2e} V at most; {facts[5]}")


if __name__ == "__main__":
    main()
