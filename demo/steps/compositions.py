# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Files of pictures: single ones, one that moves, and a sheet of many."""

from PIL import Image, ImageDraw, ImageFont

SHEET_COLUMNS = 9
SHEET_COLOUR = (0x3b, 0x40, 0x48)
SHEET_GAP = 16
LABEL_HEIGHT = 28


def save(picture, path):
    """Saves a picture. Equal pictures give equal files."""
    picture.save(path, optimize=True)


def save_moving(frames, still, path):
    """Saves frames, each a picture and its milliseconds, as an animated PNG. Viewers that cannot show it show `still`."""
    pictures, times = zip(*frames)
    still.save(path, save_all=True, append_images=pictures, default_image=True, duration=times, loop=0)


def with_finger(picture, x, y):
    """The picture with the mark of a finger at a point."""
    radius = picture.width // 14
    # Drawn larger and scaled down, the edge is smooth.
    disc = Image.new('L', (8 * radius, 8 * radius))
    ImageDraw.Draw(disc).ellipse((0, 0, 8 * radius - 1, 8 * radius - 1), fill=110)
    disc = disc.resize((2 * radius, 2 * radius), Image.LANCZOS)
    marked = picture.copy()
    marked.paste((0x20, 0x28, 0x38), (x - radius, y - radius, x + radius, y + radius), disc)
    return marked


def sheet(pictures, font_file):
    """One picture of many of the same size, each below its label; `pictures` has the labels as keys."""
    width, height = next(iter(pictures.values())).size
    cell = width + SHEET_GAP, height + LABEL_HEIGHT + SHEET_GAP
    rows = -(-len(pictures) // SHEET_COLUMNS)
    whole = Image.new('RGB', (SHEET_COLUMNS * cell[0] + SHEET_GAP, rows * cell[1] + SHEET_GAP), SHEET_COLOUR)
    font = ImageFont.truetype(str(font_file), 18)
    for number, (label, picture) in enumerate(pictures.items()):
        row, column = divmod(number, SHEET_COLUMNS)
        left, top = SHEET_GAP + column * cell[0], SHEET_GAP + row * cell[1]
        ImageDraw.Draw(whole).text((left, top), label, font=font, fill='white')
        whole.paste(picture, (left, top + LABEL_HEIGHT))
    # The fewer colours halve the file. Those of the dialog are among them,
    # only some of the letters' smooth edges are not.
    return whole.quantize(128)
