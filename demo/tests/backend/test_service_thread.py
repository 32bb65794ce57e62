"""The thread of the services and its loop, which is not there from the beginning."""

import threading
import unittest
from collections.abc import Callable, Coroutine
from functools import partial
from typing import Any

from controller.service_thread import ServiceThread

DEADLINE_SECS = 20.0


class ServiceThreadTest(unittest.TestCase):
    """Commands and work, from the start to the end."""

    def setUp(self) -> None:
        self.services = ServiceThread(1000.0)
        self.addCleanup(self.services.stop)
        self.seen: list[tuple[int, str]] = []

    def note(self, number: int) -> None:
        """A command that tells its thread."""
        self.seen.append((number, threading.current_thread().name))

    def spawn(self, work: Callable[[], Coroutine[Any, Any, None]]) -> None:
        """Has work begun on the thread."""

        def begin() -> None:
            self.services.spawn(work())

        self.services.post(begin)

    def handled(self) -> None:
        """Waits until all that was posted has run."""
        done = threading.Event()
        self.services.post(done.set)
        self.assertTrue(done.wait(DEADLINE_SECS))

    def test_order(self) -> None:
        """Before there is a loop, while it is made, and afterwards: each once, in order, on the thread."""
        for number in range(300):
            if number == 100:
                self.services.start()
            if number == 200:
                self.handled()
            self.services.post(partial(self.note, number))
        self.handled()
        self.assertEqual(self.seen, [(number, "demo-services") for number in range(300)])

    def test_end_at_once(self) -> None:
        """A thread that has hardly begun does what it was given, and ends."""
        self.services.post(lambda: self.note(1))
        self.services.start()
        self.services.stop()
        self.assertEqual(self.seen, [(1, "demo-services")])
        self.services.post(lambda: self.note(2))
        self.services.stop()
        self.assertEqual(len(self.seen), 1)

    def test_end_of_work(self) -> None:
        """Work that goes on is cancelled and tidies up, on the thread."""
        begun = threading.Event()

        async def work() -> None:
            begun.set()
            try:
                await self.services.sleep(1e9)
            finally:
                self.note(1)

        self.services.start()
        self.spawn(work)
        self.assertTrue(begun.wait(DEADLINE_SECS))
        self.services.stop()
        self.assertEqual(self.seen, [(1, "demo-services")])

    def test_end_while_a_program_starts(self) -> None:
        """However far its start has come, the program is killed and the thread ends."""
        for turns in range(8):
            with self.subTest(turns=turns):
                services = ServiceThread(1000.0)

                async def work() -> None:
                    await services.run(("sleep", "1000"), 1000.0)

                def turn(left: int) -> None:
                    if left:
                        services.post(lambda: turn(left - 1))
                    else:
                        stop.start()
                        begun.set()

                def begin() -> None:
                    services.spawn(work())
                    turn(turns)

                begun = threading.Event()
                stop = threading.Thread(target=services.stop, daemon=True)
                services.post(begin)
                services.start()
                self.assertTrue(begun.wait(DEADLINE_SECS))
                stop.join(DEADLINE_SECS)
                self.assertFalse(stop.is_alive())

    def test_time(self) -> None:
        """Passes as fast as the factor says, for whoever looks and for whoever sleeps."""
        woken = threading.Event()

        async def work() -> None:
            began = self.services.now
            await self.services.sleep(100.0)
            self.assertGreaterEqual(self.services.now - began, 99.0)
            woken.set()

        self.services.start()
        self.spawn(work)
        self.assertTrue(woken.wait(DEADLINE_SECS))


if __name__ == "__main__":
    unittest.main()
