"""What the documentation shows works as it stands."""

import re
import tempfile
import unittest
from pathlib import Path

from demo_run import ABORT, START
from panel import Panel

GUIDE = Path(__file__).parents[2] / "docs" / "backend.md"


class SmallestBackendTest(unittest.TestCase):
    """The guide's first example, run by the real program."""

    def test_counts_as_a_backend(self) -> None:
        """It comes up, and the operator can start and abort."""
        found = re.search(
            r"^## The smallest backend\n.*?```python\n(.*?)```", GUIDE.read_text("utf-8"), re.M | re.S
        )
        assert found is not None
        with tempfile.TemporaryDirectory() as directory:
            package = Path(directory) / "controller"
            package.mkdir()
            (package / "__init__.py").write_text(found[1], encoding="utf-8")
            with Panel(Path(directory)) as program:
                program.wait_until_shown("Bereit")
                program.press_and_hold(START)
                program.wait_until_shown(ABORT)
                program.press_and_hold(ABORT)
                program.wait_until_shown(START)
                self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    unittest.main()
