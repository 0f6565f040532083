"""Writes the golden data files: python3 make_golden.py [FOLDER], by default golden/ beside this script.

The arithmetic is the standard library's, in whole decimals, so that the files stand on their own feet. The
values behind them are made from whole numbers; golden_test.cpp makes the same.
"""

import decimal
import pathlib
import struct
import sys

DEPTH = 3000
BINS = 1024
SOFTWARE = "Corvantine Ver2.0.6"


def single(value):
    """The nearest 32-bit real."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


def fixed(value, decimals):
    """Half away from zero, from the exact value of a binary real."""
    place = decimal.Decimal(1).scaleb(-decimals)
    with decimal.localcontext() as context:
        context.prec = 60
        number = decimal.Decimal(value).quantize(place, rounding=decimal.ROUND_HALF_UP)
    return str(abs(number) if number.is_zero() else number)


def general(value):
    return format(value, ".7G")


def steps(i):
    """Quarters of an ADC step all over the screen and a little beyond."""
    return ((i * 389) % 1049 - 524) / 4


def units(i):
    """Eighths of a plot unit, and the value that stands for everything too small."""
    return single(-30.01) if i % 7 == 0 else ((i * 331) % 481 - 240) / 8


def volts_per_step(volts_per_div):
    return single(single(single(volts_per_div) * 10) / 127)


def write(folder, name, lines, point):
    text = "".join(line.replace("@", point) + "\r\n" for line in lines)
    (folder / name).write_bytes(text.encode("cp1252"))


def numbers(values):
    return [value.replace(".", "@") for value in values]


def data_lines(volts_per_div, source, period, limit, date):
    scale = volts_per_step(volts_per_div)
    lines = numbers(fixed(single(single(steps(i)) * scale), 4) for i in range(DEPTH))
    lines += ["", "DATA FOR CH: " + source]
    lines += ["VERTICAL FULL SCALE (+/-v): " + numbers([general(single(single(volts_per_div) * 10))])[0]]
    lines += ["SAMPLE PERIOD (s): " + numbers([general(single(period))])[0]]
    if limit is not None:
        lines += ["BANDWIDTH LIMIT: " + str(limit)]
    return lines + ["DATE: " + date, "SOFTWARE: " + SOFTWARE]


def spectrum_lines(volts_per_div, decibels, channel, period, window, date):
    if decibels:
        lines = numbers(fixed(single(units(i) - 24), 1) for i in range(1, BINS + 1))
    else:
        scale = volts_per_step(volts_per_div)
        lines = numbers(
            fixed(single((units(i) + 30) / 120 / 0.5 * 128 * scale), 4) for i in range(1, BINS + 1)
        )
    lines += ["", f"FFT FOR CH: {channel}"]
    lines += ["VERTICAL FULL SCALE (+/-v): " + numbers([general(single(single(volts_per_div) * 10))])[0]]
    lines += ["FREQ STEP (Hz): " + numbers([fixed(0.5 / single(period) / 1024, 6)])[0]]
    lines += ["SPECTRAL WINDOW: " + window]
    lines += ["PLOT TYPE: " + ("dB(V) Plot" if decibels else "Linear Plot")]
    return lines + ["DATE: " + date, "SOFTWARE: " + SOFTWARE]


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent / "golden"
    folder.mkdir(exist_ok=True)
    american, german = "3/7/26, 2:05 PM", "07.03.26, 14:05"
    write(folder, "channel_point.txt", data_lines(0.3, "2", 2e-08, False, american), ".")
    write(folder, "channel_comma.txt", data_lines(0.03, "4", 0.0004, True, german), ",")
    write(folder, "math_comma.txt", data_lines(30, "1 \u00f7 3", 1e-09, None, german), ",")
    write(folder, "decibels_comma.txt", spectrum_lines(0.3, True, 5, 2e-08, "Welch!", german), ",")
    write(folder, "linear_point.txt", spectrum_lines(3, False, 1, 0.0004, "Hanning", american), ".")


if __name__ == "__main__":
    main()
