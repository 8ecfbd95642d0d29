#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes the man pages of section 3 from the header: one page for each of its sections, named as the groups of the HTML
reference are, with the calls, their comments and an example; and a link to it for every call.

  man.py DIRECTORY DATE
"""
import pathlib
import re
import sys

from filter import LEADING, ROOT, SECTION, group

HEADER = ROOT / "include" / "qfftf.h"
DECLARATION = re.compile(r"(?:^/\* (?P<comment>.*?) \*/\n)?(?P<code>^QFFTF_API .*?;\n|^static inline [^{]*|^typedef struct .*?^\} \w+;\n)",
                         re.MULTILINE | re.DOTALL)
CALL = re.compile(r"(?:QFFTF_API|static inline) (.*?)(\w+)\((.*)\)", re.DOTALL)
CONSTANTS = """.Pp
The kinds of real-to-real transforms and the other constants are explained in
.Xr qfftf 7 .
"""


def escaped(text: str) -> str:
    text = text.replace("\\", "\\e")
    return re.sub(r"^(?=[.'])", r"\\&", text, flags=re.MULTILINE)


def sentences(text: str) -> str:
    """A comment of the header: its stars gone, list items kept, names as they stand, a sentence a line."""
    text = re.sub(r"\n \* ?", "\n", text).replace("`", "")
    return escaped(re.sub(r"(?<=[.;:]) +(?=[A-Z])", "\n", re.sub(r"\s*\n\s*", " ", text)))


def synopsis(kind: str, name: str, arguments: str) -> str:
    lines = [f'.Ft "{kind.strip()}"', f".Fo {name}"]
    lines += [f'.Fa "{" ".join(argument.split())}"' for argument in arguments.split(",")]
    return "\n".join(lines + [".Fc"]) + "\n"


def page(title: str, body: str, date: str) -> tuple[str, list[str], str]:
    name, example = group(title)
    names, calls, description = [], "", ""
    leading = LEADING.match(body)
    if leading:
        description, body = sentences(leading[1]) + "\n", body[leading.end():]
    for match in DECLARATION.finditer(body):
        call = CALL.search(match["code"])
        if match["comment"]:
            description += ".Pp\n" if description else ""
        if call:
            names.append(call[2])
            calls += synopsis(call[1], call[2], call[3])
            if match["comment"]:
                description += f".Fn {call[2]} :\n"
        else:
            calls += ".Bd -literal\n" + escaped(match["code"].replace("QFFTF_API ", "")) + ".Ed\n"
        if match["comment"]:
            description += sentences(match["comment"]) + "\n"
    if title in ("Real to real", "Guru planning"):
        description += CONSTANTS
    text = f".Dd {date}\n.Dt {name.upper()} 3\n.Os qfftf\n.Sh NAME\n"
    text += " ,\n".join(f".Nm {n}" for n in names) + f"\n.Nd {title[0].lower() + title[1:]}\n"
    text += f".Sh SYNOPSIS\n.In qfftf.h\n{calls}.Sh DESCRIPTION\n{description}"
    if example:
        code = re.sub(r"^.*SPDX.*\n", "", (ROOT / "examples" / example).read_text())
        text += f".Sh EXAMPLES\n.Bd -literal\n{escaped(code.replace(chr(9), '    '))}.Ed\n"
    return name, names, text + ".Sh SEE ALSO\n.Xr qfftf 7\n"


def main() -> None:
    folder, date = pathlib.Path(sys.argv[1]), sys.argv[2]
    folder.mkdir(parents=True, exist_ok=True)
    pieces = SECTION.split(HEADER.read_text())
    for title, body in zip(pieces[1::2], pieces[2::2]):
        name, names, text = page(title, body.partition("#ifdef __cplusplus")[0], date)
        (folder / f"{name}.3").write_text(text)
        for link in names:
            (folder / f"{link}.3").write_text(f".so man3/{name}.3\n")


if __name__ == "__main__":
    main()
