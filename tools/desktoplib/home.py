"""A home folder of its own: the XDG folders, the simulated Capture One installed in it, the permissions given."""

import fcntl
import json
import os
import shutil
import sys

from . import french

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PACKAGING = os.path.join(REPOSITORY, "packaging", "linux")
DICTIONARY = os.path.join(REPOSITORY, "src", "captureone", "dictionary.tsv")
MORLA = "app.morla.MORLA"
CAPTURE_ONE = "com.captureone.captureone16"
SETTINGS = "com.apple.systempreferences"

# What a person's own session says of itself must not reach the programs of another one.
FOREIGN_VARIABLES = {
    "AT_SPI_BUS_ADDRESS", "DESKTOP_SESSION", "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE", "GTK_MODULES",
    "LANGUAGE", "LOCPATH", "NO_AT_BRIDGE", "SESSION_MANAGER", "SHLVL", "WAYLAND_DISPLAY",
    "WINDOWID", "WINDOWMANAGER", "XMODIFIERS"}
FOREIGN_PREFIXES = ("GDK_", "GNOME_", "GTK_", "KDE_", "LC_", "QT_", "XDG_", "XFCE_")


def make_folders(base):
    """The folders below `base`, as the variables that name them."""
    home = os.path.join(base, "home")
    folders = {
        "HOME": home,
        "XDG_CONFIG_HOME": os.path.join(home, ".config"),
        "XDG_DATA_HOME": os.path.join(home, ".local", "share"),
        "XDG_STATE_HOME": os.path.join(home, ".local", "state"),
        "XDG_CACHE_HOME": os.path.join(home, ".cache"),
        "XDG_RUNTIME_DIR": os.path.join(base, "run"),
        "TMPDIR": os.path.join(base, "tmp"),
    }
    for folder in folders.values():
        os.makedirs(folder, mode=0o700)
    return folders


def environment(base, programs):
    """The environment of everything on the desktop but DISPLAY and the bus; `programs` comes first in PATH."""
    result = {name: value for name, value in os.environ.items()
              if name not in FOREIGN_VARIABLES and not name.startswith(FOREIGN_PREFIXES)}
    result.update(make_folders(base))
    result.update({
        "PATH": programs + os.pathsep + os.environ.get("PATH", "/usr/local/bin:/usr/bin:/bin"),
        "MORLA_BIN": programs,
        "XAUTHORITY": os.path.join(base, "Xauthority"),
        "XDG_CONFIG_DIRS": "/etc/xdg",
        "XDG_DATA_DIRS": "/usr/local/share:/usr/share",
        "XDG_SESSION_TYPE": "x11",
        "QT_QPA_PLATFORM": "xcb",
        "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        "GSETTINGS_BACKEND": "memory",
    })
    result.update(french.variables(os.path.join(REPOSITORY, "build", "locale"), base))
    return result


def _quoted(path):
    """For between double quotes, in the files of D-Bus and of desktops alike."""
    for special in '\\"`$':
        path = path.replace(special, "\\" + special)
    return path


def _install(template, folder, program):
    """The file of that name without ".in" in `folder`."""
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(PACKAGING, template), encoding="utf-8") as file:
        text = file.read().replace("@CAPTUREONE_SIM@", _quoted(program))
    with open(os.path.join(folder, os.path.basename(template).removesuffix(".in")), "w", encoding="utf-8") as file:
        file.write(text)


def install_capture_one(applications, data_home, program):
    """Makes the program an installed application: its bundle in the folder `applications`, its service (so that a
    message starts it) and its .desktop file below `data_home`. It is the privacy settings as well, with a .desktop
    file of their own."""
    contents = os.path.join(applications, "Capture One.app", "Contents")
    os.makedirs(os.path.join(contents, "Resources"), exist_ok=True)
    shutil.copy(os.path.join(PACKAGING, "capture-one", "Info.plist"), contents)
    shutil.copy(DICTIONARY, os.path.join(contents, "Resources"))
    entries = os.path.join(data_home, "applications")
    _install(f"capture-one/{CAPTURE_ONE}.desktop.in", entries, program)
    _install(f"capture-one/{CAPTURE_ONE}.service.in", os.path.join(data_home, "dbus-1", "services"), program)
    _install(f"system-settings/{SETTINGS}.desktop.in", entries, program)


def allow(data_home):
    """Gives MORLA every permission about which nothing is stored yet. A store that cannot be understood is left to
    MORLA, which keeps it."""
    path = os.path.join(data_home, "privacy", "permissions.json")
    os.makedirs(os.path.dirname(path), mode=0o700, exist_ok=True)
    with open(path + ".lock", "a", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # all who write the store do
        try:
            with open(path, encoding="utf-8") as file:
                store = json.load(file)
        except FileNotFoundError:
            store = {}
        except ValueError:
            store = None
        try:
            store.setdefault("automation", {}).setdefault(MORLA, {}).setdefault(CAPTURE_ONE, "allow")
            for permission in ("screenRecording", "accessibility"):
                store.setdefault(permission, {}).setdefault(MORLA, "allow")
        except AttributeError:
            print(f"{path} is damaged; nothing is allowed in advance", file=sys.stderr)
            return
        # As MORLA does: behind a link the file is replaced, not the link, and what lies in the way is not written to.
        target = os.path.realpath(path)
        temporary = target + ".new"
        if os.path.lexists(temporary):
            os.remove(temporary)
        with open(os.open(temporary, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o600), "w", encoding="utf-8") as file:
            json.dump(store, file, indent=2)
            file.write("\n")
        os.replace(temporary, target)
