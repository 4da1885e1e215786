"""The picture on the root window: a mosaic in which no two places look alike, so that an image taken from the wrong
place, mirrored or shifted by a pixel never passes for the right one."""

import numpy
from Xlib import X, Xatom


def mosaic(width, height):
    """Pixels as (height, width, 4) bytes in the server's order, blue first. Never grey, never dark: the dim of an
    overlay would show anywhere."""
    x = numpy.arange(width, dtype=numpy.uint32)[None, :]
    y = numpy.arange(height, dtype=numpy.uint32)[:, None]
    cell = ((x // 16) * 2654435761 ^ (y // 16) * 2246822519) >> 7
    pixels = numpy.empty((height, width, 4), numpy.uint8)
    pixels[..., 0] = 160 + (cell % 96) - (x % 2) * 8
    pixels[..., 1] = 150 + ((cell >> 8) % 96) - (y % 2) * 8
    pixels[..., 2] = 140 + (x * 50 // width) + (y * 50 // height)
    pixels[..., 3] = 255
    return pixels


def put_up(display):
    """Sets the mosaic as the root's background and under the properties by which compositors find it. Returns its
    pixels; the pixmap lives as long as the connection."""
    screen = display.screen()
    root = screen.root
    pixels = mosaic(screen.width_in_pixels, screen.height_in_pixels)
    pixmap = root.create_pixmap(screen.width_in_pixels, screen.height_in_pixels, screen.root_depth)
    put_pixels(pixmap, pixels, screen.root_depth)
    root.change_attributes(background_pixmap=pixmap)
    root.clear_area()
    for name in ("_XROOTPMAP_ID", "ESETROOT_PMAP_ID"):
        root.change_property(display.intern_atom(name), Xatom.PIXMAP, 32, [pixmap.id])
    display.sync()
    return pixels


def put_pixels(drawable, pixels, depth):
    """A request is limited in length: the picture goes in strips."""
    context = drawable.create_gc()
    height, width = pixels.shape[:2]
    rows = max(1, 200000 // (width * 4))
    for top in range(0, height, rows):
        strip = numpy.ascontiguousarray(pixels[top:top + rows])
        drawable.put_image(context, 0, top, width, strip.shape[0], X.ZPixmap, depth, 0, strip.tobytes())
    context.free()
