#!/usr/bin/python3
"""kubelor-update: installs packages of Kubelor, and goes back if the program does not run with them.

    kubelor-update keep FILE...      keeps the packages that are installed now as the way back
    kubelor-update install FILE...   installs these, restarts, watches for a minute, and goes back if it must
    kubelor-update resume            brings to an end what was interrupted; at boot, before the program starts

What it has come to is told in the journal, by the exit code, and in /var/lib/kubelor-update/result, which is
not there meanwhile:

    0 `installed`   the new packages run; they are now the way back
    1 `restored`    the previous packages are back
    2 `refused`     nothing was touched; the reason follows in the file
    3 `broken`      the previous packages could not be installed; the next boot tries once more

Whenever it is interrupted, the folder says how far it had come: all on disk changes by one rename, after
what the new name stands for has reached the disk.
"""

import contextlib
import fcntl
import os
import re
import shutil
import subprocess
import sys
import time
from collections.abc import Iterator, Sequence
from enum import Enum, IntEnum
from pathlib import Path

FOLDER = Path(os.environ.get("KUBELOR_UPDATE_FOLDER", "/var/lib/kubelor-update"))
CGROUP = Path(os.environ.get("KUBELOR_UPDATE_CGROUP", "/proc/self/cgroup"))
SERVICE = "kubelor.service"
HEALTHY_SECS = float(os.environ.get("KUBELOR_UPDATE_HEALTHY_SECS", "60"))
POLL_SECS = min(1.0, HEALTHY_SECS / 4)
# The packages of a version that works; those of the version that is being tried.
KEPT, NEW = FOLDER / "kept", FOLDER / "new"
STATE, RESULT, LOCK = FOLDER / "state", FOLDER / "result", FOLDER / "lock"
# Levels as the journal takes them at the beginning of a line.
ERROR, WARNING, INFO = "<3>", "<4>", "<6>"


class Outcome(IntEnum):
    """What it has come to, as exit code."""

    INSTALLED = 0
    RESTORED = 1
    REFUSED = 2
    BROKEN = 3


class State(Enum):
    """How far an update has come; no file means that none is under way."""

    TRYING = "trying"
    ACCEPTED = "accepted"


class Refused(Exception):
    """Nothing is touched, and this is why."""


def log(level: str, text: str) -> None:
    """One line for the journal."""
    with contextlib.suppress(OSError):
        print(f"{level}{text}", file=sys.stderr, flush=True)


# What reaches the disk


def sync(path: Path) -> None:
    """Waits until a file's content, or a folder's names, are on the disk."""
    descriptor = os.open(path, os.O_RDONLY)
    try:
        os.fsync(descriptor)
    finally:
        os.close(descriptor)


def write(path: Path, text: str) -> None:
    """Replaces a file as a whole."""
    draft = path.with_suffix(".draft")
    draft.write_text(text, "utf-8")
    sync(draft)
    draft.replace(path)
    sync(path.parent)


def move(source: Path, target: Path) -> None:
    """Renames a folder to a name that is free."""
    source.rename(target)
    sync(FOLDER)


def remove(path: Path) -> None:
    """Removes a file or a folder that nobody needs; half of it is never taken for the whole."""
    if path.is_dir():
        doomed = path.with_suffix(".doomed")
        shutil.rmtree(doomed, ignore_errors=True)
        path.rename(doomed)
        sync(FOLDER)
        shutil.rmtree(doomed)
    else:
        path.unlink(missing_ok=True)
        sync(FOLDER)


def store(files: Sequence[Path], folder: Path) -> None:
    """Puts copies of the files into a folder that is either whole or not there."""
    draft = folder.with_suffix(".draft")
    shutil.rmtree(draft, ignore_errors=True)
    draft.mkdir()
    for file in files:
        sync(Path(shutil.copy(file, draft)))
    sync(draft)
    remove(folder)
    move(draft, folder)


