#!/usr/bin/python3
"""The walk through the program: Options, both checks, their reports, a menu and a question of each kind."""
import argparse
import os
import stat
import sys
import time

from album import Album
from desktop import Desktop, Failure, Program, wait

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), ".."))
HOME = os.environ["HOME"]
FAVORITES = os.path.join(HOME, "Favorites")
SETTINGS = os.path.join(HOME, ".config", "Tarnwick", "settings.ini")
OPENED = os.path.join(HOME, "opened")

MAIN = "- Tarnwick v3 -"
CHECK = "Tarnwick"
REPORT = "Tarnwick - Problems Report"
OPTIONS = "Tarnwick - Options"
DUPLICATES = "Tarnwick - Duplicate Check"
ABOUT = "About Tarnwick"

BAD = 17  # favorites of the sample
PAIRS = 7


def expect(what, got, wanted):
    if got != wanted:
        raise Failure(f"{what}: {got!r} instead of {wanted!r}")


def files():
    """Every favorite with its bytes, its time and its mode."""
    found = {}
    for folder, _, names in os.walk(FAVORITES):
        for name in names:
            path = os.path.join(folder, name)
            about = os.lstat(path)
            with open(path, "rb") as file:
                found[os.path.relpath(path, FAVORITES)] = (file.read(), about.st_mtime_ns, stat.S_IMODE(about.st_mode))
    return found


def catch_opened_urls():
    """The user's program for URLs is one that only writes down what it was given."""
    folder = os.path.join(HOME, "bin")
    os.makedirs(folder)
    path = os.path.join(folder, "xdg-open")
    with open(path, "w", encoding="utf-8") as script:
        script.write(f'#!/bin/sh\nprintf "%s\\n" "$#" "$@" > "{OPENED}"\n')
    os.chmod(path, 0o755)
    os.environ["PATH"] = folder + os.pathsep + os.environ["PATH"]


