"""The floor that a user could write himself: counts the links that more than one shortcut below a folder holds."""

import os
import sys

seen = {}
for folder, _, names in os.walk(sys.argv[1]):
    for name in names:
        if name.lower().endswith(".url"):
            with open(os.path.join(folder, name), encoding="utf-8") as shortcut:
                for line in shortcut:
                    if line.startswith("URL="):
                        link = line[4:].strip().upper()
                        seen[link] = seen.get(link, 0) + 1
print(sum(1 for count in seen.values() if count > 1))
