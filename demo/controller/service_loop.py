"""The asyncio loop of the maintenance services.

Only the services' thread imports this module, and asyncio with it: that takes a while, and the window
does not wait for it.
"""

import asyncio
from asyncio.subprocess import DEVNULL, PIPE
from collections.abc import Callable, Coroutine, Iterable
from concurrent.futures import Future
from contextlib import suppress
from typing import Any, TypeVar

from .machine_thread import Command

T = TypeVar("T")


class ServiceLoop:
    """Runs commands and coroutines on the thread that has made it. `post` alone is for any thread."""

    def __init__(self, guarded: Callable[[Command], None]) -> None:
        """`guarded` runs a command and reports what it raises."""
        self._guarded = guarded
        self._loop = asyncio.new_event_loop()
        self._loop.set_exception_handler(self._report_context)
        self._work: set[asyncio.Task[None]] = set()

    def run(self) -> None:
        """Runs until `stop`, and then until all work has been cancelled and has tidied up."""
        try:
            self._loop.run_forever()
            self._loop.run_until_complete(self._cancel_work())
        finally:
            self._loop.close()

    def stop(self) -> None:
        """Ends `run`."""
        self._loop.stop()

    def post(self, command: Command) -> None:
        """Has a command run, soon and after all earlier ones. Does nothing after the end."""
        with suppress(RuntimeError):  # The loop is closed: nobody waits for this any more.
            self._loop.call_soon_threadsafe(self._guarded, command)

    def spawn(self, work: Coroutine[Any, Any, None]) -> asyncio.Task[None]:
        """Has work done beside all other."""
        task = self._loop.create_task(work)
        self._work.add(task)
        task.add_done_callback(self._work.discard)
        task.add_done_callback(self._report)
        return task

    @staticmethod
    async def sleep(secs: float) -> None:
        """Waits for `secs` seconds of real time."""
        await asyncio.sleep(secs)

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

    @staticmethod
    async def run_process(command: Iterable[str], limit_secs: float) -> tuple[int | None, str]:
        """Runs a program to its end. Its exit code, None after `limit_secs` seconds, and its error output."""
        process = await asyncio.create_subprocess_exec(*command, stdin=DEVNULL, stdout=DEVNULL, stderr=PIPE)
        try:
            _, said = await asyncio.wait_for(process.communicate(), limit_secs)
            return process.returncode, said.decode("utf-8", "replace")
        except asyncio.TimeoutError:
            return None, ""
        finally:
            with suppress(ProcessLookupError):
                process.kill()
            await process.wait()

    async def _cancel_work(self) -> None:
        """No task but those of `spawn`: one of asyncio's own connects the pipes of a program that has just
        been started, and without it nobody would hear of that program's end."""
        work = list(self._work)
        for task in work:
            task.cancel()
        await asyncio.gather(*work, return_exceptions=True)

    def _report(self, task: asyncio.Task[None]) -> None:
        if not task.cancelled():
            self._guarded(task.result)

    def _report_context(self, _loop: asyncio.AbstractEventLoop, context: dict[str, Any]) -> None:
        """What asyncio finds out by itself, and would only log: a callback that failed, a task that nobody
        awaited."""

        def fail() -> None:
            raise context.get("exception") or RuntimeError(context["message"])

        self._guarded(fail)
