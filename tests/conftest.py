import os

import pytest

from harness.display import Display
from harness.program import Program
from harness.server import Server
from harness.session import Session, bwrap_works


@pytest.fixture
def make(request):
    """make(kind, ...) creates a Display, Program or the like, and closes it at the end of the test."""

    def create(kind, *arguments):
        for path in getattr(kind, "REQUIRED", []):
            if not os.path.exists(path):
                pytest.skip(f"{path} is not installed")
        if issubclass(kind, Session) and not bwrap_works():
            pytest.skip("bwrap cannot make a session of its own here")
        created = kind(*arguments)
        request.addfinalizer(created.close)
        if hasattr(created, "log"):
            request.addfinalizer(lambda: print(created.log()))  # pytest shows it when the test fails
        return created

    return create


@pytest.fixture
def display(make):
    return make(Display)


@pytest.fixture
def program(make, display):
    return make(Program, display)


@pytest.fixture
def server(make):
    return make(Server)
