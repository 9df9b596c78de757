"""Waiting for what sends no event."""
import time

PATIENCE = 40  # seconds; what takes longer, however busy the machine, never comes


def wait_until(question, patience=PATIENCE):
    """Asks again and again until the answer is true, and returns it."""
    end = time.monotonic() + patience
    while not (answer := question()):
        if time.monotonic() > end:
            raise TimeoutError(f"still {answer!r} after {patience} seconds")
        time.sleep(0.01)
    return answer
