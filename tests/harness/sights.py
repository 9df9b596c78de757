"""What is to be seen on a display. Pictures are arrays of rows of pixels, areas left, top, width and height."""
import numpy

from harness.waiting import wait_until

SPLASH = (153, 179, 204)


def is_splash(pixels):
    return (pixels == SPLASH).all(-1)


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
    image = display.picture()
    if area:
        left, top, width, height = area
        image = image.crop((left, top, left + width, top + height))  # black beyond the screen
    return numpy.asarray(image)


def corners(pixels):
    return pixels[[0, 0, -1, -1], [0, -1, 0, -1]]


def edges(pixels):
    return numpy.concatenate([pixels[0], pixels[-1], pixels[:, 0], pixels[:, -1]])


def middle(pixels, part=2):
    """The part of the picture around its middle that has one part'th of its width and height."""
    height, width, _ = pixels.shape
    top, left = (height - height // part) // 2, (width - width // part) // 2
    return pixels[top : height - top, left : width - left]


def shows(display, condition, area=None):
    """Whether the corners of the area satisfy the condition and nothing in it is left in a host's pink."""
    pixels = picture(display, area)
    return condition(corners(pixels)).all() and not is_pink(pixels).any()


def shows_preview(display, area):
    """The still image has no large part in the splash's colour, and its text begins above the splash's."""
    pixels = picture(display, area)
    is_painted = not is_pink(pixels).any() and is_black(pixels).mean() < 0.001
    return is_painted and is_splash(pixels).mean() < 1 / 4 and is_dark(pixels[2:9, 5:]).sum() > 20


def wait_to_see(condition, display, area=None):
    wait_until(lambda: shows(display, condition, area))


def picture_at_rest(display):
    """Two pictures that are equal, one soon after the other."""
    before = picture(display)

    def is_at_rest():
        nonlocal before
        before, earlier = picture(display), before
        return numpy.array_equal(before, earlier)

    wait_until(is_at_rest)
    return before
