#!/usr/bin/env python3
"""The blocks of code in README.md, CONTRIBUTING.md and docs/: all of them are run, those of not_run.txt apart.

    documents.py extract SOURCE FOLDER           writes each C++ program to FOLDER/<name>.cpp and prints the names
    documents.py program SOURCE NAME PROGRAM     runs one and compares what it prints with the page
    documents.py pages SOURCE PROGRAM...         runs the other blocks, with these programs at hand, and looks whether
                                                 what the pages name exists
    documents.py consumer SOURCE BUILD COMPILER  installs the library and builds what the `cmake` blocks describe

What the language of a block means:
    cpp      a program. Without main() it is the body of one, with the whole library included and started
    text     what the program before it prints
    cmake    the CMakeLists.txt of the program after it, which is main.cpp
    sh       a script, run in a folder with copies of SAMPLES
    console  the same line by line: after "$ " a command, then what it prints; "..." stands for any lines
    gdb      the same at a breakpoint in GdbCatalogue: after "(gdb) " a command
    xml      a document in which vfinspect finds no damage
    hex      the same for an archive: the bytes of each line, then what they are
    none     a drawing
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SAMPLES = {"archive.bin": "tests/data/persistence/archive-be-padded.bin", "roads.xml": "tests/data/tools/roads.xml",
           "photo.jpg": "tests/data/image/orientation.jpg", "palette.png": "tests/data/image/palette-1.png"}
DAMAGED = ("damaged.bin", "archive.bin", 91, b"\x09")  # the second with another byte at that offset
HANG = 120


class Block:
    def __init__(self, page, line, language, text, output):
        self.page, self.line, self.language, self.text = page, line, language, text
        self.output = output  # of a program: the text block after it, or None
        self.name = None  # of a program

    def error(self, message):
        return f"{self.page}:{self.line}: {message}"


def pages(source):
    return ["README.md", "CONTRIBUTING.md",
            *sorted(str(path.relative_to(source)) for path in (source / "docs").rglob("*.md"))]


def blocks(source, page):
    """The blocks of a page in order, and what is wrong with its form."""
    found, errors, fence, previous = [], [], None, ""
    for number, line in enumerate((source / page).read_text(encoding="utf-8").splitlines(), 1):
        if fence is not None:
            if line == "```":
                found.append(Block(page, fence[0], fence[1], "".join(fence[2]), None))
                fence = None
            else:
                fence[2].append(line + "\n")
        elif line.startswith("```"):
            fence = (number, line[3:].strip(), [])
        elif line.startswith("    ") and not previous:
            errors.append(f"{page}:{number}: code stands between ``` lines, with its language")
        previous = line.strip()
    programs = []
    for block in found:
        if block.language == "text":
            if not programs or programs[-1].output is not None:
                errors.append(block.error("no program before it prints this text"))
            else:
                programs[-1].output = block.text
        elif block.language == "cpp":
            programs.append(block)
            block.name = pathlib.Path(page).stem + (f"-{len(programs)}" if len(programs) > 1 else "")
        elif block.language not in ("", "cmake", "sh", "console", "gdb", "xml", "hex"):
            errors.append(block.error(f"blocks in {block.language} are not run"))
    return found, errors


def all_blocks(source, language):
    return [block for page in pages(source) for block in blocks(source, page)[0] if block.language == language]


def program_text(block):
    at_line = f'#line {block.line + 1} "{block.page}"\n'
    if re.search(r"\bmain\(", block.text):
        return at_line + block.text
    return ("#include <foundation/VFoundation.h>\n#include <cstdio>\nusing namespace VFoundation;\n"
            "int main() {\nLibraryScope const library;\n{\n" + at_line + block.text + "}\n}\n")


def extract(source, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for block in all_blocks(source, "cpp"):
        path, text = folder / f"{block.name}.cpp", program_text(block)
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            path.write_text(text, encoding="utf-8")
        print(block.name)


def difference(shown, printed):
    """None when they agree; lines of "..." in what the page shows stand for any lines."""
    parts = (re.escape(part) for part in re.split(r"(?m)^ *\.\.\.\n", shown))
    if re.fullmatch("(?:.*\n)*?".join(parts), printed):
        return None
    return f"the page shows\n{shown}but this is printed:\n{printed}"


def run_program(source, name, program):
    block = next(block for block in all_blocks(source, "cpp") if block.name == name)
    with tempfile.TemporaryDirectory() as folder:
        result = subprocess.run([program], cwd=folder, stdout=subprocess.PIPE, text=True, timeout=HANG)
    if result.returncode != 0:
        return [block.error(f"the program ended with {result.returncode}")]
    wrong = None if block.output is None else difference(block.output, result.stdout)
    return [block.error(wrong)] if wrong else []


class Shell:
    """Runs blocks of commands in a folder of samples."""

    def __init__(self, source, programs):
        self.source, self.programs = source, programs
        lines = (source / "tests/docs/not_run.txt").read_text(encoding="utf-8").splitlines()
        self.exceptions = [line.split("  ", 1)[0] for line in lines if line and not line.startswith("#")]
        self.used = set()
        self.folder = tempfile.TemporaryDirectory()
        for name, path in SAMPLES.items():
            shutil.copy(source / path, pathlib.Path(self.folder.name) / name)
        name, original, offset, byte = DAMAGED
        content = (pathlib.Path(self.folder.name) / original).read_bytes()
        (pathlib.Path(self.folder.name) / name).write_bytes(content[:offset] + byte + content[offset + 1:])
        folders = sorted({str(pathlib.Path(program).resolve().parent) for program in programs.values()})
        self.environment = dict(os.environ, PATH=":".join(folders + [os.environ["PATH"]]), LC_ALL="C.UTF-8")

    def bash(self, *arguments, **options):
        return subprocess.run(["bash", *arguments], cwd=self.folder.name, env=self.environment, timeout=HANG,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)

    def exception(self, command):
        found = next((prefix for prefix in self.exceptions if command.startswith(prefix)), None)
        self.used.add(found)
        return found

    def look_at(self, command):
        """What can be said of a command that is not run."""
        script = command.split()[0]
        if "/" in script:
            text = (self.source / script).read_text(encoding="utf-8")
            for option in re.findall(r"(?<!\S)--[a-z-]+", command.split("#")[0]):
                if option not in text:
                    yield f"{script} has no option {option}"
            if self.bash("-n", str(self.source / script)).returncode != 0:
                yield f"{script} has syntax errors"

    def script(self, block):
        syntax = self.bash("-n", input=block.text)
        if syntax.returncode != 0:
            return [block.error(syntax.stdout)]
        commands = [line for line in block.text.replace("\\\n", " ").splitlines() if line and not line.startswith("#")]
        skipped = [command for command in commands if self.exception(command)]
        if skipped and len(skipped) < len(commands):
            return [block.error("mixes commands that are run with those that are not")]
        if skipped:
            return [block.error(wrong) for command in skipped for wrong in self.look_at(command)]
        result = self.bash("-euo", "pipefail", "-c", block.text)
        return [block.error(f"ended with {result.returncode}:\n{result.stdout}")] if result.returncode else []

    def console(self, block):
        errors = []
        for part in re.split(r"(?m)^\$ ", block.text)[1:]:
            command, shown = part.split("\n", 1)
            wrong = difference(shown, self.bash("-c", command).stdout)
            if wrong:
                errors.append(block.error(f"$ {command}: {wrong}"))
        return errors

    def gdb(self, block):
        program = self.programs.get("GdbCatalogue")
        traced = program and shutil.which("gdb") and self.bash("-c", "gdb -nx -batch -ex run /bin/true").stdout
        if not traced or "exited normally" not in traced:
            print(block.error("skipped: there is no gdb that can run a program"))
            return []
        errors = []
        for part in re.split(r"(?m)^\(gdb\) ", block.text)[1:]:
            command, shown = part.split("\n", 1)
            result = subprocess.run(
                ["gdb", "-nx", "-batch", "-ex", f"source {self.source}/tools/gdb/vfoundation-gdb.py",
                 "-ex", "break Stop", "-ex", "run", "-ex", "echo SHOWN\\n", "-ex", command, program],
                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=HANG, env=self.environment)
            wrong = difference(shown, result.stdout.rpartition("SHOWN\n")[2])
            if wrong:
                errors.append(block.error(f"(gdb) {command}: {wrong}"))
        return errors

    def inspect(self, block, content, kind):
        (pathlib.Path(self.folder.name) / "block").write_bytes(content)
        result = self.bash("-c", f"vfinspect --check --as {kind} block")
        return [block.error(result.stdout)] if result.returncode else []

    def xml(self, block):
        return self.inspect(block, block.text.encode(), "xml")

    def hex(self, block):
        lines = (re.match(r" *((?:[0-9A-F]{2} {1,2})+)", line).group(1) for line in block.text.splitlines())
        return self.inspect(block, bytes.fromhex("".join(lines)), "archive")


def words_of(source):
    found = set()
    for folder in ("foundation", "launcher", "tools", "tests", "fuzz", "benchmarks", "examples", "cmake"):
        for path in (source / folder).rglob("*.*"):
            if path.suffix in (".h", ".cpp", ".py", ".sh", ".cmake"):
                found.add(path.stem)
                found.update(re.findall(r"\w+", path.read_text(encoding="utf-8")))
    return found


def names(source, page, words):
    """What a page names in `code`: files of the tree, presets, options of the build and macros, classes and members."""
    text = (source / page).read_text(encoding="utf-8")
    presets = {preset["name"] for preset in json.loads((source / "CMakePresets.json").read_text())["configurePresets"]}
    options = "".join(path.read_text() for folder in (".", "cmake", "foundation", "packaging")
                      for path in sorted((source / folder).glob("*")) if path.suffix in (".txt", ".cmake"))
    in_block = False
    for number, line in enumerate(text.splitlines(), 1):
        in_block ^= line.startswith("```")
        wrong = [f"there is no preset {name}" for name in re.findall(r"--preset ([a-z]+)", line) if name not in presets]
        wrong += [f"the build has no {name}" for name in re.findall(r"\bVFOUNDATION_[A-Z_]+", line)
                  if name not in options and name not in words]
        for link in re.findall(r"\]\(([^)#:]+)", line):
            if not in_block and not (source / page).parent.joinpath(link).exists():
                wrong.append(f"there is no {link}")
        for code in re.findall(r"`([^`]+)`", line):
            if re.search(r"<[a-z]+>", code):
                continue  # a pattern
            path = code.split()[0].removeprefix("./").rstrip("/")
            first = path.split("/")[0]
            if "/" in path and first and (source / first).is_dir() and "*" not in path:
                if not (source / path).exists() and first != "build":
                    wrong.append(f"there is no {path}")
            for name in re.findall(r"\b(?:V|I[A-Z]|S)[A-Z]?[a-z]\w*(?:::\w+)?", code):
                if not set(name.split("::")) <= words:
                    wrong.append(f"nothing is called {name}")
        yield from (f"{page}:{number}: {message}" for message in wrong)


def check_pages(source, programs):
    shell = Shell(source, {pathlib.Path(program).name: program for program in programs})
    runners = {"sh": shell.script, "console": shell.console, "gdb": shell.gdb, "xml": shell.xml, "hex": shell.hex}
    words, errors, count = words_of(source), [], 0
    for page in pages(source):
        found, wrong = blocks(source, page)
        errors += wrong
        errors += names(source, page, words)
        for block in found:
            if block.language in runners:
                count += 1
                errors += runners[block.language](block)
    errors += [f"tests/docs/not_run.txt: no page has '{prefix}'" for prefix in shell.exceptions if prefix not in shell.used]
    print(f"{count} blocks")
    return errors


def consume(source, build, compiler):
    errors = []
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        subprocess.run(["cmake", "--install", build, "--component", "Development", "--prefix", folder / "prefix"],
                       check=True, stdout=subprocess.DEVNULL, env=dict(os.environ, CMAKE_INSTALL_MODE="ABS_SYMLINK"))
        for page in pages(source):
            found = [block for block in blocks(source, page)[0] if block.language in ("cmake", "cpp")]
            for block, program in zip(found, found[1:] + [None]):
                if block.language != "cmake":
                    continue
                if not program or program.language != "cpp":
                    errors.append(block.error("there is no program after it"))
                    continue
                project = folder / program.name
                project.mkdir()
                (project / "CMakeLists.txt").write_text(block.text, encoding="utf-8")
                (project / "main.cpp").write_text(program.text, encoding="utf-8")
                for command in (
                    ["cmake", "-S", project, "-B", project / "build", f"-DCMAKE_PREFIX_PATH={folder / 'prefix'}",
                     f"-DCMAKE_CXX_COMPILER={compiler}"],
                    ["cmake", "--build", project / "build"], [project / "build/app"],
                ):
                    result = subprocess.run(command, cwd=project, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                            text=True, timeout=HANG)
                    if result.returncode != 0:
                        errors.append(block.error(result.stdout))
                        break
    return errors


def main():
    action, source, *arguments = sys.argv[1:]
    source = pathlib.Path(source).resolve()
    if action == "extract":
        extract(source, pathlib.Path(arguments[0]))
        return
    actions = {"program": run_program, "consumer": consume}
    errors = actions[action](source, *arguments) if action in actions else check_pages(source, arguments)
    if errors:
        sys.exit("\n".join(errors))


main()
