"""What is to be seen on a display: arrays of rows of pixels. An area is left, top, width and height."""
import numpy

from harness.processes import wait_until


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


def is_on_screen(display, area):
    left, top, width, height = area
    _, _, right, bottom = display.area_of(display.root)
    return left >= 0 and top >= 0 and left + width <= right and top + height <= bottom


def edges(display):
    """The outermost pixels of the screen."""
    _, _, width, height = display.area_of(display.root)
    strips = (0, 0, width, 1), (0, height - 1, width, 1), (0, 0, 1, height), (width - 1, 0, 1, height)
    return numpy.concatenate([picture(display, strip).reshape(-1, 3) for strip in strips])


def middle(display, part=2):
    """Around the middle of the screen, one part'th of its width and height."""
    _, _, width, height = display.area_of(display.root)
    inner = width // part, height // part
    return picture(display, ((width - inner[0]) // 2, (height - inner[1]) // 2, *inner))


def shows(display, condition, area=None):
    """Whether the area's corners satisfy the condition and nothing in it is left in a host's pink."""
    pixels = picture(display, area)
    return condition(pixels[[0, 0, -1, -1], [0, -1, 0, -1]]).all() and not is_pink(pixels).any()


def shows_preview(display, area):
    """The still image has no large part in the splash's colour, and its text begins above the splash's."""
    if not is_on_screen(display, area):
        return False
    pixels = picture(display, area)
    is_painted = not is_pink(pixels).any() and is_black(pixels).mean() < 0.001
    return is_painted and is_splash(pixels).mean() < 1 / 4 and is_dark(pixels[2:9, 5:]).sum() > 20


def wait_to_see(condition, display, area=None):
    wait_until(lambda: shows(display, condition, area))


def wait_for_report(display):
    """White letters on the panel in the middle."""
    wait_until(lambda: is_light(middle(display)).sum() > 200)
