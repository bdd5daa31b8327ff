#!/usr/bin/env python3
"""Keeps the pieces of the documentation true: the fenced blocks of README.md and docs/*.md.

documentation.py pieces FOLDER FILE...   writes a C++ source into FOLDER for each piece in cpp, to be compiled
documentation.py texts FILE...           parses the pieces in xml, follows the links, knows the languages of all pieces
documentation.py recipes BUILD FILE...   installs BUILD, runs the pieces in console and compares what they print

A piece in cpp is the body of a function, to which all public headers but those of widgets are known unless it has
includes of its own. A comment before it can give the function parameters, or say that the piece stands outside of any
function:
<!-- given: PR_Preference *store --> and <!-- file scope -->.

A piece in console holds commands, each behind "$ ", with what they print on either stream. A command goes on behind a
backslash and to the end of a here-document. A line "..." stands for any lines. A command may fail only where something
is shown that it prints. Each section ("## ") starts anew: as the user ada in a home folder without files, with a fresh
installation in /opt/brivant (both below a temporary folder that is not shown), RESOURCES being its definition files
and HERE the folder of the text. With PREFS_UPDATE_EXPECTED in the environment, what is printed is written into the text.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import xml.parsers.expat
from dataclasses import dataclass
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
LANGUAGES = {"cpp", "xml", "console", "cmake", "sh", "text"}


@dataclass
class Piece:
    place: str  # FILE:LINE of its first line
    file: str
    line: int
    section: int
    language: str
    comment: str  # right before it
    lines: list


def pieces_of(file):
    name = os.path.relpath(file, SOURCE)
    lines = Path(file).read_text(encoding="utf-8").splitlines()
    section, comment, piece = 0, "", None
    for number, line in enumerate(lines, 1):
        if piece is None and (fence := re.match(r"```(.*)$", line)):
            piece = Piece(f"{name}:{number + 1}", name, number + 1, section, fence[1], comment, [])
        elif piece is not None and line == "```":
            yield piece
            piece, comment = None, ""
        elif piece is not None:
            piece.lines.append(line)
        elif match := re.match(r"<!-- (.*) -->$", line):
            comment = match[1]
        elif line:
            comment = ""
            section += line.startswith("## ")
    if piece is not None:
        raise SystemExit(f"{piece.place}: the piece has no end")


def pieces(files, language):
    return [piece for file in files for piece in pieces_of(file) if piece.language == language]


# ---- C++


def source_of(piece):
    name = re.sub(r"\W", "_", f"piece_{piece.file}_{piece.line}")
    parameters = re.match(r"given: (.*)", piece.comment)
    body, includes = list(piece.lines), []
    for index, line in enumerate(body):
        if line.startswith("#include"):
            includes.append(f'#line {piece.line + index} "{piece.file}"\n{line}')
            body[index] = ""
    if not includes:
        headers = sorted(path.name for path in SOURCE.glob("src/*/*.h")
                         if not path.stem.endswith("_p") and path.parent.name != "widgets")
        includes = [f"#include <{header}>" for header in headers]
    function = f"void {name}({parameters[1] if parameters else ''})"
    begin = f"namespace {name}" if piece.comment == "file scope" else function
    code = [*includes, f"#define main main_{name}", begin, "{", f'#line {piece.line} "{piece.file}"', *body, "}", ""]
    return name, "\n".join(code)


def write_pieces(folder, *files):
    wanted = dict(source_of(piece) for piece in pieces(files, "cpp"))
    wanted["main"] = "int main()\n{\n}\n"
    Path(folder).mkdir(parents=True, exist_ok=True)
    for old in Path(folder).glob("*.cpp"):
        if old.stem not in wanted:
            old.unlink()
    for name, text in wanted.items():
        path = Path(folder, name + ".cpp")
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            path.write_text(text, encoding="utf-8")
    return []


# ---- XML, links


def check_texts(*files):
    for file in files:
        for piece in pieces_of(file):
            if piece.language not in LANGUAGES:
                yield f'{piece.place}: no check knows the language "{piece.language}"'
            if piece.comment and piece.language != "cpp":
                yield f'{piece.place}: "{piece.comment}" belongs before a piece in cpp'
        text = re.sub(r"^```.*?^```$", "", Path(file).read_text(encoding="utf-8"), flags=re.DOTALL | re.MULTILINE)
        for target in re.findall(r"\]\(([^)#:]+)\)", text):
            if not (Path(file).parent / target).exists():
                yield f"{os.path.relpath(file, SOURCE)}: the link to {target} leads nowhere"
    for piece in pieces(files, "xml"):
        text = "\n".join(piece.lines)
        try:
            # A part of a file may be several elements.
            xml.parsers.expat.ParserCreate().Parse(text if text.startswith("<?xml") else f"<x>{text}</x>", True)
        except xml.parsers.expat.ExpatError as error:
            yield f"{piece.file}:{piece.line + error.lineno - 1}: {error}"


# ---- Recipes


@dataclass
class Command:
    file: str
    line: int
    text: str
    expected: list

    def end(self):  # the number of its last line
        return self.line + self.text.count("\n")


def commands_of(piece):
    commands, end = [], None
    for number, line in enumerate(piece.lines, piece.line):
        if end is not None:
            commands[-1].text += "\n" + line
            end = None if line == end or (end == "\\" and not line.endswith("\\")) else end
        elif line.startswith("$ "):
            commands.append(Command(piece.file, number, line[2:], []))
            document = re.search(r"<<'?(\w+)'?", line)
            end = document[1] if document else "\\" if line.endswith("\\") else None
        elif commands:
            commands[-1].expected.append(line.rstrip())
        else:
            raise SystemExit(f"{piece.file}:{number}: the piece does not begin with a command")
    return commands


def run_section(commands, environment):
    """Runs the commands in one shell; what each printed, and its status."""
    mark = "@@ end of command"
    # The status is handed on, for a command such as "echo $?".
    end = f"status=$?; printf '\\n{mark} %d\\n' $status; (exit $status)"
    script = "".join(f"{command.text}\n{end}\n" for command in commands)
    shell = subprocess.run(["bash", "-c", script], cwd=environment["HOME"], env=environment, timeout=60, encoding="utf-8",
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    outputs = re.split(rf"\n{mark} (\d+)\n", shell.stdout)
    for index, command in enumerate(commands):
        if 2 * index + 1 >= len(outputs):
            raise SystemExit(f"{command.file}:{command.line}: the shell ended here: {outputs[-1]}")
        printed = outputs[2 * index].replace(environment["ROOT"], "").splitlines()
        yield command, [line.rstrip() for line in printed], int(outputs[2 * index + 1])


def fits(command, printed, status):
    pattern = "".join(r"(?:.*\n)*?" if line == "..." else re.escape(line) + r"\n" for line in command.expected)
    return (status == 0 or command.expected) and re.fullmatch(pattern, "".join(line + "\n" for line in printed))


def run_recipes(build, *files):
    sections = {}
    for piece in pieces(files, "console"):
        sections.setdefault((piece.file, piece.section), []).extend(commands_of(piece))
    wrong = []
    with tempfile.TemporaryDirectory() as temporary:
        root = Path(temporary).resolve()
        home, prefix = root / "home/ada", root / "opt/brivant"
        subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
        resources = prefix / "share/BrivantPreference/resources"
        shutil.copytree(resources, root / "shipped")
        foreign = ("XDG_", "LC_", "LANG", "QT_")
        environment = {name: value for name, value in os.environ.items() if not name.startswith(foreign)}
        environment.update(HOME=str(home), RESOURCES=str(resources), LC_ALL="C.UTF-8", ROOT=str(root),
            PATH=f"{prefix / 'bin'}:{os.environ['PATH']}")
        for (file, _), commands in sections.items():
            environment["HERE"] = str((SOURCE / file).parent)
            shutil.rmtree(root / "home", ignore_errors=True)
            home.mkdir(parents=True)
            shutil.rmtree(resources)
            shutil.copytree(root / "shipped", resources)
            wrong += [result for result in run_section(commands, environment) if not fits(*result)]
    for command, printed, status in reversed(wrong):  # the numbers of the lines before stay as they are
        if "PREFS_UPDATE_EXPECTED" in os.environ:
            path = SOURCE / command.file
            lines = path.read_text(encoding="utf-8").split("\n")
            lines[command.end() : command.end() + len(command.expected)] = printed
            path.write_text("\n".join(lines), encoding="utf-8")
        else:
            title = f"{command.file}:{command.line}: expected"
            yield "\n    ".join([title, *command.expected, f"printed (status {status})", *printed])
    if not sections:
        yield "there are no recipes"


complaints = list({"pieces": write_pieces, "texts": check_texts, "recipes": run_recipes}[sys.argv[1]](*sys.argv[2:]))
print("\n".join(complaints), file=sys.stderr)
sys.exit(bool(complaints))