def state() -> State | None:
    """How far an update has come. What cannot be read was being tried."""
    try:
        return State(STATE.read_text("utf-8").strip())
    except FileNotFoundError:
        return None
    except (OSError, ValueError):
        return State.TRYING


def conclude(outcome: Outcome, text: str) -> Outcome:
    """Tells what it has come to, in the journal and to the backend."""
    log(INFO if outcome is Outcome.INSTALLED else ERROR, text)
    write(RESULT, f"{outcome.name.lower()} {time.strftime('%Y-%m-%dT%H:%M:%S')} {text}\n")
    RESULT.chmod(0o644)
    return outcome


# The packages and the service


def packages(folder: Path) -> list[Path]:
    """The packages in a folder, in order."""
    return sorted(folder.glob("*.deb")) if folder.is_dir() else []


def run(*command: str | Path) -> subprocess.CompletedProcess[str]:
    """Runs a command to its end. One that is missing has failed."""
    # Nothing that is installed may start or stop a service: that is done here, and at boot would never end.
    environment = os.environ | {"DEBIAN_FRONTEND": "noninteractive", "LC_ALL": "C.UTF-8"}
    if command[0] == "dpkg":
        environment["SYSTEMD_OFFLINE"] = "1"
    line = [str(word) for word in command]
    try:
        return subprocess.run(
            line,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            encoding="utf-8",
            errors="replace",
            check=False,
        )
    except OSError as error:
        return subprocess.CompletedProcess(line, 127, f"{line[0]}: {error.strerror}")


def succeeds(*command: str | Path) -> bool:
    """Runs a command; what a failure says goes to the journal."""
    result = run(*command)
    if result.returncode != 0:
        log(WARNING, f"{' '.join(map(str, command[:2]))}: {result.returncode}")
        for line in result.stdout.splitlines()[-20:]:
            log(WARNING, line)
    return result.returncode == 0


def install_all(folder: Path) -> bool:
    """Installs all packages of a folder, older ones too. Settings that were changed by hand stay."""
    return succeeds("dpkg", "--force-confold", "--force-confdef", "--install", *packages(folder))


def name_of(file: Path) -> str:
    """The name of the package in a file; refuses what is none."""
    field = run("dpkg-deb", "--field", file, "Package")
    if file.suffix != ".deb" or field.returncode != 0:
        raise Refused(f"{file.name} is no package")
    return field.stdout.strip()


def names_of(files: Sequence[Path]) -> set[str]:
    """The names of these packages; there must be one at least."""
    if not files:
        raise Refused("no packages were named")
    return {name_of(file) for file in files}


def properties() -> dict[str, str]:
    """What systemd knows of the service."""
    names = ("ActiveState", "InvocationID", "NRestarts", "WatchdogTimestampMonotonic")
    shown = run("systemctl", "show", SERVICE, *(f"--property={name}" for name in names))
    return dict(re.findall(r"(?m)^(\w+)=(.*)$", shown.stdout))


def is_healthy() -> bool:
    """Whether the service, which has just been started, runs on for a minute and feeds its watchdog."""
    first = properties()
    if first.get("ActiveState") != "active" or first.get("NRestarts") != "0":
        log(WARNING, f"{SERVICE} does not come up: {first}")
        return False
    end = time.monotonic() + HEALTHY_SECS
    over = False
    while not over:
        time.sleep(POLL_SECS)
        over = time.monotonic() >= end
        now = properties()
        if any(now.get(name) != first[name] for name in ("ActiveState", "InvocationID", "NRestarts")):
            log(WARNING, f"{SERVICE} does not stay up: {now}")
            return False
    fed = now.get("WatchdogTimestampMonotonic", "0") != first.get("WatchdogTimestampMonotonic", "0")
    if not fed:
        log(WARNING, f"{SERVICE} does not feed its watchdog")
    return fed


