"""What the program says on the command line, and its statuses."""
import shutil

import pytest

from harness.program import PROGRAM, Program


def complaints(program):
    """The program's own lines; the toolkit's warnings are another matter."""
    return [line for line in program.log().splitlines() if line.startswith("tellmar: ")]


def test_help_version_and_list_need_no_display(make):
    program = make(Program)
    program.environment["TZ"] = "NZST-12NZDT,M9.5.0,M4.1.0/3"
    for option, beginning in ("--help", "Usage: tellmar"), ("--version", "tellmar "), ("--list", ""):
        assert program.run("--demo", option) == 0
        assert program.output().startswith(beginning)
        assert not program.log()
    quakes = program.output().splitlines()[1:]
    assert len(quakes) == 10
    assert quakes[0].split()[:2] == ["1", "7.80"]
    assert quakes[0].endswith("  2016-11-13 11:02:56  2016-11-14 00:02:56 NZDT")  # UTC and local


def test_the_list_says_why_there_is_nothing(program, server):
    (program.path / "broken.xml").write_text("<quakeml>\n</quake>")
    for document, why in (("no/such.xml", "such.xml: no such file"),
                          ("broken.xml", "broken.xml: not XML, line 2: mismatched tag")):
        assert program.run("--list", "--feed", str(program.path / document)) == 1
        assert complaints(program) == [f"tellmar: {why}"]
    server.serve("Number of events exceeds the limit\nof 10000", 413)
    assert program.run("--list", "--service", server.url) == 1
    assert complaints(program) == ["tellmar: 127.0.0.1: HTTP status 413: Number of events exceeds the limit"]
    server.serve("", 204)
    assert program.run("--list", "--service", server.url) == 0
    assert "no earthquakes" in program.output()


@pytest.mark.parametrize("option", ["--list", "--help", "--version"])
def test_output_that_cannot_be_written_is_an_error(program, option):
    (program.path / "stdout").symlink_to("/dev/full")
    assert program.run("--demo", option) == 1
    assert complaints(program) == ["tellmar: cannot write to standard output"]


@pytest.mark.parametrize("option, name", [("--demo", ""), ("--configure", ":4711")])
def test_without_a_display_one_line_says_so(program, option, name):
    program.environment["DISPLAY"] = name
    assert program.run(option) == 1
    assert complaints(program) == ["tellmar: cannot open a display"]


@pytest.mark.parametrize("option, given", [("--window-id=0x7654321", ""), ("--root", "0x7654321")])
def test_a_window_that_does_not_exist_is_named_in_one_line(program, option, given):
    program.environment["XSCREENSAVER_WINDOW"] = given
    assert program.run("--demo", option) == 1
    assert ["0x7654321" in each for each in complaints(program)] == [True]


def test_a_user_is_told_of_an_unknown_option_and_a_hosts_saver_goes_on(display, program):
    assert program.run("--list", "--demo", "--colour") == 2
    assert "colour" in complaints(program)[0]
    program.environment["XSCREENSAVER_WINDOW"] = hex(display.create_window(1280, 720).id)
    program.start("--demo", "--colour", "--verbose", "--speed", "30")
    program.wait_for("tick")
    assert program.count("colour") == 1


@pytest.mark.parametrize("folder, status", [("plain", 0), ("with a blank", 1)])
def test_a_program_is_registered_by_its_path_unless_a_list_cannot_hold_it(make, tmp_path, folder, status):
    (tmp_path / folder).mkdir()
    program = make(Program, None, shutil.copy(PROGRAM, tmp_path / folder / "tellmar"))
    assert program.run("--register") == status
    settings = program.path / "home" / ".xscreensaver"
    assert settings.exists() == (status == 0)
    assert status or f"{tmp_path}/plain/tellmar --root" in settings.read_text()


def test_starting_when_idle_is_switched_on_for_later_sessions_and_off(make):
    program = make(Program)
    entry = program.path / "settings/autostart/tellmar-idle.desktop"
    for arguments, answer in (
        (["--idle"], "does not start by itself"),
        (["--idle", "3"], "after 3 minutes without input, from your next session on"),
        (["--idle"], "after 3 minutes without input, but not in this session"),
        (["--idle=1"], "after 1 minute without input"),
    ):
        assert program.run(*arguments) == 0
        assert answer in program.output()
    lines = entry.read_text().splitlines()
    assert f'Exec="{PROGRAM}-idle" 1' in lines and "NotShowIn=MATE;XFCE;" in lines
    for answer in "no longer starts by itself", "nothing was changed":
        assert program.run("--idle", "off") == 0
        assert answer in program.output()
        assert not entry.exists()


def test_starting_when_idle_is_not_switched_on_where_it_cannot_work(make, display):
    program = make(Program)
    program.environment["DISPLAY"] = ":4711"
    assert program.run("--idle", "3") == 1
    assert program.count("does not report when it is idle") == 1
    assert not list(program.path.glob("settings/autostart/*"))
    (program.path / "settings/autostart").rmdir()
    (program.path / "settings/autostart").write_text("in the way")
    program.environment["DISPLAY"] = display.name
    assert program.run("--idle", "3") == 1
    assert "cannot be written; nothing was changed" in complaints(program)[0]
