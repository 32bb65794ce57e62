"""The thread of the maintenance services: updates and network."""

import asyncio
import threading
from collections.abc import Callable, Coroutine
from concurrent.futures import Future
from contextlib import suppress
from typing import Any, TypeAlias, TypeVar

from .program_errors import PRESS_QUIET_SECS, ErrorReporter
from .machine_thread import Command

Task: TypeAlias = asyncio.Task[None]
T = TypeVar("T")


class ServiceThread:
    """The thread "demo-services", with an asyncio loop for what takes long and must not hold up the machine.

    `post` may be called from any thread, `spawn` and `sleep` on this one only. What belongs to it
    needs no lock.
    """

    def __init__(self, time_factor: float) -> None:
        """`time_factor` is the speed of the machine's time against real time."""
        self._time_factor = time_factor
        self._errors = ErrorReporter(PRESS_QUIET_SECS)
        self._loop = asyncio.new_event_loop()
        self._loop.set_exception_handler(self._report_context)
        self._thread = threading.Thread(target=self._run, name="demo-services", daemon=True)

    def start(self) -> None:
        """Starts the thread."""
        self._thread.start()

    def post(self, command: Command) -> None:
        """Has a command run on the thread, soon and after all earlier ones."""
        with suppress(RuntimeError):  # The thread has ended: nobody waits for this any more.
            self._loop.call_soon_threadsafe(self._guarded, command)

    def spawn(self, work: Coroutine[Any, Any, None]) -> Task:
        """Has work done beside all other. Cancelling it makes it tidy up and end; `stop` does that, too."""
        task = self._loop.create_task(work)
        task.add_done_callback(self._report)
        return task

    @property
    def now(self) -> float:
        """Seconds of the machine's time, from an arbitrary beginning."""
        return self._loop.time() * self._time_factor

    async def sleep(self, secs: float) -> None:
        """Waits for `secs` seconds of the machine's time."""
        await asyncio.sleep(secs / self._time_factor)

    @staticmethod
    async def done_by(post: Callable[[Command], None], function: Callable[[], T]) -> T:
        """Has another thread call a function, and waits for the result. `post` hands commands to it."""
        answer: Future[T] = Future()

        def call() -> None:
            if answer.set_running_or_notify_cancel():
                try:
                    answer.set_result(function())
                except Exception as error:  # pylint: disable=broad-exception-caught
                    answer.set_exception(error)

        post(call)
        return await asyncio.wrap_future(answer)

    def stop(self) -> None:
        """Cancels all work, waits until it has tidied up, and ends the thread."""
        if self._thread.is_alive():
            self._loop.call_soon_threadsafe(self._loop.stop)
            self._thread.join()
        self._loop.close()

    def _run(self) -> None:
        self._loop.run_forever()
        self._loop.run_until_complete(_cancel_the_others())

    def _guarded(self, command: Command) -> None:
        """An error in one command is the operator's to see, and no other command's."""
        try:
            command()
        except Exception:  # pylint: disable=broad-exception-caught
            self._errors.report()

    def _report(self, task: Task) -> None:
        if not task.cancelled():
            self._guarded(task.result)

    def _report_context(self, _loop: asyncio.AbstractEventLoop, context: dict[str, Any]) -> None:
        """What asyncio finds out by itself, and would only log: a callback that failed, a task that nobody
        awaited."""

        def fail() -> None:
            raise context.get("exception") or RuntimeError(context["message"])

        self._guarded(fail)


async def _cancel_the_others() -> None:
    others = asyncio.all_tasks() - {asyncio.current_task()}
    for task in others:
        task.cancel()
    await asyncio.gather(*others, return_exceptions=True)
