"""A desktop of its own for a program under test: a display, a window manager, a user's hands and a screen reader's eyes.

Hands: real keys and clicks of the X server (xdotool). Eyes: the accessibility bus, on which the program tells its windows,
controls and texts to a screen reader. Every wait ends at a condition or at a limit, never at a guess.
"""
import os
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE_S = 30
SCREEN = (1024, 768)
VISIBLE_COLUMNS = 4  # of both grids


class Failure(Exception):
    pass


def wait(what, condition, seconds=PATIENCE_S):
    """Polls until the condition gives something true, and returns that."""
    end = time.monotonic() + seconds
    while True:
        try:
            result = condition()
        except GLib.Error:  # an object that has just gone
            result = None
        if result:
            return result
        if time.monotonic() > end:
            raise Failure(f"waited {seconds} s for {what}")
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.03)


def has(node, *states):
    held = node.get_state_set()
    return all(held.contains(state) for state in states)


def showing(node):
    return has(node, Atspi.StateType.SHOWING)


class Desktop:
    """The display and its window manager; both end with close()."""

    def __init__(self):
        reading, writing = os.pipe()
        size = f"{SCREEN[0]}x{SCREEN[1]}x24"
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", size, "-dpi", "96", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb does not start")
        os.environ["DISPLAY"] = ":" + number
        os.environ.pop("WAYLAND_DISPLAY", None)
        subprocess.run(["xsetroot", "-solid", "#3a6ea5"], stderr=subprocess.DEVNULL, check=False)
        self.manager = subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait("the window manager", lambda: "window id" in output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)


