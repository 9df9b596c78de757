"""tools/check_includes.py finds each kind of include that points up."""

import pathlib
import subprocess

import pytest

CHECK = pathlib.Path(__file__).resolve().parents[2] / "tools/check_includes.py"


def check(root):
    return subprocess.run([CHECK, root], capture_output=True, text=True)


def write(root, path, text=""):
    (root / path).parent.mkdir(parents=True, exist_ok=True)
    (root / path).write_text(text)


@pytest.mark.parametrize(
    "path, header",
    [
        ("platform/portable/New.h", '"platform/Files.h"'),
        ("platform/New.h", '"platform/linux/Handles.h"'),
        ("platform/New.h", '"service/EventFeed.h"'),
        ("platform/linux/system/New.cpp", '"platform/linux/desktop/Window.h"'),
        ("platform/linux/system/New.cpp", '"service/EventFeed.h"'),
        ("platform/linux/desktop/New.cpp", '"platform/linux/system/Own.h"'),
        ("platform/linux/desktop/New.cpp", '"program/Options.h"'),
        ("support/New.cpp", '"service/EventFeed.h"'),
        ("service/New.cpp", '"platform/linux/Handles.h"'),
        ("service/New.cpp", '"quakes/CQuakeList.h"'),
        ("saver/New.cpp", '"program/Options.h"'),
        ("program/New.cpp", '"tests/Helper.h"'),
        ("saver/New.cpp", '"saver/Missing.h"'),
        ("service/New.cpp", "<glib.h>"),
        ("platform/New.h", "<gtk/gtk.h>"),
    ],
)
def test_an_include_that_breaks_a_rule_is_reported(tmp_path, path, header):
    if header[0] == '"' and "Missing" not in header:
        write(tmp_path, header[1:-1])
    write(tmp_path, path, f"#pragma once\n#include {header}\n")
    result = check(tmp_path)
    assert result.returncode == 1
    assert result.stdout.startswith(f"{path}:2: {header[1:-1]}: ")


def test_includes_that_point_down_pass_and_the_order_is_printed(tmp_path):
    for header in "saver/View.h", "program/Options.h":
        write(tmp_path, header)
    write(tmp_path, "program/New.cpp", '#include <gtk/gtk.h>\n#include "saver/View.h"\n')
    write(tmp_path, "tests/New.cpp", '#include "program/Options.h"\n')
    result = check(tmp_path)
    assert result.returncode == 0, result.stdout
    assert "program                 -> saver 1\n" in result.stdout


@pytest.mark.parametrize("imports", [["b", "a"], ["b", None]])
def test_a_circle_of_modules_and_one_that_is_not_preloaded_are_reported(tmp_path, imports):
    for name, imported in zip("ab", imports):
        write(tmp_path, f"resources/map/{name}.js", f'import {{x}} from "./{imported}.js";\n' if imported else "")
    preloaded = "ab" if imports[1] else "a"
    links = [f'<link rel="modulepreload" href="bundle:///map/{name}.js">' for name in preloaded]
    write(tmp_path, "resources/map.html", "\n".join(links))
    result = check(tmp_path)
    assert result.returncode == 1
    assert "resources/map/b.js: " in result.stdout
