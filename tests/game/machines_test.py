"""Starts the game as a stranger's machine does. Each row of the table is a test:
machines_test.py ROW GAME TREE. Without arguments it prints the names of the rows."""

import ctypes
import fcntl
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable

FONT = "/usr/share/fonts/truetype/inconsolata/Inconsolata.otf"
ENDS_WITH_THE_TEST = ["setpriv", "--pdeathsig", "KILL"]
RUN = 'exec "$GAME"'
IN_LOOP = "starting game loop"


@dataclass
class Row:
    """What is started, what happens to it at a line of the log, and what must come of it."""

    command: str = RUN  # For a shell, in a folder with the game's files; $GAME is the program.
    settings: str = ""
    screen: str = "1600x1200x24"  # Empty: no display.
    server: list[str] = field(default_factory=list)
    prepare: Callable | None = None
    at: str = IN_LOOP
    do: Callable | None = None  # None: the program ends by itself.
    status: int = 0
    says: list[str] = field(default_factory=list)  # Log and standard error, in any order.
    after: str = "true"  # A command that must succeed.


def is_caught(number, process):
    status = Path(f"/proc/{process.pid}/status").read_text()
    caught = int(status.split("SigCgt:")[1].split()[0], 16)
    return caught >> (number - 1) & 1


def send(*signals):
    def act(machine):
        for number in signals:
            machine.game.send_signal(number)
            # The first of two has arrived when it is not caught any more.
            while machine.game.poll() is None and is_caught(number, machine.game):
                time.sleep(0.01)

    return act


class Client:
    """Another program on the game's display."""

    def __init__(self, machine):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(machine.environment["DISPLAY"].encode()))
        if not self.display:
            return
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))

    def window(self):
        unused, children, count = ctypes.c_ulong(), ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
        self.x.XQueryTree(
            self.display, self.root, *[ctypes.byref(a) for a in (unused, unused, children, count)]
        )
        return ctypes.c_ulong(children[count.value - 1])

    def call(self, function, *arguments):
        getattr(self.x, function)(self.display, *arguments)
        self.x.XSync(self.display, 0)

    def set_on_root(self, name, value_type, *values):
        atom = ctypes.c_ulong(self.x.XInternAtom(self.display, name, 0))
        data = (ctypes.c_ulong * len(values))(*values)
        self.call("XChangeProperty", self.root, atom, ctypes.c_ulong(value_type), 32, 0, data, len(values))


def to_window(function):
    def act(machine):
        client = Client(machine)
        client.call(function, client.window())

    return act


COPY_TOOLS = 'mkdir tree; cp -r "$TREE/tools" tree; '
CARDINAL, WINDOW = 6, 33  # Types of properties.


def window_is(width, height):
    def act(machine):
        client = Client(machine)
        unused, sides = ctypes.c_ulong(), [ctypes.c_uint() for _ in range(6)]
        client.call("XGetGeometry", client.window(), *[ctypes.byref(a) for a in (unused, *sides)])
        shown = (sides[2].value, sides[3].value)
        machine.game.send_signal(signal.SIGTERM)
        assert shown == (width, height), shown

    return act


def press(keycode):
    def act(machine):
        client, xtest = Client(machine), ctypes.CDLL("libXtst.so.6")
        client.call("XWarpPointer", 0, client.window(), 0, 0, 0, 0, 5, 5)
        while machine.game.poll() is None:
            for is_down in (1, 0):
                xtest.XTestFakeKeyEvent(client.display, keycode, is_down, 0)
                client.call("XFlush")
                time.sleep(0.05)

    return act


def hold_lock(machine):
    machine.lock = open(machine.folder / "lock", "w")
    fcntl.flock(machine.lock, fcntl.LOCK_EX)
    print(123, end="", file=machine.lock, flush=True)


def leave_one_place(machine):
    machine.clients = [Client(machine)]
    while machine.clients[-1].display:
        machine.clients.append(Client(machine))
    machine.clients[0].x.XCloseDisplay(machine.clients[0].display)


