"""Completions and the manual page know the options of --help, all of them and no others."""

import os
import pathlib
import re
import subprocess

from lint import main

HELP = "src/app/launch_options.cpp"
BASH = "packaging/wrenfold.bash"
ZSH = "packaging/_wrenfold"
MANUAL = "packaging/wrenfold.1"
OPTION = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")
VARIABLE = re.compile(r"WRENFOLD_[A-Z_]+")
TOOLKIT = {"--platform"}  # The manual's example of what the toolkit understands.


def help_text(root):
    """The string that the program prints, as it is written in its source."""
    source = (root / HELP).read_text(encoding="utf-8")
    return source.partition("LaunchOptions::help()")[2].partition("\n}\n")[0]


def output(*command, **environment):
    result = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, timeout=40, check=False,
                            env=os.environ | environment)
    return result.stdout


def offered_by_bash(root):
    script = 'source "$0" && COMP_WORDS=(wrenfold -) COMP_CWORD=1 && _wrenfold && printf "%s\\n" "${COMPREPLY[@]}"'
    return set(output("bash", "--norc", "-c", script, str(root / BASH)).split())


def offered_by_zsh(root):
    script = pathlib.Path(__file__).with_name("complete.zsh")
    shown = output("zsh", "-f", str(script), str((root / ZSH).parent), LC_ALL="C.UTF-8")
    listed = re.findall(r"^(?:\x1b\[J)?((?:-\S+ +)+)-- ", shown, re.MULTILINE)
    return {option for options in listed for option in options.split()}


def named_by_the_manual(root):
    shown = output("man", "-l", str(root / MANUAL), MANWIDTH="1000", LC_ALL="C.UTF-8", MANPAGER="cat", PAGER="cat")
    return set(OPTION.findall(re.sub(r".\x08", "", shown))) - TOOLKIT


def findings(root):
    text = help_text(root)
    known = set(OPTION.findall(text))
    if not known:
        yield f"{HELP}: has no options in the text of --help. Mend this lint if that text has moved."
    for path, named in ((BASH, offered_by_bash(root)), (ZSH, offered_by_zsh(root)), (MANUAL, named_by_the_manual(root))):
        for option in sorted(known - named):
            yield f"{path}: lacks {option}, which --help has. Add it."
        for option in sorted(named - known):
            yield f"{path}: has {option}, which --help lacks. Take it out, or add it to {HELP}."
    manual = (root / MANUAL).read_text(encoding="utf-8")
    for variable in sorted(set(VARIABLE.findall(text)) - set(VARIABLE.findall(manual))):
        yield f"{MANUAL}: lacks the environment variable {variable}, which --help has. Add it."


if __name__ == "__main__":
    main(findings)
