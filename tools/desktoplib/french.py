"""A French locale for the programs on the desktop, also on a machine that has none: decimal commas are met here."""

import locale
import os
import subprocess
import tempfile

NAME = "fr_FR.UTF-8"
FOLDERS = ("/usr/lib/locale/C.utf8", "/usr/lib/locale/C.UTF-8")


def variables(cache, base):
    """What to export. The locale is compiled once, into `cache`, where it can be (package locales); else the name
    `fr_FR.UTF-8` stands for C.UTF-8, in `base`, so that characters at least are right."""
    if _is_generated():
        return {"LANG": NAME}
    if os.path.isdir(os.path.join(cache, NAME)) or _compile(cache):
        return {"LANG": NAME, "LOCPATH": cache}
    for folder in FOLDERS:
        if os.path.isdir(folder):
            os.mkdir(os.path.join(base, "locale"))
            os.symlink(folder, os.path.join(base, "locale", NAME))
            return {"LANG": NAME, "LOCPATH": os.path.join(base, "locale")}
    return {"LANG": NAME}


def _is_generated():
    before = locale.setlocale(locale.LC_ALL)
    try:
        locale.setlocale(locale.LC_ALL, NAME)
    except locale.Error:
        return False
    locale.setlocale(locale.LC_ALL, before)
    return True


def _compile(cache):
    try:
        os.makedirs(cache, exist_ok=True)
        work = tempfile.mkdtemp(prefix="new.", dir=cache)
        made = os.path.join(work, NAME)
        subprocess.run(["localedef", "-i", "fr_FR", "-f", "UTF-8", made], stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True, timeout=60)
        try:
            os.rename(made, os.path.join(cache, NAME))
        except OSError:
            pass  # another desktop was faster
        subprocess.run(["rm", "-rf", work], check=True)
    except (OSError, subprocess.SubprocessError):
        return False
    return os.path.isdir(os.path.join(cache, NAME))