def leave_dead_manager(machine):
    client = Client(machine)
    client.set_on_root(b"_NET_SUPPORTED", WINDOW)
    client.set_on_root(b"_NET_SUPPORTING_WM_CHECK", WINDOW, 0x7654321)


GONE = ["display has gone, and the game ends", "Game engine stopped"]

ROWS = {
    "closed_descriptors_take_no_files": Row(
        RUN + " <&- >&- 2>&-", do=send(signal.SIGTERM), status=143, says=["Game engine stopped"]
    ),
    "interrupt_stops_in_order": Row(do=send(signal.SIGINT), status=130, says=["Signal 2 ", "Game engine stopped"]),
    "a_hangup_stops_a_headless_game": Row(
        settings="headless:true,", screen="", do=send(signal.SIGHUP), status=129, says=["Game engine stopped"]
    ),
    "a_second_signal_ends_at_once": Row(
        settings="frame_time:50000,headless:true,", screen="", do=send(signal.SIGINT, signal.SIGTERM), status=-15
    ),
    "an_ignored_hangup_stays_ignored": Row(
        "trap '' HUP; " + RUN, do=send(signal.SIGHUP, signal.SIGTERM), status=143, says=["Signal 15 "]
    ),
    "a_stopped_game_plays_again": Row(
        "SELVANE_RECORD=game.record " + RUN,
        do=send(signal.SIGTERM),
        status=143,
        after='"$TREE/tools/replay" "$GAME" game.record | grep "all the same"',
    ),
    "a_log_that_nobody_reads_ends_nothing": Row(
        "mkfifo log; : <log & SELVANE_LOG=log " + RUN, screen="", status=1, says=["Selvane did not start"]
    ),
    "a_log_without_a_reader_is_refused": Row(
        "mkfifo log; SELVANE_LOG=log " + RUN, screen="", status=1, says=["It is a pipe that nobody reads"]
    ),
    "a_configuration_from_a_pipe_is_ignored": Row(
        "mkfifo pipe; SELVANE_CONFIG=pipe " + RUN, screen="", status=1, says=["'pipe' is a pipe and no file"]
    ),
    "a_font_from_a_pipe_is_refused": Row(
        "mkfifo pipe; " + RUN, settings="font_file:pipe,", status=1, says=["Unable to load font from file 'pipe'"]
    ),
    "a_killed_server_ends_in_order": Row(do=lambda machine: machine.server.kill(), status=74, says=GONE),
    "a_killed_client_ends_in_order": Row(do=to_window("XKillClient"), status=74, says=GONE),
    "a_destroyed_window_ends_in_order": Row(
        do=to_window("XDestroyWindow"), status=74, says=["window has gone, and the game ends", "Game engine stopped"]
    ),
    "the_second_screen_is_refused": Row(
        'DISPLAY=$DISPLAY.1 "$GAME"', server=["-screen", "1", "800x600x24"], status=1, says=["first screen of an X server only"]
    ),
    "a_crowded_server_is_refused": Row(
        server=["-maxclients", "64"], prepare=leave_one_place, status=1, says=["takes no more programs"]
    ),
    "too_few_files_are_refused": Row("ulimit -n 6; " + RUN, status=1, says=["may open too few files"]),
    "a_dead_window_manager_is_survived": Row(
        prepare=leave_dead_manager,
        do=send(signal.SIGTERM),
        status=143,
        says=["The display says: BadWindow"],
    ),
    "a_small_screen_shows_the_window_whole": Row(
        screen="640x480x24", do=window_is(640, 424), status=143, says=["shown smaller, with 640 x 424"]
    ),
    "a_panel_is_left_room": Row(
        prepare=lambda machine: Client(machine).set_on_root(b"_NET_WORKAREA", CARDINAL, 0, 30, 1600, 520),
        do=window_is(725, 480),
        status=143,
        says=["shown smaller, with 725 x 480"],
    ),
    "a_layout_without_latin_letters_is_told": Row(
        "setxkbmap ru; " + RUN, do=send(signal.SIGTERM), status=143, says=["layout has no Latin letters"]
    ),
    "a_latin_layout_beside_another_works": Row("setxkbmap ru,us; " + RUN, at="loadMusic", do=press(24), status=0),
    "an_interrupted_check_leaves_nothing": Row(
        'mkdir tmp; TMPDIR=$PWD/tmp exec "$TREE/tools/with-display" bash -c "mktemp; echo up >selvane.log; sleep 50"',
        screen="",
        at="up",
        do=lambda machine: os.killpg(machine.game.pid, signal.SIGINT),
        status=-2,
        after='[ -z "$(ls tmp)" ]',
    ),
    "a_second_build_waits_and_says_so": Row(
        COPY_TOOLS + 'lock=$PWD/lock; . tree/tools/lib.sh; alone "$lock" >&2',
        screen="",
        prepare=hold_lock,
        at="waits for another one, process 123",
        do=lambda machine: machine.lock.close(),
    ),
    "an_odd_path_is_refused_with_its_character": Row(
        COPY_TOOLS + "mv tree 'tr;ee'; exec 'tr;ee/tools/build' release", screen="", status=1, says=["since ';' is in that name"]
    ),
}


