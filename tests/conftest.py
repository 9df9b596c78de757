import pytest

from harness.display import Display
from harness.program import Program
from harness.server import Server


@pytest.fixture
def make(request):
    """make(kind, ...) creates a Display, Program or the like, and closes it at the end of the test."""

    def create(kind, *arguments):
        created = kind(*arguments)
        request.addfinalizer(created.close)
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
