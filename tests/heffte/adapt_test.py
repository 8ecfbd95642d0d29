#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""adapt_test.py FOLDER NAME OUTPUT: heFFTe's test NAME, and the headers that it includes, for our backend.

Changed are the tags of heFFTe's stock backend, which becomes ours, and double precision: calls of a test in double are
dropped, tests that have it built in run in float. Everything else, above all what is compared with what, stays.
"""
import pathlib
import re
import sys

CALL_IN_DOUBLE = re.compile(r"^\s*(test_|check_)\w+<.*(backend|_tag).*\bdouble\b.*\);\s*$")


def adapted(text):
    lines = [line for line in text.splitlines() if not CALL_IN_DOUBLE.match(line)]
    text = "\n".join(lines) + "\n"
    text = text.replace('#include "heffte.h"', '#include "heffte_backend_qfftf.h"')
    text = re.sub(r"\bbackend::stock", "backend::qfftf", text)
    text = text.replace("backend::fftw_sin1>::value) {", "backend::qfftf_sin1>::value) {")
    for name in ("input_type", "cinput_type", "output_type"):
        text = re.sub(rf"(using {name}\s*= )(std::complex<double>|double);",
                      lambda m: m.group(1) + m.group(2).replace("double", "float") + ";", text)
    text = re.sub(r"void test_1d_reorder_one.*?void test_transpose", lambda m: m.group().replace("double", "float"), text,
                  flags=re.S)
    text = text.replace("    test_cosine_transform<backend::qfftf_cos1, float>(comm);\n",
                        "    test_cosine_transform<backend::qfftf_cos1, float>(comm);\n"
                        "    test_cosine_transform<backend::qfftf_sin1, float>(comm);\n")
    return text


def main(folder, name, output):
    output = pathlib.Path(output)
    output.mkdir(parents=True, exist_ok=True)
    for file in ("test_common.h", "test_fft3d.h", f"{name}.cpp"):
        text = adapted((pathlib.Path(folder) / file).read_text())
        if file.endswith(".cpp") and "backend::qfftf" not in text:
            sys.exit(f"adapt_test.py: {name} doesn't use the backend any more")
        target = output / file
        if not target.exists() or target.read_text() != text:
            target.write_text(text)


if __name__ == "__main__":
    main(*sys.argv[1:])
