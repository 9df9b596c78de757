"""What the program says on the command line, and its statuses."""
import pytest

from harness.program import Program


@pytest.fixture
def bare(make):
    """The program without a display."""
    return make(Program)


def complaints(program):
    """The program's own lines; the toolkit's warnings are another matter."""
    return [line for line in program.log().splitlines() if line.startswith("tellmar: ")]


@pytest.mark.parametrize("option, beginning", [("--help", "Usage: tellmar"), ("--version", "tellmar ")])
def test_help_and_version_need_no_display(bare, option, beginning):
    assert bare.run(option) == 0
    assert bare.output().startswith(beginning)
    assert not bare.log()


@pytest.mark.parametrize("option, name", [("--demo", ""), ("--preview", ""), ("--configure", ""), ("--demo", ":4711")])
def test_without_a_display_one_line_says_so(bare, option, name):
    bare.environment["DISPLAY"] = name
    assert bare.run(option) == 1
    assert complaints(bare) == ["tellmar: cannot open a display"]


@pytest.mark.parametrize("option", ["--window-id=0x7654321", "--root"])
def test_a_window_that_does_not_exist_is_named_in_one_line(program, option):
    if option == "--root":
        program.environment["XSCREENSAVER_WINDOW"] = "0x7654321"
    assert program.run("--demo", option) == 1
    assert ["0x7654321" in each for each in complaints(program)] == [True]


def test_a_user_is_told_of_an_unknown_option_and_a_hosts_saver_goes_on(display, program):
    assert program.run("--list", "--demo", "--colour") == 2
    assert "colour" in complaints(program)[0]
    assert not program.output()

    program.environment["XSCREENSAVER_WINDOW"] = hex(display.create_window(1280, 720).id)
    program.start("--demo", "--colour", "--verbose", "--speed", "30")
    program.wait_for("tick")
    assert program.count("colour") == 1


def test_the_list_has_the_quakes_in_the_order_of_their_appearance(bare):
    assert bare.run("--list", "--demo") == 0
    quakes = bare.output().splitlines()[1:]
    assert len(quakes) == 10
    assert quakes[0].split()[:2] == ["1", "7.80"]
    assert "2016-11-13T11:02" in quakes[0]
    assert not bare.log()
