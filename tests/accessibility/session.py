"""A private desktop without a screen: X server, message buses and window manager of its own, all ended
with it. What cannot be started fails the test."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


def needed(program):
    found = shutil.which(program)
    if found is None:
        sys.exit(f"{program} is not installed")
    return found


@contextlib.contextmanager
def running(command, **options):
    """Ends the process at the end, however that comes."""
    process = subprocess.Popen(command, **options)
    try:
        yield process
    finally:
        process.terminate()
        process.wait()


@contextlib.contextmanager
def x_server():
    """Gives the display's name once the server takes connections."""
    reading, writing = os.pipe()
    command = [needed("Xvfb"), "-displayfd", str(writing), "-screen", "0", "1400x900x24", "-nolisten", "tcp"]
    with running(command, pass_fds=[writing], stderr=subprocess.DEVNULL):
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            sys.exit("the X server did not start")
        yield f":{number}"


def run(script, arguments):
    """Runs the script again, inside. Gives its exit code."""
    with tempfile.TemporaryDirectory(prefix="tessary-desktop-") as folder, x_server() as display:
        home = pathlib.Path(folder)
        runtime = home / "run"
        runtime.mkdir(mode=0o700)
        environment = {
            "PATH": os.environ["PATH"],
            "HOME": folder,
            "LANG": "C.UTF-8",
            "DISPLAY": display,
            "XDG_RUNTIME_DIR": str(runtime),
            "QT_QPA_PLATFORM": "xcb",
            "QT_QUICK_BACKEND": "software",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "NO_AT_BRIDGE": "1",
            "TESSARY_TEST_INSIDE": folder,
        }
        inside = [needed("dbus-run-session"), "--", sys.executable, "-B", script, *arguments]
        return subprocess.run(inside, env=environment, check=False).returncode


@contextlib.contextmanager
def helpers():
    """Inside: what a desktop has running. The message bus starts the accessibility bus when it is asked for."""
    with running([needed("openbox")], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL):
        yield
