#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A broken block of any language is told, and told where it stands: each page below has one fault, or none.

  test_code_blocks.py ROOT PREFIX WORK     with the environment of run_code_blocks.py
"""
import pathlib
import subprocess
import sys

HELLO = '#include <qfftf.h>\n#include <stdio.h>\nint main(void) {\n    puts("one");\n    return 0;\n}\n'
PAGES = {
    "right": (f"```c\n{HELLO}```\n\n```text\none\n```\n", None),
    "other output": (f"```c\n{HELLO}```\n\n```text\ntwo\n```\n", "where the page says"),
    "failing program": ("```c\nint main(void) { return 3; }\n```\n", "failed with 3"),
    "misspelt call": ("```c\nqsl_fftf_clean();\n```\n", "compiling failed"),
    "misspelt C++ call": ("```cpp\nqfftf::plan_c2d({4});\n```\n", "compiling failed"),
    "right Fortran": ("```fortran\nprogram p\n  use qfftf\nend program\n```\n", None),
    "misspelt module": ("```fortran\nprogram p\n  use qffts\nend program\n```\n", "compiling failed"),
    "no such package": ("```cmake\nfind_package(qfftg REQUIRED)\n```\n", "configuring failed"),
    "no such target": ("```cmake\nfind_package(qfftf REQUIRED)\ntarget_link_libraries(program qfftf::qfft)\n```\n",
                       "configuring failed"),
    "no such script": ("```sh\nscripts/bild --prefix DIR\n```\n", "no program scripts/bild"),
    "no such option": ("```sh\nscripts/build --pefix DIR\n```\n", "doesn't know --pefix"),
    "option of a block that isn't run": ("<!-- not run: it builds -->\n```sh\nscripts/build --pefix DIR\n```\n",
                                         "doesn't know --pefix"),
    "failing command": ("```sh\nls /no/such/file\n```\n", "failed with"),
    "shell syntax": ("```sh\nfor f in\n```\n", "syntax error"),
    "program by the shell": (f"```c\n{HELLO}```\n\n```sh\ncc first.c -I DIR/include -o first && ./first\n```\n", None),
    "wrong library by the shell": (f"```c\n{HELLO}```\n\n```sh\ncc first.c -I DIR/include -lqfftg\n```\n", "failed with"),
    "no language": ("```\nanything\n```\n", "one of the languages"),
    "marked": ("<!-- not run: an example -->\n```c\nnonsense\n```\n" f"```c\n{HELLO}```\n", None),
    "failing Python": ("```python\nraise SystemExit(1)\n```\n", "failed with 1"),
}


def main() -> int:
    root, prefix, work = (pathlib.Path(a).resolve() for a in sys.argv[1:4])
    work.mkdir(parents=True, exist_ok=True)
    wrong = 0
    runner = pathlib.Path(__file__).with_name("run_code_blocks.py")
    for name, (text, expected) in PAGES.items():
        page = work / (name.replace(" ", "_") + ".md")
        page.write_text(text)
        done = subprocess.run([sys.executable, str(runner), str(root), str(prefix), str(work / "run"), str(page)],
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        as_expected = done.returncode == 0 if expected is None else \
            done.returncode == 1 and expected in done.stdout and f"{page}:" in done.stdout
        wrong += not as_expected
        print(f"{'ok' if as_expected else 'WRONG'}: {name}" + ("" if as_expected else "\n" + done.stdout))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
