"""The pictures of a walk: numbered ones of the whole screen, and named ones of the program's windows alone."""
import os
import subprocess

from desktop import output


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
    """The smallest rectangle around all windows of the program with their frames: left, top, right, bottom."""
    boxes = [box for line in output("xwininfo", "-root", "-children").splitlines()
             if line.split() and line.split()[0].startswith("0x") for box in visible_box(line.split()[0])]
    boxes = [box for box in boxes if box[2] - box[0] > 8 and box[3] - box[1] > 8]
    return (max(0, min(box[0] for box in boxes)), max(0, min(box[1] for box in boxes)),
            max(box[2] for box in boxes), max(box[3] for box in boxes))


def visible_box(window):
    about = output("xwininfo", "-id", window)
    if "Map State: IsViewable" not in about:
        return []
    field = {key.strip(): value.strip() for key, _, value in (line.partition(":") for line in about.splitlines())}
    left, top = int(field["Absolute upper-left X"]), int(field["Absolute upper-left Y"])
    return [(left, top, left + int(field["Width"]), top + int(field["Height"]))]
