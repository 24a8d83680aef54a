"""Processes that end with whoever started them, and a namespace in which two folders of the machine are private."""

import ctypes
import errno
import fcntl
import os
import platform
import select
import shutil
import signal
import struct

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
CLONE_NEWNS = 0x00020000
CLONE_NEWUSER = 0x10000000
MS_NOSUID = 2
MS_NODEV = 4
MS_BIND = 4096
MS_REC = 16384
MS_UNBINDABLE = 1 << 17
MS_PRIVATE = 1 << 18
MNT_DETACH = 2
SFD_CLOEXEC = 0o2000000
SIGNALFD_SIGINFO_SIZE = 128
PIVOT_ROOT = {"x86_64": 155, "aarch64": 41, "riscv64": 41}

_libc = ctypes.CDLL(None, use_errno=True)
_libc.mount.argtypes = [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_ulong, ctypes.c_char_p]


def _checked(result, what):
    if result != 0:
        code = ctypes.get_errno()
        raise OSError(code, f"{what}: {os.strerror(code)}")


def adopt_orphans():
    """From here on a descendant whose parent ends becomes a child of this process, so that none can get away."""
    _checked(_libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0), "prctl")


def signal_at_parents_death(number):
    _checked(_libc.prctl(PR_SET_PDEATHSIG, number, 0, 0, 0), "prctl")


class SignalQueue:
    """The given signals as a descriptor; they must be blocked."""

    def __init__(self, numbers):
        mask = (ctypes.c_ulong * 16)()
        for number in numbers:
            mask[0] |= 1 << (number - 1)
        self._descriptor = _libc.signalfd(-1, mask, SFD_CLOEXEC)
        if self._descriptor < 0:
            raise OSError(ctypes.get_errno(), "signalfd")

    def fileno(self):
        return self._descriptor

    def read(self):
        """The next signal's number and whether a process sent it (the terminal's own Ctrl-C is the kernel's)."""
        number, _error, code = struct.unpack_from("Iii", os.read(self._descriptor, SIGNALFD_SIGINFO_SIZE))
        return number, code <= 0


def spawn(argv, environment, *, log=None, group=None, keep=()):
    """Starts a program that the kernel kills when this process ends, with every signal unblocked; gives its process id.

    `log`: a file for its output; then it also gets no input and a session of its own. `group`: the process group to
    join. `keep`: descriptors that it inherits. A program that cannot be started ends with 127 (absent) or 126.
    """
    parent = os.getpid()
    child = os.fork()
    if child:
        return child
    try:
        if log is not None:
            os.setsid()
            output = os.open(log, os.O_WRONLY | os.O_CREAT | os.O_APPEND, 0o600)
            os.dup2(os.open(os.devnull, os.O_RDONLY), 0)
            os.dup2(output, 1)
            os.dup2(output, 2)
        elif group is not None:
            os.setpgid(0, group)
        for descriptor in keep:
            os.set_inheritable(descriptor, True)
        signal_at_parents_death(signal.SIGKILL)
        if os.getppid() != parent:
            os._exit(125)
        for number in (signal.SIGPIPE, signal.SIGXFSZ):  # Python ignores these, and programs would inherit that
            signal.signal(number, signal.SIG_DFL)
        signal.pthread_sigmask(signal.SIG_SETMASK, [])
        os.execvpe(argv[0], argv, environment)
    except FileNotFoundError:
        os.write(2, f"{argv[0]}: command not found\n".encode())
        os._exit(127)
    except BaseException as error:  # this copy of the process must never run on
        os.write(2, f"{argv[0]}: {error}\n".encode())
        os._exit(126)


def exit_status(wait_status):
    """What a shell would report: the exit status, or 128 + n after signal n."""
    code = os.waitstatus_to_exitcode(wait_status)
    return code if code >= 0 else 128 - code


def _parents():
    """Process id -> parent's, of every process that can be seen."""
    result = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat", "rb") as file:
                    # The name, in parentheses, may itself hold blanks and parentheses.
                    result[int(entry)] = int(file.read().rpartition(b")")[2].split()[1])
            except OSError:
                continue  # it ended meanwhile
    return result


def descendants(of=None):
    """Every process below this one (or `of`), parents before their children."""
    children = {}
    for child, parent in _parents().items():
        children.setdefault(parent, []).append(child)
    found = [of or os.getpid()]
    for parent in found:
        found.extend(children.get(parent, []))
    return found[1:]


def kill_descendants(spare=()):
    """Kills everything below this process except `spare`; gives whether there was anything."""
    victims = [each for each in descendants() if each not in spare]
    for victim in victims:
        try:
            os.kill(victim, signal.SIGKILL)
        except ProcessLookupError:
            pass
    return bool(victims)


