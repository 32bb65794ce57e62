"""The emulated board: a machine of QEMU with a panel, a finger on it, and a power button."""

import re
import subprocess
from collections.abc import Callable, Sequence
from pathlib import Path

from channels import Emulator, Shell, connect
from picture import Picture
from waiting import wait_for

#: What the emulator takes as the whole width, and height, of a panel.
_FULL = 0x7FFF
#: What is written to the disk, and the rest of a board that was saved.
_DISK, _STATE = "disk.qcow2", "state.zst"
_UNLIMITED = 1 << 40
#: Register of the GPIO chip that shows the levels of all lines.
_GPIO_LEVELS = 0x090303FC
#: One processor that does a thousand million instructions a second by the board's own clock, whatever else
#: the machine that emulates it has to do: what takes the board long takes it as long on any machine.
_PROCESSOR = ("-cpu", "cortex-a72", "-smp", "1", "-accel", "tcg,tb-size=512", "-icount", "shift=0,sleep=on")
_HARDWARE = (
    *("-M", "virt,gic-version=3", "-m", "1024", "-rtc", "clock=vm"),
    *("-nodefaults", "-no-user-config", "-display", "none", "-no-reboot"),
    *("-device", "virtio-blk-pci,drive=root", "-device", "virtio-rng-pci", "-device", "qemu-xhci,id=usb"),
    *("-device", "virtio-gpu-pci"),
    *("-device", "virtio-serial-pci", "-device", "virtconsole,chardev=shell", "-serial", "chardev:serial"),
)
_KERNEL = "console=ttyAMA0 panic=-1 loglevel=4 systemd.show_status=1 net.ifnames=0 mitigations=off"


class Machine:
    """A board that runs. It starts from nothing, or goes on from where it was saved."""

    #: Pixels of its display: width and height.
    display = (800, 1200)

    def __init__(self, image: Path, work: Path, saved: Path | None = None, kernel: str = "rw") -> None:
        """`image`: the folder of the image; `work`: one for what comes out; `saved`: where one was saved."""
        self.work = work
        work.mkdir(parents=True, exist_ok=True)
        for left in ("qmp", "shell", "pins"):
            (work / left).unlink(missing_ok=True)
        base, kind = (saved / _DISK, "qcow2") if saved else (image / "root.img", "raw")
        create = ["qemu-img", "create", "-q", "-f", "qcow2", "-F", kind, "-b", str(base.resolve())]
        subprocess.run([*create, str(work / _DISK)], check=True)
        command = ["qemu-system-aarch64", *_PROCESSOR, *_HARDWARE]
        for name, pixels in zip(("xres", "yres"), self.display, strict=True):
            command += ["-global", f"virtio-gpu-device.{name}={pixels}"]
        command += ["-kernel", str(image / "vmlinuz"), "-initrd", str(image / "initrd.gz")]
        command += ["-append", f"{_KERNEL} {kernel}", "-drive", f"if=none,id=root,format=qcow2,file={_DISK}"]
        command += ["-chardev", "socket,id=shell,path=shell,server=on,wait=off"]
        command += ["-chardev", "file,id=serial,path=serial.log", "-qmp", "unix:qmp,server=on,wait=off"]
        command += ["-qtest", "unix:pins,server=on,wait=off", "-qtest-log", "none"]
        command += ["-incoming", f"exec:zstdcat {(saved / _STATE).resolve()}"] if saved else []
        with (work / "emulator.log").open("w", encoding="utf-8") as log:
            # It runs until close() is called.
            # pylint: disable-next=consider-using-with
            self._process = subprocess.Popen(command, stderr=log, cwd=work)
        self.emulator = Emulator(work / "qmp")
        self.shell = Shell(work / "shell")
        if saved:
            wait_for("the saved state", lambda: self._status("status") != "inmigrate", 120)
            self.emulator("cont")

    def close(self) -> None:
        """Switches the board off, if it is on, as if its plug were pulled."""
        self._process.kill()
        self._process.wait()
        self.emulator.close()
        self.shell.close()

    def save(self) -> None:
        """Keeps the board as it is in its folder, from which others go on; it ends itself."""
        self.emulator("stop")
        self.emulator("migrate-set-parameters", **{"max-bandwidth": _UNLIMITED})
        self.emulator("migrate", uri=f"exec:zstd -q -1 -f -o {_STATE}")
        wait_for("the saved state", lambda: self._status("migrate") == "completed", 300)
        self.emulator("quit")
        self._process.wait()

    def _status(self, subject: str) -> str:
        return str(self.emulator(f"query-{subject}")["status"])

    def wait_for_end(self) -> int:
        """Waits until the board has switched itself off; the emulator's exit code."""
        return self._process.wait(900)

    def let_restart(self) -> None:
        """Lets it start anew when it asks for that; else it ends then."""
        self.emulator("set-action", reboot="reset")

    @property
    def is_on(self) -> bool:
        """Whether it has not switched itself off."""
        return self._process.poll() is None

    def serial(self) -> str:
        """What the board has written to its serial console."""
        return (self.work / "serial.log").read_text("utf-8", errors="replace")

    # The panel

    def picture(self) -> Picture:
        """What the panel shows."""
        path = self.work / "screen.ppm"
        self.emulator("screendump", filename=str(path))
        return Picture.read(path)

    def keep_picture(self, name: str) -> Picture:
        """What the panel shows, kept as a file as well."""
        picture = self.picture()
        picture.save(self.work / f"{name}.png")
        return picture

    def wait_for_picture(self, what: str, condition: Callable[[Picture], bool]) -> Picture:
        """Waits until the panel shows what is wanted."""

        def wanted() -> Picture | None:
            picture = self.picture()
            return picture if condition(picture) else None

        return wait_for(what, wanted)

    # The GPIO chip

    def output(self, line: int) -> bool:
        """The level of one of its lines, as the chip holds it."""
        register = self.emulator.monitor(f"xp /1xw {_GPIO_LEVELS:#x}").split(":")[1]
        return bool(int(register, 16) >> line & 1)

    def set_input(self, line: int, level: bool) -> None:
        """Drives one of its lines from outside."""
        chip = re.search(r"/(device\[\d+\]) \(pl061\)", self.emulator.monitor("info qom-tree"))
        assert chip
        command = f"set_irq_in /machine/unattached/{chip[1]} unnamed-gpio-in {line} {int(level)}\n"
        with connect(self.work / "pins") as pins:
            pins.sendall(command.encode())
            answer = pins.recv(1000)
        if not answer.startswith(b"OK"):
            raise RuntimeError(answer.decode())

    # The finger

    def plug_in_touch(self) -> None:
        """Connects the panel's touch sensor. (It cannot be saved with the board.)"""
        self.emulator("device_add", driver="usb-wacom-tablet", id="touch", bus="usb.0")

        def takes_places() -> bool:
            return any(sensor["absolute"] for sensor in self.emulator("query-mice"))

        wait_for("a driver of the touch sensor", takes_places)

    def lay_finger(self, x: int, y: int) -> None:
        """Lays a finger on the panel."""
        width, height = self.display
        self._finger([("x", x / width), ("y", y / height)], True)

    def lift_finger(self) -> None:
        """Lifts it."""
        self._finger([], False)

    def _finger(self, place: Sequence[tuple[str, float]], down: bool) -> None:
        """Moves the finger to a place, in shares of the panel, and lays it down or lifts it."""
        moves = [{"type": "abs", "data": {"axis": axis, "value": round(at * _FULL)}} for axis, at in place]
        button = {"type": "btn", "data": {"button": "left", "down": down}}
        self.emulator("input-send-event", events=[*moves, button])
