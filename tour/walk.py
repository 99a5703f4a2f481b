#!/usr/bin/python3
"""The walk through the whole program: both checks, Options, About, every menu and every question."""
import argparse
import os
import stat
import sys
import time

from album import Album
from desktop import Atspi, Desktop, Failure, Program, has, pixels, popup, wait, xdotool

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), ".."))
HOME = os.environ["HOME"]
SETTINGS = os.path.join(HOME, ".config", "Tarnwick", "settings.ini")
OPENED = os.path.join(HOME, "opened")
COMPARED = 40_000  # shortcuts, so that the comparison lasts long enough for a picture

MAIN = "- Tarnwick v3 -"
CHECK = "Tarnwick"
REPORT = "Tarnwick - Problems Report"
OPTIONS = "Tarnwick - Options"
DUPLICATES = "Tarnwick - Duplicate Check"
ABOUT = "About Tarnwick"

FINDINGS = [  # in the order of the walk: Name, Folder, Problem
    ("Old home page", "Favorites root", "Not found (404)"),
    ("Team calendar", "Favorites root", "Forbidden (403)"),
    ("Chess club", "Hobby", "Forbidden (403)"),
    ("No such site", "Hobby", "Unable to connect"),
    ("Archive 100%", "News", "Not found (404)"),
    ("Evening paper", "News", "Not found (404)"),
    ("Weather at home", "News", "Timed out"),
    ("Weather", "News", "Timed out"),
    ("<b>R&D<b>", "R&D <b>bold", "Not found (404)"),
    ("Release notes (mirror)", "Software", "Not found (404)"),
    ("Release notes (old)", "Software", "Not found (404)"),
    ("Release notes", "Software", "Not found (404)"),
    ("Intranet", "Work", "Unauthorized (401)"),
    ("Printer", "Work", "Connection error"),
    ("Wiki (wrong password)", "Work", "Unauthorized (401)"),
    ("Old plan", "Projects", "Not found (404)"),
    ("Kick-off notes", "Archive 2003", "Not found (404)"),
]

PAIRS = [  # Link 1, Folder 1, Link 2, Folder 2
    ("Nothing inside", "Favorites root", "Empty shortcut", "Hobby"),
    ("Morning reading", "Hobby", "Morning paper", "News"),
    ("Weather at home", "News", "Weather", "News"),
    ("Downloads (copy)", "Software", "Downloads", "Software"),
    ("Release notes (mirror)", "Software", "Release notes (old)", "Software"),
    ("Release notes (mirror)", "Software", "Release notes", "Software"),
    ("Release notes (old)", "Software", "Release notes", "Software"),
]


def expect(what, got, wanted):
    if got != wanted:
        raise Failure(f"{what}: {got!r} instead of {wanted!r}")


def expect_in(what, part, text):
    if part not in text:
        raise Failure(f"{what}: no {part!r} in {text!r}")


def files(root):
    """Every file of a folder with its bytes, its time and its mode."""
    found = {}
    for folder, _, names in os.walk(root):
        for name in names:
            path = os.path.join(folder, name)
            about = os.lstat(path)
            with open(path, "rb") as file:
                found[os.path.relpath(path, root)] = (file.read(), about.st_mtime_ns, stat.S_IMODE(about.st_mode))
    return found


