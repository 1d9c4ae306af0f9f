"""Fails where two pictures show something else.

scripts/pictures_differ.py EXPECTED ACTUAL

A few pixels may differ, since another version of the font's renderer may shade an edge otherwise; a character that is
another one changes more.
"""

import sys

import PIL.Image
import PIL.ImageChops

SHADES = 64  # of 255; what an edge may be lighter or darker
PIXELS = 8


def differing_pixels(expected, actual):
    difference = PIL.ImageChops.difference(expected, actual).convert("L")
    return sum(difference.histogram()[SHADES:])


def main():
    expected, actual = (PIL.Image.open(path).convert("RGB") for path in sys.argv[1:3])
    if expected.size != actual.size:
        sys.exit(f"{sys.argv[1]}: {expected.size}, now {actual.size}")
    count = differing_pixels(expected, actual)
    if count > PIXELS:
        sys.exit(f"{sys.argv[1]}: {count} pixels are not what the windows show now")


if __name__ == "__main__":
    main()
