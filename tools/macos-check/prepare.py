#!/usr/bin/python3
"""Makes what compiling for macOS on this machine needs and what must not be committed.

    prepare.py FOLDER

FOLDER/include  two headers of this machine's C library, changed so that the 64-bit integers are macOS's `long long`
FOLDER/stubs    one link stub for each framework, from the declarations in sdk/: the classes, functions and constants
                that are declared there and nothing else; and one for each of the system's libraries
"""

import collections
import pathlib
import platform
import re
import subprocess
import sys

import clang_tree

HERE = pathlib.Path(__file__).resolve().parent
SDK = HERE / "sdk"
LLVM = pathlib.Path("/usr/lib/llvm-19")
TARGETS = "[ arm64-macos, x86_64-macos ]"

# What the compiler itself calls for Objective-C with automatic reference counting.
OBJC_RUNTIME = """
    _objc_alloc _objc_alloc_init _objc_autorelease _objc_autoreleasePoolPop _objc_autoreleasePoolPush
    _objc_autoreleaseReturnValue _objc_claimAutoreleasedReturnValue _objc_copyWeak _objc_destroyWeak
    _objc_enumerationMutation _objc_getProperty _objc_initWeak _objc_loadWeakRetained _objc_moveWeak _objc_msgSend
    _objc_msgSend_stret _objc_msgSendSuper2 _objc_opt_class _objc_opt_isKindOfClass _objc_opt_new _objc_opt_respondsToSelector
    _objc_opt_self _objc_release _objc_retain _objc_retainAutorelease _objc_retainAutoreleaseReturnValue
    _objc_retainAutoreleasedReturnValue _objc_retainBlock _objc_setProperty_atomic _objc_setProperty_atomic_copy
    _objc_setProperty_nonatomic _objc_setProperty_nonatomic_copy _objc_storeStrong _objc_storeWeak
    _objc_unsafeClaimAutoreleasedReturnValue ___objc_personality_v0 __objc_empty_cache
""".split()
# What clang's builtins, blocks, C++ exceptions and thread-locals come down to, and macOS's names of C's own things.
SYSTEM = """
    __Exit dyld_stub_binder ___isPlatformVersionAtLeast __NSConcreteGlobalBlock __NSConcreteStackBlock __Block_object_assign
    __Block_object_dispose __Unwind_Resume ___stack_chk_fail ___stack_chk_guard ___stderrp ___stdoutp ___bzero _bzero
    __tlv_bootstrap ___error
""".split()
# What the compiler emits for text and collection literals.
CORE_FOUNDATION = ["___CFConstantStringClassReference"]


def write(path, text):
    """Leaves the file alone when it says the same already, so that nothing is rebuilt for it."""
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def make_headers(folder):
    """glibc's int64_t is `long` on 64-bit machines; macOS's is `long long`, another type in C++."""
    multiarch = pathlib.Path(f"/usr/include/{platform.machine()}-linux-gnu")
    types = (multiarch / "bits/types.h").read_text(encoding="utf-8")
    types, changed = re.subn(r"typedef (signed|unsigned) long int (__u?int64_t);", r"typedef \1 long long int \2;", types)
    if changed != 2:
        sys.exit("prepare.py: this machine's bits/types.h does not define the 64-bit integers as expected")
    write(folder / "bits/types.h", types)
    formats = pathlib.Path("/usr/include/inttypes.h").read_text(encoding="utf-8")
    formats, changed = re.subn(r'(# *define __PRI64_PREFIX\s+)"l"', r'\1"ll"', formats)
    if changed != 1:
        sys.exit("prepare.py: this machine's inttypes.h does not define the formats as expected")
    write(folder / "inttypes.h", formats)


def declared(tree):
    """Framework -> its classes, and framework -> its symbols, as sdk/ declares them."""
    classes, symbols = collections.defaultdict(set), collections.defaultdict(set)
    for node in clang_tree.top_level(tree):
        path = pathlib.Path(node["file"])
        if not path.is_relative_to(SDK):
            continue
        framework = path.relative_to(SDK).parts[0]
        kind = node.get("kind")
        if kind == "ObjCInterfaceDecl" and ("super" in node or "inner" in node):  # not a forward declaration
            classes[framework].add(node["name"])
        elif kind in ("FunctionDecl", "VarDecl") and node.get("storageClass") != "static":
            symbols[framework].add("_" + node["name"])
    return classes, symbols


def stub(path, install_name, classes, symbols):
    lines = ["--- !tapi-tbd", "tbd-version: 4", f"targets: {TARGETS}", f"install-name: '{install_name}'", "exports:",
             f"  - targets: {TARGETS}"]
    if symbols:
        lines.append("    symbols: [ " + ", ".join(f"'{symbol}'" for symbol in sorted(symbols)) + " ]")
    if classes:
        lines.append("    objc-classes: [ " + ", ".join(sorted(classes)) + " ]")
    write(path, "\n".join(lines) + "\n...\n")


def exported(library):
    """The symbols that a shared library of this machine offers, with macOS's leading underscore."""
    names = subprocess.run([LLVM / "bin/llvm-nm", "-D", "--defined-only", "-j", library], check=True,
                           capture_output=True, text=True).stdout.split()
    return {"_" + name.split("@")[0] for name in names}


def make_stubs(folder):
    umbrellas = [path for path in sorted(SDK.glob("*/*.h")) if path.stem == path.parent.name]
    tree = clang_tree.parse([
        LLVM / "bin/clang++", "-target", "arm64-apple-macos13.0", "-x", "objective-c++", "-std=c++20", "-fobjc-arc",
        "-nostdinc++", "-U__nonnull", "-D_GNU_SOURCE", "-D__NO_CTYPE", "-isystem", HERE / "shim", "-isystem", SDK,
        "-isystem", f"/usr/include/{platform.machine()}-linux-gnu", "-isystem", "/usr/include",
        *(word for path in umbrellas for word in ("-include", path)), "/dev/null"])
    classes, symbols = declared(tree)
    symbols["CoreFoundation"] |= set(CORE_FOUNDATION)
    for framework in sorted(set(classes) | set(symbols)):
        if framework in ("objc", "dispatch"):
            continue
        stub(folder / f"{framework}.framework/{framework}.tbd",
             f"/System/Library/Frameworks/{framework}.framework/Versions/A/{framework}", classes[framework],
             symbols[framework])
    stub(folder / "libobjc.tbd", "/usr/lib/libobjc.A.dylib", classes["objc"], set(OBJC_RUNTIME))

    cxx = exported(LLVM / "lib/libc++.so.1.0") | exported(LLVM / "lib/libc++abi.so.1.0")
    stub(folder / "libc++.tbd", "/usr/lib/libc++.1.dylib", set(),
         {name for name in cxx if name.startswith(("__Z", "___cxa", "___gxx"))})
    machine = pathlib.Path(f"/lib/{platform.machine()}-linux-gnu")
    c = exported(machine / "libc.so.6") | exported(machine / "libm.so.6")
    stub(folder / "libSystem.tbd", "/usr/lib/libSystem.B.dylib", set(),
         {name for name in c if re.fullmatch(r"_[a-z][a-z0-9_]*", name)} | symbols["dispatch"] | set(SYSTEM))


def main(arguments):
    if len(arguments) != 1:
        print(__doc__)
        return 2
    folder = pathlib.Path(arguments[0])
    make_headers(folder / "include")
    make_stubs(folder / "stubs")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
