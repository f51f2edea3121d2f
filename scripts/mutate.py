#!/usr/bin/env python3
"""Part of scripts/mutants.sh: changes tokens of the plug-in's sources and runs its tests.

A change that does not compile is passed over and does not count.
"""
import argparse
import os
import pathlib
import random
import re
import signal
import subprocess
import sys

FOLDERS = ("plugin", "exporter_base", "export_common", "exporters")
TARGETS = ("plugin_unit_test", "plugin_test", "gui_test", "library_symbols_test")
TESTS = (
    "plugin/plugin_unit_test",
    "plugin/library_symbols_test",
    "plugin/plugin_test",
    "gui/gui_test",
)
SLOW = "-*two_hundred_openings*"
BUILD_SECONDS = 1200
TEST_SECONDS = 300

# Directives, comments and raw texts are tokens that stay as they are.
TOKEN = re.compile(
    r"""(?P<kept>^[ \t]*\#(?:\\\n|[^\n])*|//[^\n]*|/\*.*?\*/|R"\(.*?\)"|'(?:\\.|[^'\\])*')
      | (?P<text>"(?:\\.|[^"\\\n])*")
      | (?P<number>\b(?:0x[0-9a-fA-F]+|\d+)\b(?![.\d]))
      | (?P<word>\b(?:true|false)\b)
      | (?P<operator>==|!=|<=|>=|&&|\|\||[-+]=|\+\+|--|(?<=\ )[<>+|](?=\ )|!(?=[\w(]))""",
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)
OPPOSITES = {
    "true": "false", "false": "true", "==": "!=", "!=": "==", "<=": ">", ">=": "<", "<": ">=",
    ">": "<=", "&&": "||", "||": "&&", "+=": "-=", "-=": "+=", "++": "--", "--": "++", "+": "-",
    "|": "&", "!": "",
}
# A call that stands alone in its lines.
CALL = re.compile(r"^ +(?!return|delete|throw)[\w:.>-]+\((?:[^;{}]*)\);$", re.MULTILINE)


def changed_text(text):
    """Another text of the same kind: without its last character, or a text instead of none."""
    return '"x"' if text == '""' else re.sub(r'(\\.|[^\\])"$', '"', text)


def changed_number(text):
    return hex(int(text, 16) ^ 1) if text.startswith("0x") else str(int(text) + 1)


def changes(path):
    """All (path, begin, end, new text) of one file."""
    source = path.read_text(encoding="utf-8")
    found = []
    kept = []
    for match in TOKEN.finditer(source):
        old = match.group()
        new = None
        if match.lastgroup == "kept":
            kept.append(match.span())
        elif match.lastgroup == "text":
            new = changed_text(old)
        elif match.lastgroup == "number":
            new = changed_number(old)
        else:
            new = OPPOSITES.get(old)
        if new is not None:
            found.append((path, match.start(), match.end(), new))
    for match in CALL.finditer(source):
        if not any(begin <= match.start() < end for begin, end in kept):
            found.append((path, match.start(), match.end(), "    ;"))
    return found


def succeeds(command, seconds, folder):
    """Whether the command exits with status 0 in time. What it started ends with it."""
    silent = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    process = subprocess.Popen(command, cwd=folder, start_new_session=True, **silent)
    try:
        return process.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        return False


def builds(tree):
    return succeeds(["cmake", "--build", "build", "--target", *TARGETS], BUILD_SECONDS, tree)


def passes(tree):
    return all(
        succeeds([f"build/tests/{test}", "--gtest_fail_fast", f"--gtest_filter={SLOW}"],
                 TEST_SECONDS, tree)
        for test in TESTS
    )


def describe(tree, change):
    path, begin, end, new = change
    source = path.read_text(encoding="utf-8")
    line = source.count("\n", 0, begin) + 1
    first = source.rfind("\n", 0, begin) + 1
    last = source.find("\n", end)
    before, after = source[first:begin], source[end:last]
    return (f"{path.relative_to(tree)}:{line}\n"
            f"  - {(before + source[begin:end] + after).strip()}\n"
            f"  + {(before + new + after).strip()}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("tree", type=pathlib.Path, help="a configured copy, which is edited")
    parser.add_argument("--count", type=int, required=True)
    parser.add_argument("--seed", type=int, required=True)
    options = parser.parse_args()
    tree = options.tree.resolve()
    if not builds(tree) or not passes(tree):
        sys.exit("the tests fail without any change")

    sources = [path for folder in FOLDERS for path in sorted((tree / folder).glob("*.[ch]*"))
               if path.suffix in (".cpp", ".h")]
    places = [change for path in sources for change in changes(path)]
    random.Random(options.seed).shuffle(places)
    noticed = survived = 0
    for change in places:
        if noticed + survived == options.count:
            break
        path, begin, end, new = change
        source = path.read_text(encoding="utf-8")
        path.write_text(source[:begin] + new + source[end:], encoding="utf-8")
        try:
            if not builds(tree):
                continue
            if not passes(tree):
                noticed += 1
                continue
        finally:
            path.write_text(source, encoding="utf-8")
        survived += 1
        print(describe(tree, change), flush=True)
    print(f"{noticed + survived} changes of {len(places)} places: {noticed} noticed, "
          f"{survived} not noticed")
    sys.exit(1 if survived else 0)


if __name__ == "__main__":
    main()