class Machine:
    """A folder with the game's files, a display, and the game."""

    def __init__(self, row, folder, game, tree):
        self.row = row
        self.folder = Path(folder)
        self.environment = {**os.environ, "GAME": game, "TREE": tree, "ALSOFT_DRIVERS": "null", "LP_NUM_THREADS": "1"}
        for name in [n for n in self.environment if n.startswith("SELVANE_")] + ["DISPLAY"]:
            self.environment.pop(name, None)
        # A graphics driver leaks when it is unloaded.
        self.environment["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        self.environment["SELVANE_LOG_LEVEL"] = "10"
        for art in ("sprites", "sounds"):
            (self.folder / art).symlink_to(Path(tree) / art)
        shutil.copy(FONT, self.folder / "sv-font.ttf")
        shipped = (Path(tree) / "game/sv-config.txt").read_text()
        (self.folder / "sv-config.txt").write_text(f"{row.settings}\n{shipped}")
        self.server = self.start_server() if row.screen else None

    def start_server(self):
        answer, theirs = os.pipe()
        server = subprocess.Popen(
            ENDS_WITH_THE_TEST
            + ["Xvfb", "-displayfd", str(theirs), "-r", "-noreset", "-nolisten", "tcp", "-screen", "0", self.row.screen, *self.row.server],
            pass_fds=[theirs],
            stderr=subprocess.DEVNULL,
        )
        os.close(theirs)
        with os.fdopen(answer) as lines:
            self.environment["DISPLAY"] = ":" + lines.readline().strip()
        return server

    def said(self):
        texts = [self.folder / "selvane.log", self.folder / "errors"]
        return "".join(text.read_text(errors="replace") for text in texts if text.is_file())

    def play(self):
        if self.row.prepare:
            self.row.prepare(self)
        with open(self.folder / "errors", "wb") as errors:
            self.game = subprocess.Popen(
                ENDS_WITH_THE_TEST + ["bash", "-c", self.row.command],
                cwd=self.folder,
                env=self.environment,
                stderr=errors,
                start_new_session=True,
            )
        if self.row.do:
            while self.row.at not in self.said() and self.game.poll() is None:
                time.sleep(0.01)
            self.row.do(self)
        return self.game.wait()

    def check(self):
        faults = []
        status = self.play()
        if status != self.row.status:
            faults.append(f"the status is {status}, not {self.row.status}")
        says = self.row.says + ([self.row.at] if self.row.do else [])
        faults += [f"nothing says '{text}'" for text in says if text not in self.said()]
        after = subprocess.run(["bash", "-c", self.row.after], cwd=self.folder, env=self.environment, check=False)
        if after.returncode != 0:
            faults.append(f"'{self.row.after}' fails")
        return faults

    def end(self):
        for process in (self.game, self.server):
            if process and process.poll() is None:
                process.kill()
                process.wait()


def main():
    if len(sys.argv) == 1:
        print("\n".join(ROWS))
        return
    row, game, tree = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        machine = Machine(ROWS[row], folder, game, tree)
        try:
            faults = machine.check()
        finally:
            machine.end()
        if faults:
            sys.exit("\n".join(faults + [machine.said()]))


main()
