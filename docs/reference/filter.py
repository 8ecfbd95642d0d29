#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What Doxygen reads in place of a file. Headers and pages are written for readers of the files themselves: here plain
comments become documentation, sections of the header groups with an example each, and links between pages lead to
Doxygen's pages.

  filter.py FILE
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SECTION = re.compile(r"^/\* -+ (.*?) -+ \*/\n", re.MULTILINE)
GROUPS = {  # sections of the header: name of the group (and of its man page), and the example that shows it
    "Complex transforms": ("qfftf_complex", "01_one_transform.c"),
    "Real to complex (forward)": ("qfftf_r2c", "03_real.c"),
    "Complex to real (backward)": ("qfftf_c2r", "04_two_dimensions.c"),
    "Real to real": ("qfftf_r2r", "05_cosine.c"),
    "Upsampling": ("qfftf_upsampling", "10_upsampling.c"),
    "Guru planning": ("qfftf_guru", "09_split.c"),
    "Execution": ("qfftf_execution", "08_new_arrays.c"),
    "Housekeeping": ("qfftf_housekeeping", "06_measured.c"),
    "Threads": ("qfftf_threads", "07_threads.c"),
    "Version": ("qfftf_version", None),
    "Lengths": ("qfftf_lengths", None),
}
CLASSES = {"plan": "11_plans_as_values.cpp", "per_thread": "12_one_plan_per_thread.cpp"}
LEADING = re.compile(r"/\* ((?:(?!\*/).)*?) \*/\n(?=\n|#define)", re.DOTALL)  # a comment on the whole section
PROTOTYPE = re.compile(r"^QFFTF_API[^;]*?(\w+)\([^;]*\);\n", re.MULTILINE)


def group(title: str) -> tuple[str, str | None]:
    return GROUPS.get(title, (re.sub(r"\W+", "_", "qfftf " + title.lower()).strip("_"), None))


def opened(title: str, details: str) -> str:
    name, example = group(title)
    shown = f"\n\n\\par Example\n\\include {example}" if example else ""
    return f"/** \\defgroup {name} {title}\n{details}{shown}\n*/\n/** \\addtogroup {name}\n@{{ */\n"


def with_shared_comments(text: str) -> str:
    """Prototypes that follow one another without a gap have one comment, that of the first."""
    parts, end, first = [], 0, ""
    for match in PROTOTYPE.finditer(text):
        follows = match.start() == end and first
        parts += [text[end : match.start()], f"/** \\copydoc {first} */\n" if follows else "", match[0]]
        first, end = first if follows else match[1], match.end()
    return "".join(parts) + text[end:]


def header(text: str) -> str:
    text = re.sub(r"^.*\n/\*\n", "/** \\file\n", text, count=1)
    pieces = SECTION.split(text)
    result = pieces[0]
    for title, body in zip(pieces[1::2], pieces[2::2]):
        details = ""
        leading = LEADING.match(body)
        if leading:
            details, body = re.sub(r"^ \* ?", "", leading[1], flags=re.MULTILINE), body[leading.end():]
        body, closing, rest = body.partition("#ifdef __cplusplus")
        result += opened(title, details) + body + "/** @} */\n" + closing + rest
    result = with_shared_comments(result)
    result = re.sub(r"^( *)/\*(?=[ \n])", r"\1/**", result, flags=re.MULTILINE)
    return re.sub(r"^(#define .*)/\* ", r"\1/**< ", result, flags=re.MULTILINE)


def cxx(text: str) -> str:
    text = re.sub(r"^.*\n// ", "/// \\\\file\n/// ", text, count=1)
    text = re.sub(r"^( *)// ?", r"\1/// ", text.replace("/// \\file", "//! \\file"), flags=re.MULTILINE)
    for name, example in CLASSES.items():
        text = re.sub(rf"(?=^template <class \w+(?:, class \w+)?>\nclass {name} \{{)",
                      rf"///\n/// \\par Example\n/// \\include {example}\n", text, flags=re.MULTILINE)
    return text


def fortran(text: str) -> str:
    """A page: the comment at the head, then the declarations of each section as they stand."""
    comment, _, module = text.split("\n", 1)[1].partition("module qfftf\n")
    result = "# The Fortran module\n\n" + re.sub(r"^! ?", "", comment, flags=re.MULTILINE)
    pieces = re.split(r"^        ! (.*?)\.?\n", module, flags=re.MULTILINE)
    for title, body in zip(["Constants and types"] + pieces[1::2], pieces[0::2]):
        result += f"\n## {title}\n\n```{{.f90}}\n{body.rstrip()}\n```\n"
    example = (ROOT / "examples/13_fortran.f90").read_text().split("\n", 1)[1]
    return result + f"\n## Example\n\n```{{.f90}}\n{example}```\n"


def reference_list() -> str:
    """The last section of the first page: where the reference begins."""
    calls = [f"- @ref {group(title)[0]}" for title in SECTION.findall((ROOT / "include/qfftf.h").read_text())]
    return "\n## Reference\n\nThe calls of C, by groups:\n\n" + "\n".join(calls) + \
        "\n\nConstants and kinds: @ref qfftf.h. For C++: @ref qfftf \"namespace qfftf\". For Fortran: [the module](include/qfftf.f90).\n"


def page(text: str, file: pathlib.Path) -> str:
    """Links: to a heading become links to its page; to files that are no page, their name alone."""
    def link(match: re.Match) -> str:
        target = (file.parent / match[2].split("#")[0]).resolve()
        if not match[2].split("#")[0]:
            return match[1]
        relative = target.relative_to(ROOT)
        if target.suffix == ".md" and relative.parts[0] == "docs":
            return f"[{match[1]}]({relative})"
        words = re.sub("`([^`]*)`", r"<code>\1</code>", match[1])  # Markdown isn't read inside of HTML
        return f'<a href="files/{relative}">{words}</a>' if target.is_file() else f"{match[1]} ({relative})"
    text = re.sub(r"<!--.*?-->\n?", "", text, flags=re.DOTALL)
    text = re.sub(r"(?<!!)\[([^][]+)\]\((?!https?:)([^)\s]+)\)", link, text)
    text = re.sub(r"!\[([^\]]*)\]\((?:[^)\s]*/)?([^)/\s]+)\)", r"![](\2)", text)
    if file.samefile(ROOT / "docs/user/README.md"):
        text += reference_list()
    return re.sub(r"^```(\w+)$", lambda m: "```{." + {"sh": "sh", "text": "txt"}.get(m[1], m[1]) + "}", text, flags=re.MULTILINE)


def main() -> None:
    file = pathlib.Path(sys.argv[1])
    text = file.read_text()
    kinds = {".h": header, ".hpp": cxx, ".f90": fortran}
    sys.stdout.write(page(text, file) if file.suffix == ".md" else kinds.get(file.suffix, lambda t: t)(text))


if __name__ == "__main__":
    main()
