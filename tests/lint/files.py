"""C++ files begin and end as they should and are short enough to be read in one go."""

from lint import cpp_files, main

LICENCE = "// SPDX-License-Identifier: MIT"
LONGEST = {".h": 150, ".cpp": 400}
# Headers that may be longer, each with its reason.
EXCEPTIONS = {"src/model/focus_store.h": "the table of contents of all the store's operations"}


def findings(root):
    for path in cpp_files(root, "src", "tests", "bench"):
        text = (root / path).read_text(encoding="utf-8")
        lines = text.splitlines()
        if lines[:1] != [LICENCE]:
            yield f"{path}: does not begin with the line {LICENCE}. Put it there."
        if path.suffix == ".h" and lines[1:2] != ["#pragma once"]:
            yield f"{path}: has no #pragma once in its second line. Put it there."
        if not text.endswith("\n") or text.endswith("\n\n"):
            yield f"{path}: does not end with exactly one line break. Mend its end."
        if len(lines) > LONGEST[path.suffix] and str(path) not in EXCEPTIONS:
            yield (f"{path}: has {len(lines)} lines, {LONGEST[path.suffix]} are the most. Split it by subject: a pure "
                   "function or a small class of its own is usually waiting in it.")


if __name__ == "__main__":
    main(findings)
