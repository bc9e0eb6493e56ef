"""Each lint finds what it is there for, and leaves in peace what is right: tried on samples in a folder of their own."""

import pathlib
import tempfile
import unittest

import documents
import files
import includes
import options
import packages
import release
import sessions
import waits
import widgets

HEAD = "// SPDX-License-Identifier: MIT\n"


class LintTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text, encoding="utf-8")

    def assert_clean(self, lint):
        self.assertEqual(list(lint.findings(self.root)), [])

    def assert_finds(self, lint, *beginnings):
        found = list(lint.findings(self.root))
        self.assertEqual(len(found), len(beginnings), found)
        for text, beginning in zip(found, beginnings):
            self.assertTrue(text.startswith(beginning), text)


class Includes(LintTest):
    def test_lower_layers_and_the_own_folder_may_be_included(self):
        self.write("src/app/debug_log.h", "")
        self.write("src/platform/clock.h", '#include "app/debug_log.h"\n#include <QString>\n')
        self.write("src/model/focus_store.h", '#include "platform/clock.h"\n')
        self.write("src/model/history.h", '#include "model/focus_store.h"\n')
        self.write("src/ai/focus_store_ai.cpp", '#include "model/focus_store.h"\n#include "focus_store_ai.moc"\n')
        self.write("src/app/entry.cpp", '#include "ai/chat.h"\n#include "app/debug_log.h"\n')
        self.write("src/ai/chat.h", "")
        self.write("src/main.cpp", '#include "app/entry.h"\n')
        self.write("src/app/entry.h", "")
        self.assert_clean(includes)

    def test_a_higher_layer_may_not_be_included(self):
        self.write("src/views/panel.h", "")
        self.write("src/model/focus_store.h", '\n#include "views/panel.h"\n')
        self.assert_finds(includes, "src/model/focus_store.h:2: may not know views/panel.h")

    def test_folders_of_one_layer_may_not_know_each_other(self):
        self.write("src/inbox/watcher.h", "")
        self.write("src/guard/controller.h", '#include "inbox/watcher.h"\n')
        self.assert_finds(includes, "src/guard/controller.h:1: may not know inbox/watcher.h")

    def test_the_ground_may_not_know_the_rest_of_its_folder(self):
        self.write("src/app/entry.h", "")
        self.write("src/app/debug_log.cpp", '#include "app/entry.h"\n')
        self.assert_finds(includes, "src/app/debug_log.cpp:1: may not know app/entry.h")

    def test_a_folder_without_a_layer_is_found(self):
        self.write("src/utils/text.h", "")
        self.assert_finds(includes, "src/utils/text.h: its folder has no layer")

    def test_a_path_that_does_not_start_at_src_is_found(self):
        self.write("src/model/a.h", "")
        self.write("src/model/b.h", '#include "a.h"\n')
        self.assert_finds(includes, "src/model/b.h:1: there is no src/a.h")

    def test_a_circle_is_found_once(self):
        self.write("src/model/a.h", '#include "model/b.h"\n')
        self.write("src/model/b.h", '#include "model/c.h"\n')
        self.write("src/model/c.h", '#include "model/a.h"\n')
        self.assert_finds(includes, "src/model/a.h: includes in a circle: model/a.h -> model/b.h -> model/c.h -> model/a.h")


class Widgets(LintTest):
    def test_drawing_folders_may_include_widgets_and_others_may_include_gui(self):
        self.write("src/views/panel.cpp", "#include <QWidget>\n")
        self.write("src/model/colour.cpp", "#include <QAction>\n#include <QColor>\n#include <QString>\n")
        self.assert_clean(widgets)

    def test_widgets_elsewhere_are_found_in_every_spelling(self):
        self.write("src/model/a.cpp", "#include <QWidget>\n#include <QtWidgets/QLabel>\n#include <QtWidgets>\n#include <qmenu.h>\n")
        self.assert_finds(widgets, *(f"src/model/a.cpp:{line}: includes" for line in (1, 2, 3, 4)))


class Sessions(LintTest):
    def test_the_platform_may_ask_and_comments_may_speak(self):
        self.write("src/platform/platform.cpp", "if (QGuiApplication::platformName() == xcb) {}\n")
        self.write("src/shell/panel.cpp", "// WAYLAND_DISPLAY is the platform's business.\n")
        self.assert_clean(sessions)

    def test_questions_elsewhere_are_found(self):
        questions = ["#ifdef Q_OS_LINUX", "#if defined(__linux__)", 'qgetenv("XDG_SESSION_TYPE");', 'qgetenv("DISPLAY");',
                     'qgetenv("WAYLAND_DISPLAY");', "QGuiApplication::platformName();", 'qputenv("QT_QPA_PLATFORM", x);']
        self.write("src/shell/panel.cpp", "\n".join(questions) + "\n")
        self.assert_finds(sessions, *(f"src/shell/panel.cpp:{n}: asks" for n in range(1, len(questions) + 1)))


