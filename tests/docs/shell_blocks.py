# SPDX-License-Identifier: Apache-2.0
"""Shell blocks: commands of this repository that build or install are looked up (the script is there and knows the
options), all others run in a folder of their own. There "cc", "c++" and "gfortran" compile for the library's machine and
leave programs that start the emulator by themselves, so that a line for an Arm machine runs on any."""
import os
import pathlib
import re
import shutil
import subprocess

OWN_COMMAND = re.compile(r"^(?:\w+=\S+ )*((?:scripts|bench)/\S+)(.*)$")
SOURCE = re.compile(r"\b[\w/]+\.(?:cpp|f90|c)\b")
SHIM = """#!/bin/bash
{command} "$@" || exit
while [ $# -gt 0 ]; do [ "$1" = -o ] && out=$2; [ "$1" = -c ] && exit; shift; done
out=${{out:-a.out}}
mv "$out" "$out.real"
printf '#!/bin/sh\\nexec {emulator} "%s" "$@"\\n' "$PWD/$out.real" >"$out"
chmod +x "$out"
"""


def without_comment(line: str) -> str:
    return re.sub(r"(^|\s)#.*$", "", line).rstrip()


def own_command_complaints(root: pathlib.Path, script: str, rest: str) -> list[str]:
    file = root / script
    if not file.exists() or not os.access(file, os.X_OK):
        return [f"there is no program {script}"]
    text = file.read_text()
    return [f"{script} doesn't know {option}" for option in re.findall(r"(?<=\s)--[\w-]+", rest) if option not in text]


def shims(folder: pathlib.Path, emulator: str) -> pathlib.Path:
    bin_folder = folder / "bin"
    bin_folder.mkdir()
    for name, variable in (("cc", "C"), ("c++", "CXX"), ("gfortran", "FORTRAN")):
        if os.environ.get(variable):
            (bin_folder / name).write_text(SHIM.format(command=os.environ[variable], emulator=emulator))
            (bin_folder / name).chmod(0o755)
    return bin_folder


def put_sources(block, root: pathlib.Path, folder: pathlib.Path) -> None:
    """The programs that the commands name: the last one on the page ahead of the block, or an example."""
    for name in SOURCE.findall(block.text):
        target, example = folder / name, root / "examples" / pathlib.Path(name).name
        target.parent.mkdir(parents=True, exist_ok=True)
        language = {"c": "c", "cpp": "cpp", "f90": "fortran"}[name.rsplit(".", 1)[1]]
        programs = [p for p in block.programs_before if p.language == language and "peer" not in p.remarks]
        if example.exists():
            shutil.copy(example, target)
        elif programs:
            target.write_text(programs[-1].text)


def run_shell(block, runner) -> list[str]:
    syntax = subprocess.run(["bash", "-n"], input=block.text, text=True, capture_output=True)
    if syntax.returncode != 0:
        return [syntax.stderr]
    complaints, lines = [], []
    for line in block.text.replace("\\\n", " ").splitlines():
        own = OWN_COMMAND.match(without_comment(line))
        if own:
            complaints += own_command_complaints(runner.root, own[1], own[2])
        else:
            lines.append(line)
    script = "\n".join(lines).strip()
    if complaints or not script or "not run" in block.remarks:
        return complaints
    folder = runner.folder(block)
    emulator = " ".join(runner.emulator)
    put_sources(block, runner.root, folder)
    path = f"{shims(folder, emulator)}:{runner.prefix}/bin:{os.environ['PATH']}"
    script = re.sub(r"\bDIR\b", str(runner.prefix), script)
    script = re.sub(r"(^|&& |\| |^\w+=\S+ )(qfftf-\w+)", rf"\1{emulator} {runner.prefix}/bin/\2", script, flags=re.MULTILINE)
    done = subprocess.run(["bash", "-euc", script], cwd=folder, text=True, stdout=subprocess.PIPE, timeout=120,
                          stderr=subprocess.STDOUT, env=os.environ | {"PATH": path, "PKG_CONFIG_LIBDIR": "/nonexistent"})
    if done.returncode != 0:
        return [f"the commands failed with {done.returncode}:\n{done.stdout}"]
    return []