class Walk:
    def __init__(self, program, album):
        self.album = album
        self.favorites = os.path.join(HOME, "Favorites")
        self.before = files(self.favorites)
        self.removed = set()
        self.path = program
        self.program = None
        self.catch_opened_urls()

    def catch_opened_urls(self):
        """The user's program for URLs is one that only writes down what it was given."""
        folder = os.path.join(HOME, "bin")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, "xdg-open")
        with open(path, "w", encoding="utf-8") as script:
            script.write(f'#!/bin/sh\nprintf "%s\\n" "$#" "$@" >> "{OPENED}"\n')
        os.chmod(path, 0o755)
        os.environ["PATH"] = folder + os.pathsep + os.environ["PATH"]

    def expect_files(self):
        """Nothing but the removed files differs from the beginning."""
        wanted = {name: about for name, about in self.before.items() if name not in self.removed}
        now = files(self.favorites)
        expect("files that are gone", sorted(set(wanted) - set(now)), [])
        expect("files that are new", sorted(set(now) - set(wanted)), [])
        expect("files that changed", sorted(name for name in now if now[name] != wanted[name]), [])

    def expect_opened(self, *urls):
        wanted = "".join(f"1\n{url}\n" for url in urls)

        def read():
            with open(OPENED, encoding="utf-8") as file:
                return file.read()
        wait("the browser to be given the URL", lambda: os.path.exists(OPENED) and len(read()) >= len(wanted))
        expect("what the browser was given", read(), wanted)
        os.remove(OPENED)

    def answer(self, title, button, *parts, picture=None):
        """Answers a message box, after a look at its text."""
        box, text = self.program.box(title)
        for part in parts:
            expect_in("the message box", part, text)
        self.program.focus(title)
        if picture:
            self.album.take(picture)
        self.program.press(box, button)
        self.program.box_gone()

    # Start, About, Options

    def start(self):
        self.program = Program(self.path)
        self.program.window(ABOUT)
        self.album.take("splash")
        self.program.gone(ABOUT)
        self.program.focus(MAIN)
        self.album.take("main")

    def about(self):
        program = self.program
        program.key("alt+a")
        window = program.window(ABOUT)
        expect_in("the About window", "Current release: v.3.00.0028",
                  [label.get_name() for label in program.all(window, "label")])
        self.album.take("about")
        x, y, width, height = program.place(window)
        xdotool("mousemove", x + width * 2 // 3, y + height // 2, "click", 1)
        program.gone(ABOUT)

    def open_options(self):
        self.program.focus(MAIN)
        self.program.key("alt+o")
        window = self.program.window(OPTIONS)
        self.program.focus(OPTIONS)
        return window

    def options(self):
        program = self.program
        before = open(SETTINGS, "rb").read()
        window = self.open_options()
        self.album.take("options")
        program.key("Escape")  # is no cancel key
        program.key("BackSpace")  # the text of the first field is selected
        program.press(window, "OK")
        self.answer("Belvane Tarnwick", "OK", "Timeout value must be numeric", picture="options-timeout-refused")
        program.type("5")
        program.click(program.find(window, "check box", "Proxy"), left=7)
        program.click(program.find(window, "text", "Proxy port"))
        program.key("ctrl+a")
        program.type("abc")
        self.album.take("options-proxy")
        program.press(window, "OK")
        self.answer("Belvane Tarnwick", "OK", "Proxy Port value must be numeric", picture="options-port-refused")
        program.click(program.find(window, "check box", "Proxy"), left=7)
        self.warnings(window)
        for name in ("Catch Unauth links (401)", "Catch Forbidden links (403)", "Catch Not found links (404)"):
            program.click(program.find(window, "check box", name), left=7)
        program.press(window, "OK")
        self.answer("Tarnwick", "OK", "You must to choose at least one category to catch.",
                    picture="options-category-refused")
        self.makers_link(window)
        program.press(window, "Cancel")
        program.gone(OPTIONS)
        expect("the settings after Cancel", open(SETTINGS, "rb").read(), before)

    def makers_link(self, window):
        """The one label that acts as a link: underlined under the mouse, opened by a click."""
        x, y, width, height = self.program.place(self.program.find(window, "label", "Belvane Software"))
        before = pixels(x, y, width, height)
        xdotool("mousemove", x + width // 4, y + height // 2)
        wait("the underline", lambda: pixels(x, y, width, height) != before)
        self.album.take("options-link")
        xdotool("click", 1)
        self.expect_opened("https://www.belvane.example/")

    def warnings(self, window):
        """Each of the three doubtful categories warns when it is ticked, and is unticked again."""
        program = self.program
        for name, line, picture in (
                ("Catch Unabled to connect links", "- The remote host is currently down", "options-warning-unabled"),
                ("Catch Connection errors", "- The protocol is invalid for Tarnwick", "options-warning-connection"),
                ("Catch Timed out links", "- A low timeout value is currently setted", "options-warning-timed-out")):
            check = program.find(window, "check box", name)
            program.click(check, left=7)
            wait(f'"{name}" to be unticked', lambda: not has(check, Atspi.StateType.CHECKED))
            program.click(check, left=7)
            self.answer("Tarnwick", "OK", "WARNING!", line, picture=picture)
            program.click(check, left=7)
            wait(f'"{name}" to be unticked', lambda: not has(check, Atspi.StateType.CHECKED))

    def options_confirmed(self):
        window = self.open_options()
        self.program.type("4")
        self.program.key("Return")
        self.program.gone(OPTIONS)
        with open(SETTINGS, encoding="utf-8") as file:
            lines = file.read().splitlines()
        expect("the number of stored settings", sum("=" in line for line in lines), 11)
        expect_in("the settings after OK", "Timeout=4", lines)

    # The availability check

    def enter_check(self):
        self.program.focus(MAIN)
        self.program.key("Return")
        window = self.program.window(CHECK)
        self.program.focus(CHECK)
        return window

    def to_tree(self, window):
        self.program.press(window, "Go")
        self.program.find(window, "push button", "Start")

    def tick(self, window, name):
        program = self.program
        was = name in program.ticked(window)
        program.click(program.node(window, name), left=7)
        wait(f'the tick of "{name}" to change', lambda: (name in program.ticked(window)) != was)

    def select_folders(self):
        """From the help text to the tree, a start with nothing selected, and ticks by mouse."""
        program = self.program
        window = self.enter_check()
        self.album.take("check-help")
        self.to_tree(window)
        expect("the ticks of a new tree", program.ticked(window), ["Scan subfolders"])
        program.press(window, "Start")
        self.answer("Tarnwick", "OK", "No folder(s) selected to scan", picture="check-nothing-selected")
        self.tick(window, "Empty folder")
        self.album.take("check-folders")
        return window

    def run_without_findings(self, window):
        program = self.program
        program.press(window, "Start")
        program.find(window, "push button", "Finish")
        self.expect_text(window, "No bad Favorites found at this time.")
        self.album.take("check-finish")
        program.press(window, "Finish")
        program.gone(CHECK)

    def expect_text(self, window, part):
        wait(f'the text "{part}"', lambda: any(
            part in label.get_name() for label in self.program.all(window, "label")))

    def run_stopped(self):
        """A run that the user stops while a site is silent; its report; back to the main window."""
        program = self.program
        window = self.enter_check()
        self.to_tree(window)
        self.tick(window, "Empty folder")
        self.tick(window, "News")
        program.press(window, "Start")
        wait("the silent site", lambda: program.value(window, "Name") == "Weather at home"
             and program.value(window, "Status") == "Checking document...")
        self.album.take("check-progress")
        program.press(window, "Stop")
        program.find(window, "push button", "Report")
        self.expect_text(window, "2 bad Favorite(s) found before the interruption.")
        self.album.take("check-stopped")
        program.press(window, "Report")
        report = program.window(REPORT)
        expect("the rows of a stopped run", [(r[0], r[1], r[3]) for r in program.rows(report)], FINDINGS[4:6])
        program.press(report, "Done")
        program.gone(REPORT)

    def run_whole(self):
        """A run over everything, selected with the keyboard."""
        program = self.program
        window = self.enter_check()
        self.to_tree(window)
        expect("the ticks of the run before", program.ticked(window), ["News", "Scan subfolders"])
        program.focus_control(window, "Favorites folders")
        program.key("Home", "Down", "space")
        wait("the root to take the folder's tick",
             lambda: program.ticked(window) == ["- Favorites Root -", "Scan subfolders"])
        self.album.take("check-root-selected")
        program.key("Return")
        program.find(window, "push button", "Stop")
        wait("the end of the run", lambda: any(
            button.get_name() == "Report" for button in program.all(window, "push button")), 120)
        self.expect_text(window, f"{len(FINDINGS)} bad Favorite(s) found at this time.")
        self.album.take("check-report")
        program.press(window, "Report")
        return program.window(REPORT)

    # The report

    def report(self, window):
        program = self.program
        expect("the rows of the report", [(r[0], r[1], r[3]) for r in program.rows(window)], FINDINGS)
        program.focus(REPORT)
        self.album.take("report")
        header = next(h for h in program.headers(program.grid(window)) if h.get_name() == "Problem")
        program.click(header)
        wanted = sorted((row[2] for row in FINDINGS), key=str.casefold)
        wait("the rows in the order of their problems", lambda: [r[3] for r in program.rows(window)] == wanted)
        self.album.take("report-sorted")

    def row_of(self, window, name, column=0):
        return next(i for i, row in enumerate(self.program.rows(window)) if row[column] == name)

    def open_menu(self, window, row):
        """Selects a row and opens the menu on it with the right button."""
        cell = self.program.cell(window, row)
        self.program.click(cell)
        self.program.click(cell, 3)
        popup()

    def remove(self, window):
        """The question is answered No, then Yes; only then is the file gone."""
        program = self.program
        name = "<b>R&D<b>"
        file = "R&D <b>bold/<b>R&D<b>.url"
        question = ("Are you sure to remove the following Favorite?", f"Name: {name}", "Folder: R&D <b>bold",
                    "Problem: Not found (404)", "URL: http://")
        self.open_menu(window, self.row_of(window, name))
        program.reach("Remove it")
        self.album.take("report-menu")
        xdotool("click", 1)
        self.answer("Tarnwick", "No", *question, picture="report-remove")
        self.expect_files()
        expect("the row after No", any(row[0] == name for row in program.rows(window)), True)
        self.open_menu(window, self.row_of(window, name))
        program.choose("Remove it")
        program.box()
        program.focus("Tarnwick")
        program.key("Return")  # the default answer is No
        program.box_gone()
        self.expect_files()
        self.open_menu(window, self.row_of(window, name))
        program.choose("Remove it")
        self.answer("Tarnwick", "Yes", *question)
        wait("the row to go", lambda: not any(row[0] == name for row in program.rows(window)))
        self.removed.add(file)
        self.expect_files()
        self.album.take("report-removed")

    def hide_and_open(self, window):
        program = self.program
        self.open_menu(window, self.row_of(window, "Printer"))
        program.choose("Hide it")
        wait("the row to go", lambda: not any(row[0] == "Printer" for row in program.rows(window)))
        self.expect_files()
        self.album.take("report-hidden")
        # All with the keyboard, on the row that is selected there.
        row = self.row_of(window, "Archive 100%")
        program.click(program.cell(window, row))
        program.key("Menu")
        popup()
        names = program.reach("Go this site", with_keys=True)
        expect_in("the menu's top entry", "Archive 100%", names)
        self.album.take("report-menu-by-keyboard")
        program.key("Return")
        self.expect_opened(program.rows(window)[row][2])
        expect("the number of rows at the end", len(program.rows(window)), len(FINDINGS) - 2)
        self.expect_files()

    def report_left(self, window):
        self.about_over(REPORT)
        self.program.press(window, "Done")
        self.program.gone(REPORT)

    def about_over(self, title):
        program = self.program
        program.focus(title)
        program.key("alt+a")
        window = program.window(ABOUT)
        x, y, width, height = program.place(window)
        xdotool("mousemove", x + width * 2 // 3, y + height // 2, "click", 1)
        program.gone(ABOUT)
        program.focus(title)

    # The duplicate check

    def enter_duplicates(self):
        program = self.program
        main_window = program.window(MAIN)
        program.focus(MAIN)
        program.click(program.find(main_window, "radio button", "Duplicate check"), left=7)
        program.press(main_window, "Go!")
        window = program.window(DUPLICATES)
        program.focus(DUPLICATES)
        return window

    def duplicates_canceled(self):
        """Enter starts the check, and at once a second Enter cancels it."""
        program = self.program
        window = self.enter_duplicates()
        self.album.take("duplicates-help")
        program.key("Return", "Return")
        self.expect_text(window, "Operation canceled by user")
        self.album.take("duplicates-canceled")
        program.press(window, "Finish")
        program.gone(DUPLICATES)

    def duplicates(self):
        program = self.program
        window = self.enter_duplicates()
        program.press(window, "Start")
        program.find(window, "push button", "Finish")
        expect("the pairs", program.rows(window), PAIRS)
        self.album.take("duplicates-rows")
        self.open_menu(window, self.row_of(window, "Release notes (mirror)"))
        names = program.reach("Remove Link 1")
        self.album.take("duplicates-menu")
        xdotool("click", 1)
        question = ("Are you sure to remove the following Favorite?", "Name: Release notes (mirror)", "Folder: Software")
        self.answer("Tarnwick", "No", *question, picture="duplicates-remove")
        self.expect_files()
        self.open_menu(window, self.row_of(window, "Release notes (mirror)"))
        program.choose("Remove Link 1")
        self.answer("Tarnwick", "Yes", *question)
        self.removed.add("Software/Release notes (mirror).url")
        wait("the row to go", lambda: len(program.rows(window)) == len(PAIRS) - 1)
        self.expect_files()
        # Of three equal links the other row stays, and goes without a word when its file is gone already.
        self.open_menu(window, self.row_of(window, "Release notes (mirror)"))
        program.choose("Remove Link 1")
        self.answer("Tarnwick", "Yes", *question)
        wait("the row to go", lambda: len(program.rows(window)) == len(PAIRS) - 2)
        self.open_menu(window, self.row_of(window, "Nothing inside"))
        program.choose("Remove Link 2")
        self.answer("Tarnwick", "Yes", "Name: Empty shortcut", "Folder: Hobby")
        self.removed.add("Hobby/Empty shortcut.url")
        wait("the row to go", lambda: len(program.rows(window)) == len(PAIRS) - 3)
        self.expect_files()
        self.album.take("duplicates-removed")
        self.about_over(DUPLICATES)
        program.press(window, "Finish")
        program.gone(DUPLICATES)

    def end(self, picture):
        """The close box of the main window is the only way to end the program."""
        self.program.focus(MAIN)
        self.album.take(picture, new=False)
        xdotool("key", "alt+F4")
        expect("the status of the program", self.program.wait_end(), 0)
        self.expect_files()

    # A second start, with another Favorites folder

    def few_favorites(self, count):
        """Starts over with a folder of different links, named in the user's list of folders."""
        self.favorites = os.path.join(HOME, "Few favorites")
        os.makedirs(self.favorites)
        for number in range(count):
            with open(os.path.join(self.favorites, f"Site {number}.url"), "w", encoding="utf-8") as file:
                file.write(f"[InternetShortcut]\nURL=http://site-{number}.invalid/\n")
        with open(os.path.join(HOME, ".config", "user-dirs.dirs"), "w", encoding="utf-8") as file:
            file.write('XDG_FAVORITES_DIR="$HOME/Few favorites"\n')
        self.before = files(self.favorites)
        self.removed = set()

    def no_duplicates(self):
        program = self.program = Program(self.path)
        program.focus(MAIN)
        window = self.enter_duplicates()
        program.press(window, "Start")
        if len(self.before) > 1000:  # long enough for pictures of the work
            self.expect_text(window, "Scanning Favorites, please wait...")
            self.album.take("duplicates-scanning")
            self.expect_text(window, "Comparing links...")
            self.album.take("duplicates-comparing")
        program.find(window, "push button", "Finish")
        self.expect_text(window, "No duplicated Favorites found at this time.")
        self.album.take("duplicates-finish")
        xdotool("key", "alt+F4")  # the close box leads back as "Finish" does
        program.gone(DUPLICATES)

    def close_check(self):
        """The close box of the check leads back too, and the window comes anew."""
        program = self.program
        window = self.enter_check()
        self.to_tree(window)
        self.tick(window, "Scan subfolders")
        xdotool("key", "alt+F4")
        program.gone(CHECK)
        window = self.enter_check()
        self.to_tree(window)
        expect("the ticks of a new tree", program.ticked(window), ["Scan subfolders"])
        xdotool("key", "alt+F4")
        program.gone(CHECK)

    def all(self):
        self.start()
        self.about()
        self.options()
        self.run_without_findings(self.select_folders())
        self.run_stopped()
        report = self.run_whole()
        self.report(report)
        self.remove(report)
        self.hide_and_open(report)
        self.report_left(report)
        self.options_confirmed()
        self.duplicates_canceled()
        self.duplicates()
        self.end("main-again")
        self.few_favorites(COMPARED if self.album.windows_folder else 3)
        self.no_duplicates()
        self.close_check()
        self.end("main-at-the-end")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--screenshots", action="store_true")
    parser.add_argument("program")
    arguments = parser.parse_args()
    album = Album(os.path.join(ROOT, "build", "tour"),
                  os.path.join(ROOT, "build", "screenshots") if arguments.screenshots else None)
    began = time.monotonic()
    desktop = Desktop()
    walk = Walk(os.path.realpath(arguments.program), album)
    try:
        walk.all()
    except Failure as failure:
        album.take("failure")
        print(f"tour: {failure}", file=sys.stderr)
        return 1
    finally:
        if walk.program:
            walk.program.kill()
        desktop.close()
    print(f"    The walk took {time.monotonic() - began:.0f} s. Its {album.count} screenshots are in {album.folder}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
