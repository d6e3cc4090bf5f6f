#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws a small recording to play back: a chessboard that is turned before a stereo camera, as for calibrating it.

    docs/make_recording.py FOLDER     writes FOLDER/left and FOLDER/right, with pictures of the same names
"""

import math
import pathlib
import sys

WIDTH, HEIGHT = 752, 480
FOCAL_LENGTH, CENTRE_X, CENTRE_Y = 460.0, 375.5, 239.5  # pixels
BASELINE = 0.12  # m
DISTANCE = 0.9  # m, to the middle of the board
SQUARE = 0.06  # m
COLUMNS, ROWS = 10, 7
TURNS = (-30, -10, 10, 30)  # degrees about the upright axis, one picture each


def grey_on_board(across, down):
    """The grey value at a place of the board in metres from its middle, or None beside it."""
    column = math.floor(across / SQUARE + COLUMNS / 2)
    row = math.floor(down / SQUARE + ROWS / 2)
    if 0 <= column < COLUMNS and 0 <= row < ROWS:
        return 30 if (column + row) % 2 else 220
    if -1 <= column <= COLUMNS and -1 <= row <= ROWS:
        return 235  # the margin
    return None


def picture(turn, eye_x):
    """One eye's picture, row by row."""
    sine, cosine = math.sin(math.radians(turn)), math.cos(math.radians(turn))
    pixels = bytearray()
    for y in range(HEIGHT):
        ray_y = (y - CENTRE_Y) / FOCAL_LENGTH
        wall = 70 + 50 * y // HEIGHT
        for x in range(WIDTH):
            # The ray (ray_x, ray_y, 1) from the eye meets the board, which has the direction (cosine, 0, sine) in it.
            ray_x = (x - CENTRE_X) / FOCAL_LENGTH
            across = (DISTANCE * ray_x + eye_x) / (cosine - sine * ray_x)
            depth = DISTANCE + across * sine
            grey = grey_on_board(across, depth * ray_y)
            pixels.append(wall if grey is None else grey)
    return pixels


def main():
    folder = pathlib.Path(sys.argv[1])
    for eye, eye_x in (("left", -BASELINE / 2), ("right", BASELINE / 2)):
        (folder / eye).mkdir(parents=True, exist_ok=True)
        for number, turn in enumerate(TURNS):
            header = f"P5\n{WIDTH} {HEIGHT}\n255\n".encode()
            (folder / eye / f"{number:03}.pgm").write_bytes(header + picture(turn, eye_x))


if __name__ == "__main__":
    main()