class Walk:
    def __init__(self, program, album):
        self.program = program
        self.album = album
        self.files = files()

    def expect_files(self, removed=None):
        """Nothing differs from before but the one removed file."""
        if removed:
            wait(f"{removed} to go", lambda: not os.path.exists(os.path.join(FAVORITES, removed)))
            del self.files[removed]
        now = files()
        expect("files that are gone, new or changed",
               sorted(name for name in set(self.files) | set(now) if self.files.get(name) != now.get(name)), [])

    def answer(self, title, button, *parts, picture=None):
        """Answers a message box, after a look at its text."""
        box = self.program.window(title, box=True)
        for part in parts:
            self.program.text(box, part)
        if picture:
            self.album.take(picture)
        self.program.press(box, button)
        self.program.gone(title, box=True)

    def start(self):
        wait("the splash", lambda: self.program.windows(ABOUT))
        self.album.take("splash")
        self.program.gone(ABOUT)
        self.program.window(MAIN)
        self.album.take("main")

    def about(self):
        program = self.program
        program.key("alt+a")
        window = program.window(ABOUT)
        program.text(window, "Current release: v.3.00.0028")
        self.album.take("about")
        program.click(window)
        program.gone(ABOUT)

    def options(self):
        """A refused value, what Cancel leaves alone, and what OK stores."""
        program = self.program
        with open(SETTINGS, "rb") as file:
            before = file.read()
        window = self.open_options()
        self.album.take("options")
        program.key("BackSpace")  # the text of the first field is selected
        program.press(window, "OK")
        self.answer("Belvane Tarnwick", "OK", "Timeout value must be numeric", picture="options-refused")
        program.press(window, "Cancel")
        program.gone(OPTIONS)
        with open(SETTINGS, "rb") as file:
            expect("the settings after Cancel", file.read(), before)
        window = self.open_options()
        program.key("4")
        check = program.find(window, "check box", "Catch Timed out links")
        program.act(check, left=7)
        program.act(check, left=7)
        self.answer("Tarnwick", "OK", "WARNING!", picture="options-warning")
        program.window(OPTIONS)
        program.key("Return")
        program.gone(OPTIONS)
        with open(SETTINGS, encoding="utf-8") as file:
            expect("the stored time-out", "Timeout=4" in file.read().splitlines(), True)

    def open_options(self):
        self.program.window(MAIN)
        self.program.key("alt+o")
        return self.program.window(OPTIONS)

    def enter_check(self, picture=None):
        program = self.program
        program.press(program.window(MAIN), "Go!")
        window = program.window(CHECK)
        if picture:
            self.album.take(picture)
        program.press(window, "Go")
        program.find(window, "push button", "Start")
        return window

    def run_without_findings(self):
        program = self.program
        window = self.enter_check("check-help")
        program.press(window, "Start")
        self.answer("Tarnwick", "OK", "No folder(s) selected to scan", picture="check-nothing-selected")
        program.tick(window, "Empty folder")
        self.album.take("check-folders")
        program.press(window, "Start")
        program.find(window, "push button", "Finish")
        self.album.take("check-finish")
        program.press(window, "Finish")
        program.gone(CHECK)

    def run_stopped(self):
        """The user stops while a site is silent."""
        program = self.program
        window = self.enter_check()
        program.tick(window, "Empty folder")
        program.tick(window, "News")
        program.press(window, "Start")
        wait("the silent site", lambda: program.find(window, "label", legend="Name").get_name() == "Weather at home")
        self.album.take("check-progress")
        program.press(window, "Stop")
        program.text(window, "2 bad Favorite(s) found before the interruption.")
        self.album.take("check-stopped")
        program.press(window, "Report")
        window = program.window(REPORT)
        expect("the rows of a stopped run", [row[0] for row in program.rows(window)], ["Archive 100%", "Evening paper"])
        program.press(window, "Done")
        program.gone(REPORT)

    def run_whole(self):
        program = self.program
        window = self.enter_check()
        program.tick(window, "- Favorites Root -")
        expect("the ticks", program.ticked(window), ["- Favorites Root -", "Scan subfolders"])
        program.press(window, "Start")
        wait("the end of the run", lambda: any(
            button.get_name() == "Report" for button in program.all(window, "push button")), 120)
        program.text(window, f"{BAD} bad Favorite(s) found at this time.")
        self.album.take("check-report")
        program.press(window, "Report")

    def report(self):
        """A removal that is refused, one that is meant, a hidden row and an opened site."""
        program = self.program
        window = program.window(REPORT)
        expect("the number of rows", len(program.rows(window)), BAD)
        self.album.take("report")
        name, file = "<b>R&D<b>", "R&D <b>bold/<b>R&D<b>.url"
        question = f"Name: {name}\nFolder: R&D <b>bold\nProblem: Not found (404)"
        for button, removed in (("No", None), ("Yes", file)):
            program.open_menu(window, name)
            program.reach("Remove it")
            self.album.take("report-menu")
            program.key("Return")
            self.answer("Tarnwick", button, *question.splitlines(), picture="report-remove")
            self.expect_files(removed)
        self.choose(window, "Printer", "Hide it")
        wait("the row to go", lambda: len(program.rows(window)) == BAD - 2)
        url = next(row[2] for row in program.rows(window) if row[0] == "Archive 100%")
        self.choose(window, "Archive 100%", "Go this site")
        wait("the browser to be given the URL", lambda: os.path.exists(OPENED) and os.path.getsize(OPENED))
        with open(OPENED, encoding="utf-8") as opened:
            expect("what the browser was given", opened.read(), f"1\n{url}\n")
        self.expect_files()
        program.press(window, "Done")
        program.gone(REPORT)

    def choose(self, window, row, entry):
        self.program.open_menu(window, row)
        self.program.reach(entry)
        self.program.key("Return")

    def duplicates(self):
        program = self.program
        window = program.window(MAIN)
        program.act(program.find(window, "radio button", "Duplicate check"), left=7)
        program.press(window, "Go!")
        window = program.window(DUPLICATES)
        self.album.take("duplicates-help")
        program.press(window, "Start")
        program.find(window, "push button", "Finish")
        expect("the number of pairs", len(program.rows(window)), PAIRS)
        self.album.take("duplicates-rows")
        program.open_menu(window, "Nothing inside")
        program.reach("Remove Link 2")
        self.album.take("duplicates-menu")
        program.key("Return")
        self.answer("Tarnwick", "Yes", "Name: Empty shortcut", "Folder: Hobby", picture="duplicates-remove")
        self.expect_files("Hobby/Empty shortcut.url")
        wait("the row to go", lambda: len(program.rows(window)) == PAIRS - 1)
        self.album.take("duplicates-removed")
        program.press(window, "Finish")
        program.gone(DUPLICATES)

    def all(self):
        self.start()
        if not self.program.wayland:
            self.about()  # only a click closes it, and only X11 says where it is
        self.options()
        self.run_without_findings()
        self.run_stopped()
        self.run_whole()
        self.report()
        self.duplicates()
        self.program.window(MAIN)
        if not self.program.wayland:
            self.program.close_box()
            expect("the status of the program", self.program.wait_end(), 0)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--screenshots", action="store_true")
    parser.add_argument("--wayland", action="store_true")
    parser.add_argument("program")
    arguments = parser.parse_args()
    album = Album(os.path.join(ROOT, "build", "wayland-tour" if arguments.wayland else "tour"),
                  os.path.join(ROOT, "build", "screenshots") if arguments.screenshots else None)
    began = time.monotonic()
    catch_opened_urls()
    desktop = Desktop(arguments.wayland)
    program = None
    try:
        program = Program(arguments.program, arguments.wayland)
        Walk(program, album).all()
    except Failure as failure:
        album.take("failure")
        print(f"tour: {failure}", file=sys.stderr)
        return 1
    finally:
        if program:
            program.process.kill()
        desktop.close()
    print(f"    The walk took {time.monotonic() - began:.0f} s. Its {album.count} screenshots are in {album.folder}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