class Program:
    """The program under test, seen and used from outside."""

    def __init__(self, path):
        self.focused = None
        self.listener = Atspi.EventListener.new(self._on_focus)
        self.listener.register("object:state-changed:focused")
        environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
        self.process = subprocess.Popen([path], env=environment)
        self.application = wait("the program on the accessibility bus", self._find)

    def _on_focus(self, event):
        if event.detail1:
            self.focused = event.source.get_name()

    def _find(self):
        if self.process.poll() is not None:
            raise Failure(f"the program ended at its start with status {self.process.returncode}")
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child and child.get_process_id() == self.process.pid:
                return child
        return None

    def wait_end(self, seconds=PATIENCE_S):
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Failure("the program does not end") from None

    def kill(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()

    # What is seen

    def windows(self):
        self.application.clear_cache()
        children = [self.application.get_child_at_index(i) for i in range(self.application.get_child_count())]
        return [child for child in children if child and showing(child)]

    def window(self, title):
        """Waits until the window of that title is shown."""
        return wait(f'the window "{title}"', lambda: next(
            (w for w in self.windows() if w.get_name() == title and w.get_role_name() != "alert"), None))

    def box(self, title="Tarnwick"):
        """Waits for a message box, and returns it with its text."""
        box = wait(f'a message box "{title}"', lambda: next(
            (w for w in self.windows() if w.get_role_name() == "alert" and w.get_name() == title), None))
        return box, "\n".join(label.get_name() for label in self.all(box, "label"))

    def gone(self, title):
        wait(f'the end of the window "{title}"', lambda: not any(
            w.get_name() == title and w.get_role_name() != "alert" for w in self.windows()))

    def box_gone(self):
        wait("the end of the message box", lambda: not any(w.get_role_name() == "alert" for w in self.windows()))

    def all(self, node, role=None):
        """Everything below a node that is on the screen."""
        node.clear_cache()
        found = []
        for index in range(node.get_child_count()):
            child = node.get_child_at_index(index)
            if child is None:
                continue
            if showing(child) and (role is None or child.get_role_name() == role):
                found.append(child)
            if child.get_role_name() not in ("table", "tree", "tree table"):
                found += self.all(child, role)
        return found

    def find(self, window, role, name=None, legend=None):
        def look():
            return next((node for node in self.all(window, role)
                         if (name is None or node.get_name() == name)
                         and (legend is None or node.get_description() == legend)), None)
        return wait(f'{role} "{name or legend or ""}" in "{window.get_name()}"', look)

    def value(self, window, legend):
        """The text beside a legend, such as the one of "Status"."""
        return self.find(window, "label", legend=legend).get_name()

    def grid(self, window):
        return self.find(window, "table")

    def rows(self, window):
        """The texts of a grid's visible columns, row by row."""
        grid = self.grid(window)
        grid.clear_cache()
        table = grid.get_table_iface()
        return [tuple(table.get_accessible_at(row, column).get_name() for column in range(VISIBLE_COLUMNS))
                for row in range(table.get_n_rows())]

    def headers(self, grid):
        grid.clear_cache()
        children = [grid.get_child_at_index(i) for i in range(min(grid.get_child_count(), 20))]
        return [c for c in children if c and c.get_role_name() == "table column header" and showing(c) and c.get_name()]

    def cell(self, window, row, column=0):
        return self.grid(window).get_table_iface().get_accessible_at(row, column)

    def nodes(self, window):
        """The tree's rows, from top to bottom."""
        tree = wait("the tree", lambda: next((n for n in self.all(window)
                                              if n.get_role_name() in ("tree", "tree table")), None))
        tree.clear_cache()
        children = [tree.get_child_at_index(i) for i in range(tree.get_child_count())]
        return [c for c in children if c and c.get_role_name() in ("table cell", "tree item") and c.get_name()]

    def node(self, window, name):
        return next(node for node in self.nodes(window) if node.get_name() == name)

    def ticked(self, window):
        return [node.get_name() for node in self.nodes(window) if has(node, Atspi.StateType.CHECKED)]

    # What is done

    def place(self, node):
        box = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def click(self, node, button=1, left=None):
        """Clicks into the middle of a node, or `left` pixels behind its left edge."""
        x, y, width, height = self.place(node)
        xdotool("mousemove", x + (width // 2 if left is None else left), y + height // 2, "click", button)

    def press(self, window, caption):
        button = self.find(window, "push button", caption)
        wait(f'the button "{caption}" to be enabled', lambda: has(button, Atspi.StateType.SENSITIVE))
        self.click(button)

    def key(self, *keys):
        xdotool("key", *keys)

    def type(self, text):
        xdotool("type", text)

    def focus(self, title):
        """Waits until the window manager has given a window the keyboard."""
        wait(f'the keyboard in "{title}"',
             lambda: output("xdotool", "getactivewindow", "getwindowname").strip() == title)

    def focus_control(self, window, name):
        """Tabs to the control of that accessible name."""
        for _ in range(8):
            if any(n.get_name() == name and has(n, Atspi.StateType.FOCUSED) for n in self.all(window)):
                return
            self.key("Tab")
            time.sleep(0.1)
        raise Failure(f'no Tab leads to "{name}"')

    def choose(self, entry, with_keys=False):
        """Goes through the open pop-up menu to an entry and takes it."""
        self.reach(entry, with_keys)
        if with_keys:
            self.key("Return")
        else:
            xdotool("click", 1)

    def reach(self, entry, with_keys=False):
        """Goes through the open pop-up menu to an entry, with the arrow keys or the mouse; the names on the way."""
        x, y, width, height = popup()
        self.focused = None
        seen = []

        def settle():
            while GLib.MainContext.default().iteration(False):
                pass
            if self.focused and (not seen or seen[-1] != self.focused):
                seen.append(self.focused)
            return self.focused == entry

        for offset in range(4, height, 6):
            if with_keys:
                self.key("Down")
            else:
                xdotool("mousemove", x + width // 2, y + offset)
            end = time.monotonic() + 0.25
            while time.monotonic() < end:
                if settle():
                    return seen
                time.sleep(0.02)
        raise Failure(f'the menu has no entry "{entry}" that can be reached: {seen}')


def top_windows():
    """The windows on the screen with their frames: what the server says of each, and its place."""
    found = []
    for line in output("xwininfo", "-root", "-children").splitlines():
        if not line.strip().startswith("0x"):
            continue
        about = output("xwininfo", "-id", line.split()[0])
        field = {key.strip(): value.strip() for key, _, value in (row.partition(":") for row in about.splitlines())}
        if field.get("Map State") == "IsViewable":
            place = tuple(int(field[name]) for name in
                          ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
            found.append((line, field, place))
    return found


def popup():
    """Waits for a pop-up menu, a window of the program past the window manager, and returns its place."""
    return wait("a pop-up menu", lambda: next(
        (place for line, field, place in top_windows()
         if '("tarnwick"' in line and field["Override Redirect State"] == "yes"), None))


def pixels(x, y, width, height):
    """What a part of the screen shows, as bytes that only compare."""
    return subprocess.run(["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "rgb:-"],
                          capture_output=True, check=True).stdout
