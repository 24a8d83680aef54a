#!/usr/bin/python3
"""Fails on an include that goes against the arrows of the house.

    include_arrows.py FOLDER     checks every source below FOLDER/src
    include_arrows.py --self-test   checks that each kind of offence is found
"""

import pathlib
import re
import sys
import tempfile

# Folder -> folders whose headers it may include. The longest matching folder counts.
ARROWS = {
    "base": [],
    "base/unicode": ["base"],
    "view": ["base"],
    "view/panels": ["base", "view"],
    "platform": ["base", "view"],
    "camerawatch": ["base", "view", "platform"],
    "shortcuts": ["base", "view", "platform"],
    "mirror": ["base", "view", "platform"],
    "update": ["base", "view", "platform"],
    "app": ["base", "view", "platform", "camerawatch", "shortcuts", "mirror", "update"],
    "applescript": ["base"],
    "privacy": ["base"],
    "scriptingbus": ["base", "applescript"],
    "captureone": ["base", "applescript", "privacy", "scriptingbus"],
    "platform/fake": ["base", "view", "platform"],
    "platform/linux": ["base", "view", "platform", "applescript", "privacy", "scriptingbus"],
    "platform/macos": ["base", "view", "platform"],
}
# Among the features one arrow is allowed, to one header.
ALLOWED_HEADERS = {
    "shortcuts": ["camerawatch/CaptureOneFocus.h"],
    "mirror": ["camerawatch/CaptureOneFocus.h"],
}
# Nothing but the C++ standard library stands under these.
CORE = ["base", "view", "platform", "camerawatch", "shortcuts", "mirror", "update", "app", "applescript"]
STANDARD = re.compile(r"^[a-z_]+$")

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s+(["<])([^">]+)[">]')


def area_of(path):
    """The area that a path relative to src/ belongs to: "base/unicode/Unicode.h" -> "base/unicode"."""
    folder = str(pathlib.PurePosixPath(path).parent)
    while folder not in ARROWS:
        if folder in ("", "."):
            return None
        folder = str(pathlib.PurePosixPath(folder).parent)
    return folder


def may_include(area, header, target):
    if target == area or header in ALLOWED_HEADERS.get(area, []):
        return True
    # An arrow to a folder leads to its subfolders too; those of platform are back ends, and nobody's.
    allowed = ARROWS[area]
    return target in allowed or (target.split("/")[0] in allowed and not target.startswith("platform/"))


def offences(source_root):
    for path in sorted(source_root.rglob("*")):
        if path.suffix not in (".h", ".cpp", ".mm", ".m"):
            continue
        relative = path.relative_to(source_root).as_posix()
        area = area_of(relative)
        if area is None:
            yield f"{relative}: in no folder that the arrows know"
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            quote, header = match.groups()
            where = f"{relative}:{number}"
            if quote == "<":
                if area in CORE + ["base/unicode", "view/panels"] and not STANDARD.match(header):
                    yield f"{where}: <{header}> is not of the C++ standard library"
                continue
            target = area_of(header)
            if target is None:
                yield f'{where}: "{header}" is not named from src/'
            elif not may_include(area, header, target):
                yield f'{where}: {area} must not include "{header}"'


def self_test():
    wrong = {
        "base/A.h": '#include "view/View.h"\n',
        "view/A.h": '#include "platform/Panel.h"\n',
        "camerawatch/A.h": '#include "platform/linux/Backend.h"\n',
        "camerawatch/B.h": '#include "mirror/FloatingButton.h"\n',
        "mirror/A.h": '#include "camerawatch/FormatMonitor.h"\n',
        "applescript/A.h": '#include "captureone/Model.h"\n',
        "app/A.cpp": "#include <QWidget>\n",
        "platform/A.h": '#include "platform/fake/FakePlatform.h"\n',
        "base/B.h": "#include <X11/Xlib.h>\n",
        "platform/fake/A.h": '#include "platform/linux/Backend.h"\n',
        "base/C.cpp": '#include "C.h"\n',
        "elsewhere/A.h": "",
    }
    right = {
        "mirror/B.h": '#include "camerawatch/CaptureOneFocus.h"\n#include <vector>\n',
        "app/B.cpp": '#include "camerawatch/FormatMonitor.h"\n#include "base/unicode/Unicode.h"\n',
        "platform/linux/A.cpp": '#include <QWidget>\n#include "scriptingbus/Client.h"\n',
    }
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in {**wrong, **right}.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text, encoding="utf-8")
        found = list(offences(root))
    missed = [name for name in wrong if not any(offence.startswith(name) for offence in found)]
    blamed = [offence for offence in found if any(offence.startswith(name) for name in right)]
    for name in missed:
        print(f"an offence was not found: {name}: {wrong[name].strip()}")
    for offence in blamed:
        print(f"wrongly blamed: {offence}")
    return 1 if missed or blamed else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    if len(arguments) != 1:
        print(__doc__)
        return 2
    found = list(offences(pathlib.Path(arguments[0]) / "src"))
    for offence in found:
        print(offence)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
