"""What the screen shows, read by a connection of our own. Images are (height, width, 3) arrays, red first; rectangles
are (x, y, width, height) in native pixels, from the top left."""

import io
import os

import numpy
from PIL import Image
from Xlib import X

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "out")


def grab(display, rectangle=None):
    """The screen without the cursor."""
    root = display.screen().root
    if rectangle is None:
        rectangle = (0, 0, display.screen().width_in_pixels, display.screen().height_in_pixels)
    x, y, width, height = rectangle
    rows = max(1, (1 << 22) // (width * 4))
    strips = []
    for top in range(0, height, rows):
        count = min(rows, height - top)
        reply = root.get_image(x, y + top, width, count, X.ZPixmap, 0xFFFFFFFF)
        strips.append(numpy.frombuffer(reply.data, numpy.uint8).reshape(count, width, 4))
    return numpy.ascontiguousarray(numpy.concatenate(strips)[..., 2::-1])


def pixel(display, x, y):
    return tuple(int(part) for part in grab(display, (x, y, 1, 1))[0, 0])


def cursor(display):
    """The pointer's picture: premultiplied (height, width, 4) array, red first, and the place of its top left."""
    display.xfixes_query_version()
    image = display.xfixes_get_cursor_image(display.screen().root)
    values = numpy.array(image.cursor_image, numpy.uint32).reshape(image.height, image.width)
    parts = numpy.stack([(values >> shift) & 255 for shift in (16, 8, 0, 24)], axis=-1).astype(numpy.uint8)
    return parts, image.x - image.xhot, image.y - image.yhot


def with_cursor(display, image, origin=(0, 0)):
    """`image`, grabbed at `origin`, with the pointer drawn over it. Also the mask of the pixels where the pointer is
    half transparent, as those may round either way."""
    parts, left, top = cursor(display)
    result = image.astype(numpy.int32).copy()
    soft = numpy.zeros(image.shape[:2], bool)
    for row in range(parts.shape[0]):
        for column in range(parts.shape[1]):
            y, x = top + row - origin[1], left + column - origin[0]
            alpha = int(parts[row, column, 3])
            if alpha == 0 or not (0 <= y < image.shape[0] and 0 <= x < image.shape[1]):
                continue
            result[y, x] = parts[row, column, :3] + (result[y, x] * (255 - alpha) + 127) // 255
            soft[y, x] = alpha != 255
    return numpy.clip(result, 0, 255).astype(numpy.uint8), soft


def decoded(data):
    """A PNG or JPEG by a decoder that isn't the program's."""
    return numpy.asarray(Image.open(io.BytesIO(data)).convert("RGB"))


def read(path):
    with open(path, "rb") as file:
        return decoded(file.read())


def not_opaque(path):
    """Where a PNG isn't opaque."""
    return numpy.asarray(Image.open(path).convert("RGBA"))[..., 3] < 255


def save(image, name):
    os.makedirs(OUT, exist_ok=True)
    path = os.path.normpath(os.path.join(OUT, name))
    Image.fromarray(image).save(path, compress_level=1)
    return path


def difference(expected, actual, soft=None):
    """Nothing when the images are the same, else a sentence. Where `soft`, a difference of 1 is rounding."""
    if expected.shape != actual.shape:
        return f"{size_text(actual)} pixels instead of {size_text(expected)}"
    distance = numpy.abs(expected.astype(numpy.int16) - actual).max(axis=-1)
    if soft is not None:
        distance[soft & (distance <= 1)] = 0
    wrong = numpy.argwhere(distance)
    if not len(wrong):
        return ""
    (top, left), (bottom, right) = wrong.min(axis=0), wrong.max(axis=0)
    y, x = wrong[0]
    return (f"{len(wrong)} of {distance.size} pixels differ, within x {left}..{right}, y {top}..{bottom}; the first, "
            f"({x}, {y}), is {tuple(actual[y, x])} instead of {tuple(expected[y, x])}")


def size_text(image):
    return f"{image.shape[1]}x{image.shape[0]}"
