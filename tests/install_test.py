"""script/install.sh puts a whole program below the user's home and takes just that away again. Installs what was built by
the release preset, so it is run by script/test.sh and not by CTest."""

import configparser
import os
import pathlib
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

SCRIPT = pathlib.Path(__file__).resolve().parents[1] / "script" / "install.sh"
ID = "dev.tolvane.Wrenfold"
INSTALLED = [
    "bin/wrenfold",
    f"share/applications/{ID}.desktop",
    "share/bash-completion/completions/wrenfold",
    f"share/dbus-1/services/{ID}.service",
    f"share/icons/hicolor/scalable/apps/{ID}.svg",
    f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg",
    "share/man/man1/wrenfold.1.gz",
    f"share/metainfo/{ID}.metainfo.xml",
    "share/wrenfold/installed",
    "share/zsh/site-functions/_wrenfold",
]


class InstallTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name, "home of a user")
        for path in (".config/Wrenfold", ".local/share/icons", ".local/share/applications"):
            (self.home / path).mkdir(parents=True)
        (self.home / ".config/Wrenfold/Wrenfold.State.v1").write_text("tasks")
        (self.home / ".local/share/applications/other.desktop").write_text("of another program")
        self.before = self.files()

    def files(self):
        """What is in the home, with the bytes of the files."""
        return {path: path.read_bytes() if path.is_file() else None for path in self.home.rglob("*")}

    def install(self, *options, status=0):
        result = subprocess.run([SCRIPT, *options], env=os.environ | {"HOME": str(self.home), "XDG_DATA_HOME": ""},
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        self.assertEqual(result.returncode, status, result.stdout)
        return result.stdout

    def test_a_whole_program_is_installed(self):
        self.install()
        prefix = self.home / ".local"
        for path in INSTALLED:
            self.assertTrue((prefix / path).is_file(), path)
        program = f'"{prefix}/bin/wrenfold"'
        self.assertIn(f"\nExec={program}\n", (prefix / f"share/applications/{ID}.desktop").read_text())
        self.assertIn(f"\nExec={program} --new-todo\n", (prefix / f"share/applications/{ID}.desktop").read_text())
        self.assertIn(f"\nExec={program} --dbus-service\n", (prefix / f"share/dbus-1/services/{ID}.service").read_text())
        # What the installation has written anew is as valid as what it was made from.
        subprocess.run(["desktop-file-validate", prefix / f"share/applications/{ID}.desktop"], check=True)
        service = configparser.ConfigParser()
        service.read(prefix / f"share/dbus-1/services/{ID}.service")
        self.assertEqual(service["D-BUS Service"]["Name"], ID)
        for icon in (prefix / "share/icons").rglob("*.svg"):
            self.assertTrue(xml.etree.ElementTree.parse(icon).getroot().tag.endswith("}svg"), icon)
        version = subprocess.run([prefix / "bin/wrenfold", "--version"], capture_output=True, text=True, check=True)
        self.assertRegex(version.stdout, r"^wrenfold \d")

    def test_removing_leaves_what_was_there_before(self):
        self.install()
        self.install()  # Once more, as after new sources.
        text = self.install("--uninstall")
        self.assertEqual(self.files(), self.before)
        self.assertIn(f"{self.home}/.config/Wrenfold", text)

    def test_what_came_into_its_folders_meanwhile_stays(self):
        self.install()
        other = self.home / ".local/share/dbus-1/services/other.service"
        other.write_text("of another program")
        self.install("--uninstall")
        self.assertEqual(set(self.files()) - set(self.before), {other, other.parent, other.parent.parent})

    def test_nothing_is_removed_where_nothing_was_installed(self):
        self.install("--uninstall", status=1)
        self.install("--unistall", status=2)
        self.assertEqual(self.files(), self.before)


if __name__ == "__main__":
    unittest.main()
