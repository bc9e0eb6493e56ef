"""What the package says of itself is true: its version is the project's, and its pictures are there."""

import re
import struct
import xml.etree.ElementTree as tree

from lint import main

CHANGES = "packaging/changelog.Debian"
METAINFO = "packaging/dev.tolvane.Wrenfold.metainfo.xml"
PICTURES = "docs/pictures"


def picture_size(path):
    """Width and height of a PNG picture, from its head."""
    return struct.unpack(">II", path.read_bytes()[16:24])


def findings(root):
    version = re.search(r"project\(\w+ VERSION ([0-9.]+)", (root / "CMakeLists.txt").read_text(encoding="utf-8"))[1]
    newest = re.match(r"wrenfold \((\S+)-\d+\)", (root / CHANGES).read_text(encoding="utf-8"))
    if not newest or newest[1] != version:
        yield f"{CHANGES}: does not begin with version {version} of CMakeLists.txt. Add an entry for it."

    metainfo = tree.parse(root / METAINFO).getroot()
    release = metainfo.find("releases/release")
    if release is None or release.get("version") != version:
        yield f"{METAINFO}: its first release is not version {version} of CMakeLists.txt. Add that one."
    for image in metainfo.iter("image"):
        path = root / PICTURES / image.text.rpartition("/")[2]
        if not path.exists():
            yield f"{METAINFO}: names {path.name}, which is not in {PICTURES}. Name one that is."
        elif picture_size(path) != (int(image.get("width")), int(image.get("height"))):
            yield f"{METAINFO}: {path.name} has another size. Write {picture_size(path)}."


if __name__ == "__main__":
    main(findings)
