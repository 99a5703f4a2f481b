"""The pictures of a walk: numbered ones of the whole screen, and named ones of the program's windows alone."""
import os
import subprocess


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

    def take(self, name):
        self.count += 1
        path = os.path.join(self.folder, f"{self.count:02}-{name}.png")
        subprocess.run(["import", "-silent", "-window", "root", path], check=True)
        print(f"    {os.path.basename(path)}", flush=True)
        if self.windows_folder:  # without the plain colour around the windows
            subprocess.run(["/usr/bin/convert", path, "-trim", "+repage", "-strip", "-define", "png:compression-level=9",
                            os.path.join(self.windows_folder, f"{name}.png")], check=True)
