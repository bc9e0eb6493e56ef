"""cmake/packages.txt is the only list of the packages that the project needs, in good order."""

import re

from lint import files, lines, main

LIST = "cmake/packages.txt"
NAME = re.compile(r"[a-z0-9][a-z0-9+.-]+")
# An installing command followed by a package's plain name; options and variables are no names.
INSTALL = re.compile(r"\b(apt|apt-get|aptitude)\s+(-\S+\s+)*install\s+(-\S+\s+)*[a-z0-9]")


def findings(root):
    names = [line for _, line in lines(root, LIST) if line.strip() and not line.startswith("#")]
    for name in names:
        if not NAME.fullmatch(name):
            yield f"{LIST}: {name!r} is not one package's name alone on its line. Write one name a line."
    if names != sorted(set(names)):
        yield f"{LIST}: is not sorted, or holds a name twice. Sort it with: LC_ALL=C sort -u"

    places = files(root, [".ci", "script", "docs", "packaging", "cmake", "tests", "bench"], ["", ".sh", ".py", ".md", ".txt"])
    for path in places + [path.relative_to(root) for path in root.glob("*.md")]:
        if path.parts[:2] == ("tests", "lint"):
            continue
        for number, line in lines(root, path):
            if INSTALL.search(line):
                yield f"{path}:{number}: names packages to install. Put them into {LIST} and call script/setup.sh."


if __name__ == "__main__":
    main(findings)
