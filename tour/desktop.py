"""A desktop of its own for a program under test, X11 or Wayland, with a user's hands and a screen reader's eyes.

Eyes: the accessibility bus, on which the program shows a screen reader its windows, controls and texts. Hands: real keys
and, on X11, real clicks. On Wayland nobody but the compositor knows where a window is, so the accessibility interface
presses the buttons there. Every wait ends at a condition or at a limit.
"""
import os
import shlex
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

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


def has(node, state):
    node.clear_cache()
    return node.get_state_set().contains(state)


def showing(node):
    return has(node, Atspi.StateType.SHOWING)


def children(node):
    node.clear_cache()
    return [child for child in map(node.get_child_at_index, range(node.get_child_count())) if child]


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)


def screen():
    """What the screen shows, as bytes that only compare."""
    return subprocess.run(["import", "-silent", "-window", "root", "rgb:-"], capture_output=True, check=True).stdout


def calm_screen():
    """What the screen shows once nothing moves any more."""
    before = None
    while before != (before := screen()):
        time.sleep(0.1)
    return before


class Desktop:
    """The display and what manages its windows; all of it ends with close()."""

    def __init__(self, wayland=False):
        reading, writing = os.pipe()
        size = f"{SCREEN[0]}x{SCREEN[1]}x24"
        self.processes = [subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", size, "-dpi", "96", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)]
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb does not start")
        os.environ["DISPLAY"] = ":" + number
        os.environ.pop("WAYLAND_DISPLAY", None)
        if wayland:
            socket = f"tarnwick-{os.getpid()}"
            config = os.path.join(os.environ["HOME"], "weston.ini")
            with open(config, "w", encoding="utf-8") as file:
                file.write("[shell]\npanel-position=none\nbackground-color=0xff3a6ea5\n[input-method]\npath=\n")
            self.start("weston", "--backend=x11-backend.so", "--use-pixman", f"--width={SCREEN[0]}",
                       f"--height={SCREEN[1]}", "--socket=" + socket, "--idle-time=0", "--config=" + config)
            wait("the compositor", lambda: os.path.exists(os.path.join(os.environ["XDG_RUNTIME_DIR"], socket)))
            os.environ["WAYLAND_DISPLAY"] = socket
            xdotool("mousemove", 5, SCREEN[1] - 5)  # keys go to the compositor's window
        else:
            subprocess.run(["xsetroot", "-solid", "#3a6ea5"], stderr=subprocess.DEVNULL, check=False)
            self.start("openbox")
            wait("the window manager", lambda: b"window id" in subprocess.run(
                ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, check=False).stdout)

    def start(self, *command):
        self.processes.insert(0, subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    def close(self):
        for process in self.processes:
            process.terminate()
            process.wait()


class Program:
    """The program under test, seen and used from outside: a file, or the name of a menu entry."""

    def __init__(self, path, wayland=False):
        self.wayland = wayland
        self.focused = None
        self.listener = Atspi.EventListener.new(self._on_focus)
        self.listener.register("object:state-changed:focused")
        command = shlex.split(Gio.DesktopAppInfo.new(path).get_commandline()) if path.endswith(".desktop") else [path]
        environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                           QT_QPA_PLATFORM="wayland" if wayland else "xcb")
        self.process = subprocess.Popen(command, env=environment)
        self.application = wait("the program on the accessibility bus", self._find)

    def _on_focus(self, event):
        if event.detail1:
            self.focused = event.source.get_name()

    def _find(self):
        if self.process.poll() is not None:
            raise Failure(f"the program ended at its start with status {self.process.returncode}")
        return next((child for child in children(Atspi.get_desktop(0)) if child.get_process_id() == self.process.pid), None)

    def wait_end(self):
        try:
            return self.process.wait(PATIENCE_S)
        except subprocess.TimeoutExpired:
            raise Failure("the program does not end") from None

    # What is seen

    def windows(self, title=None, box=False):
        return [child for child in children(self.application) if showing(child)
                and title in (None, child.get_name()) and box == (child.get_role_name() == "alert")]

    def window(self, title, box=False):
        """Waits until the window of that title is shown and has the keyboard."""
        return wait(f'the window "{title}"', lambda: next(
            (w for w in self.windows(title, box) if has(w, Atspi.StateType.ACTIVE)), None))

    def gone(self, title, box=False):
        wait(f'the end of the window "{title}"', lambda: not self.windows(title, box))

    def all(self, node, role=None):
        """Everything below a node that is on the screen."""
        found = []
        for child in children(node):
            if showing(child) and role in (None, child.get_role_name()):
                found.append(child)
            if child.get_role_name() not in ("table", "tree", "tree table"):
                found += self.all(child, role)
        return found

    def find(self, window, role, name=None, legend=None):
        return wait(f'{role} "{name or legend or ""}" in "{window.get_name()}"', lambda: next(
            (node for node in self.all(window, role) if name in (None, node.get_name())
             and legend in (None, node.get_description())), None))

    def text(self, window, part):
        """Waits for a text in one of the window's labels."""
        wait(f'the text "{part}"', lambda: any(part in label.get_name() for label in self.all(window)))

    def rows(self, window):
        """The texts of a grid's visible columns, row by row."""
        grid = self.find(window, "table")
        grid.clear_cache()
        table = grid.get_table_iface()
        return [tuple(table.get_accessible_at(row, column).get_name() for column in range(VISIBLE_COLUMNS))
                for row in range(table.get_n_rows())]

    def nodes(self, window):
        """The tree's rows, from top to bottom."""
        tree = wait("the tree", lambda: next((n for n in self.all(window)
                                              if n.get_role_name() in ("tree", "tree table")), None))
        return [c for c in children(tree) if c.get_role_name() in ("table cell", "tree item") and c.get_name()]

    def ticked(self, window):
        return [node.get_name() for node in self.nodes(window) if has(node, Atspi.StateType.CHECKED)]

    # What is done

    def click(self, node, button=1, left=None):
        """Clicks into the middle of a node, or `left` pixels from its left edge."""
        box = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        xdotool("mousemove", box.x + (box.width // 2 if left is None else left), box.y + box.height // 2, "click", button)

    def act(self, node, left=None):
        """Presses a button or turns a tick over: by a click, or by the node's own action."""
        if not self.wayland:
            self.click(node, left=left)
            return
        action = node.get_action_iface()
        names = [action.get_action_name(i) for i in range(action.get_n_actions())]
        action.do_action(next(i for i, name in enumerate(names) if name in ("Press", "Toggle")))

    def press(self, window, caption):
        button = self.find(window, "push button", caption)
        wait(f'the button "{caption}" to be enabled', lambda: has(button, Atspi.StateType.SENSITIVE))
        self.act(button)

    def tick(self, window, name):
        was = name in self.ticked(window)
        nodes = self.nodes(window)
        node = next(node for node in nodes if node.get_name() == name)
        if self.wayland:
            self.go_to(node, node.get_parent(), len(nodes))
            self.key("space")
        else:
            self.click(node, left=7)
        wait(f'the tick of "{name}" to change', lambda: (name in self.ticked(window)) != was)

    def focus(self, node):
        """Tabs to a control."""
        for _ in range(8):
            if has(node, Atspi.StateType.FOCUSED):
                return
            self.key("Tab")
            time.sleep(0.2)
        raise Failure(f'no Tab leads to "{node.get_name()}"')

    def go_to(self, item, container, count):
        """Selects an item of a tree or a grid with the arrow keys."""
        self.focus(container)
        self.key(*["Up"] * count)
        for _ in range(count):
            time.sleep(0.1)
            if has(item, Atspi.StateType.SELECTED):
                break
            self.key("Down")
        wait(f'"{item.get_name()}" to be selected', lambda: has(item, Atspi.StateType.SELECTED))

    def key(self, *keys):
        xdotool("key", *keys)

    def open_menu(self, window, name):
        """Goes to the row of that first column and opens the menu on it: with the right button, or the menu key."""
        names = [row[0] for row in self.rows(window)]
        grid = self.find(window, "table")
        cell = grid.get_table_iface().get_accessible_at(names.index(name), 0)
        self.go_to(cell, grid, len(names))
        before = calm_screen()
        if self.wayland:
            self.key("Menu")
        else:
            self.click(cell, 3)
        wait("the menu", lambda: screen() != before)

    def reach(self, entry):
        """Goes through the open menu to an entry."""
        for _ in range(8):
            self.focused = None
            self.key("Down")
            if wait("an entry of the menu", lambda: self.focused) == entry:
                return
        raise Failure(f'the menu has no entry "{entry}" that can be reached')

    def close_box(self):
        xdotool("key", "alt+F4")
