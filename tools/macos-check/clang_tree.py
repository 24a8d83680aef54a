"""Clang's syntax tree of a source, as Python values."""

import json
import subprocess
import sys


def parse(command):
    """The translation unit; every node of it has a "file", the one in which it is written.

    The dump names a file only where it changes from one location to the next, so the locations must be read in the
    order in which they were written, all of them.
    """
    run = subprocess.run([*map(str, command), "-fsyntax-only", "-Xclang", "-ast-dump=json"], capture_output=True,
                         text=True)
    if run.returncode != 0:
        sys.exit(run.stderr)
    tree = json.loads(run.stdout)
    current = ""

    def read_place(place):
        """The file of one location; of a macro's, where the macro is used."""
        nonlocal current
        if "spellingLoc" in place:
            read_place(place["spellingLoc"])
            return read_place(place["expansionLoc"])
        current = place.get("file", current)
        return current if place else ""

    def annotate(node):
        file = ""
        for key, value in node.items():
            if key == "loc":
                file = read_place(value)
            elif key == "range":
                begin = read_place(value.get("begin", {}))
                read_place(value.get("end", {}))
                file = file or begin
            elif key == "inner":
                for child in value:
                    annotate(child)
        node["file"] = file

    annotate(tree)
    return tree


def top_level(node):
    """The declarations of the unit, those inside linkage specifications included."""
    for child in node.get("inner", []):
        if child.get("kind") in ("LinkageSpecDecl", "NamespaceDecl"):
            yield from top_level(child)
        else:
            yield child