class Waits(LintTest):
    def test_waiting_for_a_condition_and_a_reasoned_exception_are_right(self):
        self.write("tests/a_test.cpp", "QTRY_VERIFY(done);\nQTest::qWait(5); // UNAVOIDABLE: the kernel tells nobody\n"
                                       "QCoreApplication::processEvents();\n")
        self.write("tests/desktop/a.sh", "wait_for sleep\n")
        self.assert_clean(waits)

    def test_bare_waits_are_found(self):
        self.write("tests/a_test.cpp", "QTest::qWait(5);\nQThread::msleep(5);\nstd::this_thread::sleep_for(x);\nusleep(5);\n"
                                       "QTest::qWait(5); // UNAVOIDABLE:\n")
        self.write("tests/desktop/a.py", "time.sleep(1)\n")
        self.write("tests/desktop/a.sh", "sleep 1\nwhile true; do sleep 1; done\n")
        self.assert_finds(waits, *(f"tests/a_test.cpp:{n}: waits" for n in range(1, 6)), "tests/desktop/a.py:1: waits",
                          "tests/desktop/a.sh:1: waits", "tests/desktop/a.sh:2: waits")

    def test_the_program_runs_no_event_loop_inside_a_function(self):
        self.write("src/model/a.cpp", "QCoreApplication::processEvents();\n")
        self.assert_finds(waits, "src/model/a.cpp:1: runs events")


class Documents(LintTest):
    def setUp(self):
        super().setUp()
        self.write("tests/CMakeLists.txt", "wrenfold_test(model/a_test.cpp LIBRARIES core)\n")
        self.write("tests/model/a_test.cpp", "    void itHolds()\n")
        self.write("tests/desktop/CMakeLists.txt", "foreach(test IN ITEMS ends)\n")
        self.write("tests/desktop/ends_test.py", "def main():\n")

    def test_links_to_files_that_exist_and_to_elsewhere_are_right(self):
        self.write("docs/a.md", "[b](b.md#part) ![c](../c.png) [d](https://example.org/d) [e](#here)\n")
        self.write("docs/b.md", "")
        self.write("c.png", "")
        self.assert_clean(documents)

    def test_a_broken_link_is_found(self):
        self.write("README.md", "\n[a](docs/a.md)\n")
        self.assert_finds(documents, "README.md:2: there is no docs/a.md")

    def test_faults_whose_tests_exist_are_right(self):
        self.write(documents.RELIABILITY, "- fault\n  - `model/a::itHolds`\n- fault, `desktop/ends::main`\n")
        self.assert_clean(documents)

    def test_missing_tests_and_functions_are_found(self):
        self.write("tests/model/b_test.cpp", "    void itHolds()\n")
        self.write(documents.RELIABILITY, "- `model/a::itFails` `model/b::itHolds` `desktop/ends::start` `desktop/begins::main`\n")
        self.assert_finds(documents, *(f"{documents.RELIABILITY}:1: there is {what}." for what in
                                       ("no itFails in model/a", "no test model/b", "no start in desktop/ends",
                                        "no test desktop/begins")))

    def test_a_fault_without_a_test_is_found(self):
        self.write(documents.RELIABILITY, "- one\n- two `model/a::itHolds`\n- three\n")
        self.assert_finds(documents, f"{documents.RELIABILITY}:1: no test", f"{documents.RELIABILITY}:3: no test")


class Files(LintTest):
    def test_a_proper_file_and_a_listed_long_header_are_right(self):
        self.write("src/a.cpp", HEAD + "int a;\n")
        self.write("src/model/focus_store.h", HEAD + "#pragma once\n" + "// line\n" * 200)
        self.assert_clean(files)

    def test_what_is_missing_is_found(self):
        self.write("src/a.cpp", "int a;\n")
        self.write("src/b.h", HEAD + "\n#pragma once\n")
        self.write("src/c.cpp", HEAD + "int a;")
        self.assert_finds(files, "src/a.cpp: does not begin", "src/b.h: has no #pragma once", "src/c.cpp: does not end")

    def test_long_files_are_found(self):
        self.write("src/a.cpp", HEAD + "// line\n" * 400)
        self.write("src/b.h", HEAD + "#pragma once\n" + "// line\n" * 149)
        self.assert_finds(files, "src/a.cpp: has 401 lines", "src/b.h: has 151 lines")


