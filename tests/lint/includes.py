"""A file of src/ includes only what lies in a lower layer or in its own folder, and no files include each other in a
circle."""

from lint import INCLUDE, cpp_files, lines, main

# From the ground up. Folders on one line never include each other.
LAYERS = [
    ["app/application_id", "app/debug_log", "app/launch_options"],
    ["platform", "look"],
    ["notify"],
    ["model"],
    ["ai", "inbox", "guard"],
    ["views"],
    ["shell"],
    ["app"],
    ["main"],
]
RANKS = {name: rank for rank, names in enumerate(LAYERS) for name in names}


def rank(path):
    """The layer of a path relative to src/; None when it belongs to none."""
    return RANKS.get(str(path.with_suffix("")), RANKS.get(path.parts[0]))


def may_include(includer, included):
    if includer.parts[0] == included.parts[0]:
        return rank(included) <= rank(includer)
    return rank(included) < rank(includer)


def findings(root):
    source = root / "src"
    paths = cpp_files(source, ".")
    included_by = {}
    for path in paths:
        included_by[path] = []
        if rank(path) is None:
            yield f"src/{path}: its folder has no layer. Put it into LAYERS of tests/lint/includes.py."
            continue
        for number, line in lines(source, path):
            match = INCLUDE.match(line)
            if not match or not match[1] or match[1].endswith(".moc"):
                continue
            included = type(path)(match[1])
            if included not in paths:
                yield (f'src/{path}:{number}: there is no src/{included}. Write the path from src/ ("model/task_item.h"), '
                       "and other libraries' headers in angle brackets.")
                continue
            included_by[path].append(included)
            if rank(included) is not None and not may_include(path, included):
                yield (f"src/{path}:{number}: may not know {included}, which lies no lower. Move what is needed into a "
                       "lower folder, or hand it in from above (a function, a value, an interface).")
    yield from circles(included_by)


def circles(included_by):
    """One text for each circle found while walking the includes depth first."""
    finished = set()

    def walk(path, way):
        if path in way:
            circle = " -> ".join(str(step) for step in way[way.index(path):] + [path])
            yield f"src/{path}: includes in a circle: {circle}. Declare a class forward, or split a file."
        elif path not in finished:
            for included in included_by.get(path, []):
                yield from walk(included, way + [path])
            finished.add(path)

    for path in included_by:
        yield from walk(path, [])


if __name__ == "__main__":
    main(findings)
