"""What the lints share. A lint is a module with a function findings(root), which yields one text for each place that
breaks its rule, saying how to mend it."""

import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')


def files(root, folders, suffixes):
    """The files of these folders with these suffixes, as paths relative to the root, sorted."""
    found = []
    for folder in folders:
        found += (path for path in (root / folder).rglob("*") if path.suffix in suffixes and path.is_file())
    return sorted(path.relative_to(root) for path in found)


def cpp_files(root, *folders):
    return files(root, folders, (".h", ".cpp"))


def lines(root, path):
    """The numbered lines of a file."""
    return enumerate((root / path).read_text(encoding="utf-8").splitlines(), start=1)


def code_lines(root, path):
    """The numbered lines of a C++ file without their comments. The // of an address is no comment."""
    return ((number, re.sub(r"(?<!:)//.*", "", line)) for number, line in lines(root, path))


def main(findings):
    """Runs a lint over the project in the folder given as argument; the exit status says whether it is clean."""
    found = list(findings(pathlib.Path(sys.argv[1]).resolve()))
    for text in found:
        print(text)
    sys.exit(1 if found else 0)
