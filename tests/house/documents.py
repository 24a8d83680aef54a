#!/usr/bin/python3
"""Fails when a document names a file or folder of this repository that does not exist.

    documents.py FOLDER

Looks at everything between back quotes that begins with a top-level folder of the repository, and at relative links.
"""

import pathlib
import re
import sys

NAMED = re.compile(r"`([^`\s]+)`|\]\(([^)#:]+)\)")
TOP = ("src/", "tests/", "tools/", "scripts/", "packaging/", "bench/", "docs/", "cmake/", "./run", "./test", ".ci/")


def missing(root):
    for document in sorted(root.glob("*.md")) + sorted(root.glob("docs/**/*.md")):
        for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
            for quoted, link in NAMED.findall(line):
                name = link or (quoted if quoted.startswith(TOP) else "")
                base = document.parent if link else root
                if name and not list(base.glob(name.removeprefix("./").rstrip("/"))):
                    yield f"{document.name}:{number}: {name} does not exist"


def main(arguments):
    if len(arguments) != 1:
        print(__doc__)
        return 2
    found = list(missing(pathlib.Path(arguments[0])))
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
