"""What the documents lead to exists: the files that they link, and the tests that docs/reliability.md names."""

import re

from lint import files, lines, main

RELIABILITY = "docs/reliability.md"
LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s#]+)(?:#[^)]*)?\)")
TEST = re.compile(r"`([\w/]+)::(\w+)`")


def documents(root):
    return sorted(path.relative_to(root) for path in root.glob("*.md")) + files(root, ["docs"], [".md"])


def broken_links(root):
    for path in documents(root):
        for number, line in lines(root, path):
            for target in LINK.findall(line):
                if "://" not in target and not target.startswith("mailto:") and not (root / path.parent / target).exists():
                    yield f"{path}:{number}: there is no {target}. Mend the link."


def contains(path, pattern):
    return re.search(pattern, path.read_text(encoding="utf-8"), re.MULTILINE)


def why_missing(root, name, function):
    """What there is not, of the test's file, its registration and its function; nothing if all is there."""
    if name.startswith("desktop/"):
        source, registry = f"tests/{name}_test.py", "tests/desktop/CMakeLists.txt"
        registered, declaration = name.removeprefix("desktop/"), rf"^def {function}\("
    else:
        source, registry = f"tests/{name}_test.cpp", "tests/CMakeLists.txt"
        registered, declaration = f"{name}_test.cpp", rf"\bvoid {function}\(\)"
    if not (root / source).exists() or not contains(root / registry, rf"\b{re.escape(registered)}\b"):
        return f"no test {name}"
    return None if contains(root / source, declaration) else f"no {function} in {name}"


def missing_tests(root):
    if not (root / RELIABILITY).exists():
        return
    fault, is_shown = None, True
    for number, line in lines(root, RELIABILITY):
        if line.startswith("- "):
            if not is_shown:
                yield f"{RELIABILITY}:{fault}: no test shows this. Write one, and name it."
            fault, is_shown = number, False
        for name, function in TEST.findall(line):
            is_shown = True
            if missing := why_missing(root, name, function):
                yield f"{RELIABILITY}:{number}: there is {missing}. Name the test that shows this."
    if not is_shown:
        yield f"{RELIABILITY}:{fault}: no test shows this. Write one, and name it."


def findings(root):
    yield from broken_links(root)
    yield from missing_tests(root)


if __name__ == "__main__":
    main(findings)
