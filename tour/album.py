"""The pictures of a walk: numbered ones of the whole screen, and named ones of the program's windows alone."""
import os
import subprocess

from desktop import top_windows


class Album:
    def __init__(self, folder, windows_folder=None):
        self.folder = folder
        self.windows_folder = windows_folder
        self.count = 0
        for place in filter(None, (folder, windows_folder)):
            os.makedirs(place, exist_ok=True)
            for name in os.listdir(place):
                if name.endswith(".png"):
                    os.remove(os.path.join(place, name))

    def take(self, name, new=True):
        """A picture of the screen as it is; one that is not new shows a window that has its own picture already."""
        self.count += 1
        path = os.path.join(self.folder, f"{self.count:02}-{name}.png")
        subprocess.run(["import", "-silent", "-window", "root", path], check=True)
        print(f"    {os.path.basename(path)}", flush=True)
        if self.windows_folder and new:
            left, top, right, bottom = bounds()
            subprocess.run(["/usr/bin/convert", path, "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage",
                            "-strip", "-define", "png:compression-level=9",
                            os.path.join(self.windows_folder, f"{name}.png")], check=True)


def bounds():
    """The smallest rectangle around all windows with their frames: left, top, right, bottom."""
    places = [place for _, _, place in top_windows() if place[2] > 8 and place[3] > 8]
    return (max(0, min(x for x, _, _, _ in places)), max(0, min(y for _, y, _, _ in places)),
            max(x + width for x, _, width, _ in places), max(y + height for _, y, _, height in places))