def end_descendants():
    """Kills and reaps everything below this process; needs `adopt_orphans`."""
    while kill_descendants():
        try:
            os.waitpid(-1, 0)  # whatever was killed arrives here, at once or when its parent has gone
        except ChildProcessError:
            return


def end_politely(child, seconds):
    """SIGTERM, and SIGKILL when that does not end the child in time."""
    try:
        os.kill(child, signal.SIGTERM)
        descriptor = os.pidfd_open(child)
    except (ProcessLookupError, OSError):
        return
    if not select.select([descriptor], [], [], seconds)[0]:
        os.kill(child, signal.SIGKILL)
    os.close(descriptor)
    try:
        os.waitpid(child, 0)
    except ChildProcessError:
        pass


def _write(path, text):
    with open(path, "w", encoding="ascii") as file:
        file.write(text)


def _enter_mount_namespace():
    user, group = os.geteuid(), os.getegid()
    if _libc.unshare(CLONE_NEWNS) == 0:
        return
    # Without the right to do that, a user namespace gives it, and within it everybody stays who they are.
    _checked(_libc.unshare(CLONE_NEWUSER | CLONE_NEWNS), "unshare")
    _write("/proc/self/setgroups", "deny")
    _write("/proc/self/uid_map", f"{user} {user} 1")
    _write("/proc/self/gid_map", f"{group} {group} 1")


def _mount(source, target, kind, flags, data=None):
    encode = lambda text: None if text is None else os.fsencode(text)
    _checked(_libc.mount(encode(source), encode(target), encode(kind), flags, encode(data)), f"mount {target}")


def enter_private_root(work, private):
    """Gives this process and its children a root folder that looks like the machine's, except that the folders of
    `private` ({path: mode}) are empty and their own. Nothing is made on the machine but the empty folder `work`/root.
    Raises OSError where the machine does not allow it."""
    number = PIVOT_ROOT.get(platform.machine())
    if number is None:
        raise OSError(errno.ENOSYS, f"pivot_root on {platform.machine()} is not known here")
    here = os.getcwd()
    root = os.path.join(work, "root")
    os.mkdir(root)
    _enter_mount_namespace()
    _mount(None, "/", None, MS_REC | MS_PRIVATE)
    _mount("tmpfs", root, "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755")
    # Else the recursive mount of the folder that holds `work` would show the whole root a second time, inside itself,
    # and whoever removes `work` would remove the machine.
    _mount(None, root, None, MS_UNBINDABLE)
    hidden = {path.split("/")[1] for path in private}
    for entry in os.listdir("/"):
        if entry not in hidden:
            _show_in(root, entry)
    for path, mode in private.items():
        os.makedirs(root + path, exist_ok=True)
        os.chmod(root + path, mode)
    os.chdir(root)
    _checked(_libc.syscall(number, b".", b"."), "pivot_root")
    _checked(_libc.umount2(b".", MNT_DETACH), "umount")
    _mount(None, "/", None, MS_PRIVATE)
    os.chdir("/")
    os.chdir(here)
    if has_mounts_below(work):
        raise RuntimeError(f"{work} holds other folders of the machine")


def has_mounts_below(folder):
    with open("/proc/self/mountinfo", "rb") as file:
        points = [line.split()[4].decode("unicode_escape").encode("latin-1") for line in file]
    return any(point.startswith(os.fsencode(folder) + b"/") for point in points)


def remove_folder(folder):
    """Removes it with all it holds, unless something is mounted there: that would be removed as well."""
    if not has_mounts_below(folder):
        shutil.rmtree(folder, ignore_errors=True)


def _show_in(root, entry):
    source, target = os.path.join("/", entry), os.path.join(root, entry)
    if os.path.islink(source):
        os.symlink(os.readlink(source), target)
    elif os.path.isdir(source):
        os.mkdir(target)
        _mount(source, target, None, MS_BIND | MS_REC)
    else:
        os.close(os.open(target, os.O_CREAT | os.O_WRONLY, 0o600))
        _mount(source, target, None, MS_BIND)


def lock_shared_root(private, say):
    """The poor relation of a private root: the machine's own folders, and one desktop at a time. Gives the descriptor
    whose closing ends the lock."""
    for path, mode in private.items():
        try:
            os.makedirs(path, exist_ok=True)
            if os.stat(path).st_uid == os.geteuid():
                os.chmod(path, mode)
        except OSError as error:
            say(f"{path} is missing and cannot be created ({error.strerror}): what needs it will fail")
    descriptor = os.open("/tmp", os.O_RDONLY | os.O_CLOEXEC)
    try:
        fcntl.flock(descriptor, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        say("waiting for another virtual desktop to end")
        fcntl.flock(descriptor, fcntl.LOCK_EX)
    return descriptor
