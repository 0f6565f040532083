"""Runs the Python program of the user's guide on saved files, as a reader would.

Usage: run_python.py GUIDE.html CHANNEL SPECTRUM "TEXT THAT IS PRINTED"...
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree


def main():
    guide, channel, spectrum, *expected = sys.argv[1:]
    programs = [pre for pre in ElementTree.parse(guide).getroot().iter("pre") if pre.get("data-run") == "read"]
    assert len(programs) == 1
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(channel, pathlib.Path(folder) / "CorvantineData.ch1data.txt")
        shutil.copy(spectrum, pathlib.Path(folder) / "CorvantineData.ch1fft.txt")
        program = "".join(programs[0].itertext())
        run = subprocess.run([sys.executable, "-c", program], cwd=folder, capture_output=True, text=True)
    print(run.stdout, run.stderr)
    assert run.returncode == 0
    for text in expected:
        assert text in run.stdout, text


if __name__ == "__main__":
    main()