def restart() -> bool:
    """Starts the service anew and waits until it is ready."""
    succeeds("systemctl", "daemon-reload")
    # Starts that failed before do not count.
    run("systemctl", "reset-failed", SERVICE)
    return succeeds("systemctl", "restart", SERVICE)


# The three things that it does


def accept() -> Outcome:
    """The new packages are the way back from now on. May be repeated from any of its steps."""
    write(STATE, State.ACCEPTED.value)
    if NEW.exists():
        remove(KEPT)
        move(NEW, KEPT)
    names = ", ".join(file.name for file in packages(KEPT))
    outcome = conclude(Outcome.INSTALLED, f"installed and healthy: {names}")
    remove(STATE)
    return outcome


def restore(why: str) -> Outcome:
    """Installs the previous packages. May be repeated."""
    log(ERROR, f"{why}; the previous packages are installed again")
    # Finishes what dpkg was doing when it was interrupted; what fails here is replaced below.
    succeeds("dpkg", "--force-confold", "--force-confdef", "--configure", "--pending")
    if not install_all(KEPT):
        return conclude(Outcome.BROKEN, f"{why}, and the previous packages cannot be installed")
    remove(NEW)
    outcome = conclude(Outcome.RESTORED, f"{why}; the previous packages are back")
    remove(STATE)
    return outcome


def resume() -> Outcome | None:
    """Brings to an end what was interrupted, without touching the service; nothing if nothing was."""
    match state():
        case State.ACCEPTED:
            return accept()
        case State.TRYING:
            return restore("the update was interrupted")
    remove(NEW)
    return None


def keep(files: Sequence[Path]) -> Outcome:
    """Keeps packages as the way back."""
    names_of(files)
    store(files, KEPT)
    log(INFO, f"kept as the way back: {', '.join(file.name for file in files)}")
    return Outcome.INSTALLED


def install(files: Sequence[Path]) -> Outcome:
    """Installs new packages, and goes back if the service does not run with them."""
    names = names_of(files)
    if SERVICE in CGROUP.read_text("utf-8"):
        raise Refused(f"the restart of {SERVICE} would end this command, too")
    if not packages(KEPT):
        raise Refused("no packages are kept as the way back")
    if lost := names - names_of(packages(KEPT)):
        raise Refused(f"no way back is kept for {', '.join(sorted(lost))}")
    store(files, NEW)
    write(STATE, State.TRYING.value)
    remove(RESULT)
    if not install_all(NEW):
        why = "the new packages cannot be installed"
    elif not restart():
        why = "the service does not start with the new packages"
    elif not is_healthy():
        why = "the service does not run with the new packages"
    else:
        return accept()
    # Else it would be started again and again meanwhile, until the service manager gives up.
    run("systemctl", "stop", SERVICE)
    outcome = restore(why)
    restart()
    return outcome


@contextlib.contextmanager
def locked() -> Iterator[None]:
    """One at a time; who comes second is refused."""
    FOLDER.mkdir(mode=0o755, parents=True, exist_ok=True)
    with LOCK.open("w", encoding="utf-8") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            raise Refused("another update is under way") from None
        yield


def main(arguments: Sequence[str]) -> Outcome:
    """Does what the command line says."""
    commands = {"keep": keep, "install": install}
    command, files = (arguments[0] if arguments else ""), [Path(name) for name in arguments[1:]]
    if command not in commands and arguments != ["resume"]:
        print(__doc__, file=sys.stderr)
        return Outcome.REFUSED
    try:
        with locked():
            resumed = resume()
            if command in commands and resumed is not Outcome.BROKEN:
                return commands[command](files)
            return Outcome.INSTALLED if resumed is None else resumed
    except Refused as reason:
        log(ERROR, f"refused: {reason}")
        with contextlib.suppress(OSError):
            if command == "install" and "under way" not in str(reason):
                write(RESULT, f"refused {time.strftime('%Y-%m-%dT%H:%M:%S')} {reason}\n")
        return Outcome.REFUSED


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