class Packages(LintTest):
    def test_a_sorted_list_and_a_script_that_reads_it_are_right(self):
        self.write("cmake/packages.txt", "# words\n\ncmake\ng++\n")
        self.write("script/setup.sh", 'apt-get install --yes --quiet "${missing[@]}"\n')
        self.assert_clean(packages)

    def test_a_bad_list_is_found(self):
        self.write("cmake/packages.txt", "g++ cmake\ncmake\n")
        self.assert_finds(packages, "cmake/packages.txt: 'g++ cmake'", "cmake/packages.txt: is not sorted")

    def test_a_second_list_is_found(self):
        self.write("cmake/packages.txt", "cmake\n")
        self.write(".ci/run", "apt-get -q install -y ninja-build\n")
        self.write("README.md", "sudo apt install cmake\n")
        self.assert_finds(packages, ".ci/run:1: names packages", "README.md:1: names packages")


class Options(LintTest):
    def write_all(self, text, bash, zsh, manual):
        self.write("src/app/launch_options.cpp", f'QString LaunchOptions::help()\n{{\n    return "{text}";\n}}\n')
        self.write("packaging/wrenfold.bash", f"_wrenfold() {{ COMPREPLY=({bash}); }}\n")
        specs = " ".join(f"'{option}[does {option}]'" for option in zsh.split())
        self.write("packaging/_wrenfold", f"#compdef wrenfold\n_arguments {specs}\n")
        self.write("packaging/wrenfold.1", f".TH W 1\n.SH OPTIONS\n.B {manual}\n")

    def test_the_options_of_the_help_everywhere_are_right(self):
        self.write_all("-h, --help help; --a-b do; WRENFOLD_A=1 the same", "-h --help --a-b", "-h --help --a-b",
                       "\\-h, \\-\\-help, \\-\\-a\\-b, \\-\\-platform WRENFOLD_A")
        self.assert_clean(options)

    def test_options_that_differ_are_found(self):
        self.write_all("--one --two --three WRENFOLD_A=1", "--one --two --thre", "--one --two --three --four", "\\-\\-one \\-\\-three")
        self.assert_finds(options, "packaging/wrenfold.bash: lacks --three", "packaging/wrenfold.bash: has --thre,",
                          "packaging/_wrenfold: has --four", "packaging/wrenfold.1: lacks --two",
                          "packaging/wrenfold.1: lacks the environment variable WRENFOLD_A")

    def test_completions_that_do_not_load_are_found(self):
        self.write_all("--one", "--one", "--one", "\\-\\-one")
        self.write("packaging/wrenfold.bash", "_wrenfold() {\n")
        self.write("packaging/_wrenfold", "#compdef wrenfold\n_arguments '\n")
        self.assert_finds(options, "packaging/wrenfold.bash: lacks --one", "packaging/_wrenfold: lacks --one")


class Release(LintTest):
    def write_all(self, newest, released, width):
        self.write("CMakeLists.txt", "project(wrenfold VERSION 1.2.0)\n")
        self.write("packaging/changelog.Debian", f"wrenfold ({newest}-1) unstable; urgency=medium\n")
        self.write("packaging/dev.tolvane.Wrenfold.metainfo.xml", f"""<component>
            <image width="{width}" height="7">https://wrenfold.example/pictures/panel.png</image>
            <releases><release version="{released}"/><release version="1.1.0"/></releases></component>""")

    def write_picture(self):
        path = self.root / "docs/pictures/panel.png"
        path.parent.mkdir(parents=True)
        path.write_bytes(b"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x05\0\0\0\x07")

    def test_the_projects_version_and_a_picture_that_is_there_are_right(self):
        self.write_all("1.2.0", "1.2.0", 5)
        self.write_picture()
        self.assert_clean(release)

    def test_another_version_and_size_are_found(self):
        self.write_all("1.1.0", "1.1.0", 6)
        self.write_picture()
        self.assert_finds(release, "packaging/changelog.Debian: does not begin with version 1.2.0",
                          "packaging/dev.tolvane.Wrenfold.metainfo.xml: its first release",
                          "packaging/dev.tolvane.Wrenfold.metainfo.xml: panel.png has another size")

    def test_a_picture_that_is_not_there_is_found(self):
        self.write_all("1.2.0", "1.2.0", 5)
        self.assert_finds(release, "packaging/dev.tolvane.Wrenfold.metainfo.xml: names panel.png, which is not in")


if __name__ == "__main__":
    unittest.main()
