"""The command line of `kubelor-backend`."""

import argparse
import sys
from pathlib import Path

from .check import PATIENCE_SECS, check_backend
from .new import write_backend
from .places import NotFound
from .run import run_backend
from .shell import run_shell


def _new(arguments: argparse.Namespace) -> int:
    for name in write_backend(arguments.folder):
        print(arguments.folder / name)
    print(f"Next: kubelor-backend check {arguments.folder}")
    return 0


def _check(arguments: argparse.Namespace) -> int:
    return 0 if check_backend(arguments.folder, arguments.patience, arguments.types) else 1


def _run(arguments: argparse.Namespace) -> int:
    return run_backend(arguments.folder, arguments.watch)


def _shell(_arguments: argparse.Namespace) -> int:
    return run_shell()


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="kubelor-backend", description="Begins, checks and runs backends.")
    commands = parser.add_subparsers(required=True, metavar="COMMAND")

    new = commands.add_parser("new", help="write a small complete backend into a new folder")
    new.set_defaults(command=_new)

    check = commands.add_parser("check", help="start a backend without a display and tell what is wrong")
    check.add_argument("--patience", type=float, default=PATIENCE_SECS, help="seconds that it may take")
    check.add_argument("--no-types", dest="types", action="store_false", help="leave the types unchecked")
    check.set_defaults(command=_check)

    run = commands.add_parser("run", help="start kubelor-demo with a backend")
    run.add_argument("--watch", action="store_true", help="start it anew when a file changes")
    run.set_defaults(command=_run)

    shell = commands.add_parser("shell", help="a Python prompt inside the program that `run` has started")
    shell.set_defaults(command=_shell)

    for command in (new, check, run):
        command.add_argument(
            "folder", type=Path, metavar="DIR", help="the folder with the package controller"
        )
    return parser


def main() -> int:
    """Runs one command. 0 if all is well, 1 if something is not, 2 if it could not be done."""
    arguments = _parser().parse_args()
    try:
        return int(arguments.command(arguments))
    except (NotFound, OSError, ValueError) as error:
        print(f"kubelor-backend: {error}", file=sys.stderr)
        return 2
    except KeyboardInterrupt:
        return 130


if __name__ == "__main__":
    sys.exit(main())
