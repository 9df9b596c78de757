"""What is to be seen on a display: arrays of rows of pixels. An area is left, top, width and height."""
import numpy

from harness.processes import wait_until

MIDDLE = (320, 180, 640, 360)  # lies on every screen, and the panel of a report in it


def is_splash(pixels):
    return (pixels == (153, 179, 204)).all(-1)


def is_pink(pixels):
    return (pixels == (255, 0, 255)).all(-1)


def is_black(pixels):
    return pixels.max(-1) < 4


def is_dark(pixels):
    """As text on the splash and on the preview: black at three quarters."""
    return pixels.max(-1) < 100


def is_light(pixels):
    return pixels.min(-1) > 220


def is_map(pixels):
    """The sea and the land of a map are darker than the splash."""
    return ~is_black(pixels) & (pixels.max(-1) < 130)


def picture(display, area=None):
    return numpy.asarray(display.picture(area))


def shows(display, condition, area=None):
    """Whether the area's corners satisfy the condition and nothing in it is left in a host's pink."""
    pixels = picture(display, area)
    return condition(pixels[[0, 0, -1, -1], [0, -1, 0, -1]]).all() and not is_pink(pixels).any()


def shows_preview(display, area):
    """The still image has no large part in the splash's colour, and its text begins above the splash's."""
    left, top, width, height = area
    pixels = numpy.asarray(display.picture().crop((left, top, left + width, top + height)))  # black off the screen
    is_painted = not is_pink(pixels).any() and is_black(pixels).mean() < 0.001
    return is_painted and is_splash(pixels).mean() < 1 / 4 and is_dark(pixels[2:9, 5:]).sum() > 20


def shows_map(display, area):
    """A map has many colours, which a dark desktop has not."""
    colours = {tuple(pixel) for pixel in picture(display, area)[::8, ::8].reshape(-1, 3)}
    return len(colours) > 1000 and shows(display, is_map, area)


def wait_to_see(condition, display, area=None):
    wait_until(lambda: shows(display, condition, area))


def wait_for_report(display):
    """White letters on the panel in the middle."""
    wait_until(lambda: is_light(picture(display, MIDDLE)).sum() > 200)
