#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""make_wheel.py LIBRARY MACHINE VERSION FOLDER: the package with this shared library inside, as a wheel for MACHINE
(x86_64 or aarch64) in FOLDER. Any Python from 3.9 on takes it: nothing in it is compiled for one version."""
import base64
import hashlib
import pathlib
import re
import sys
import zipfile

HERE = pathlib.Path(__file__).parent

METADATA = """Metadata-Version: 2.1
Name: qfftf
Version: {version}
Summary: Single-precision FFTs on numpy arrays, and a backend of scipy.fft
License: Apache-2.0
Requires-Python: >=3.9
Requires-Dist: numpy>=1.20
"""
WHEEL = """Wheel-Version: 1.0
Generator: make_wheel.py
Root-Is-Purelib: false
Tag: {tag}
"""


def main(library, machine, version, folder):
    package_version = re.search(r'^__version__ = "(.*)"$', (HERE / "qfftf/__init__.py").read_text(), re.M).group(1)
    if package_version != version:
        sys.exit(f"make_wheel.py: the package says version {package_version}, the library {version}")
    built_for = int.from_bytes(pathlib.Path(library).read_bytes()[18:20], "little")  # e_machine of an ELF file
    if built_for != {"x86_64": 62, "aarch64": 183}[machine]:
        sys.exit(f"make_wheel.py: {library} isn't a library for {machine}")

    tag, info = f"py3-none-linux_{machine}", f"qfftf-{version}.dist-info"
    files = {f"qfftf/{path.name}": path.read_bytes() for path in sorted((HERE / "qfftf").glob("*.py"))}
    files["qfftf/libqfftf.so.1"] = pathlib.Path(library).read_bytes()
    files[f"{info}/LICENSE"] = (HERE.parent / "LICENSE").read_bytes()
    files[f"{info}/METADATA"] = METADATA.format(version=version).encode()
    files[f"{info}/WHEEL"] = WHEEL.format(tag=tag).encode()
    record = [f"{name},sha256={digest(content)},{len(content)}" for name, content in files.items()]
    files[f"{info}/RECORD"] = "\n".join([*record, f"{info}/RECORD,,", ""]).encode()

    target = pathlib.Path(folder) / f"qfftf-{version}-{tag}.whl"
    target.parent.mkdir(parents=True, exist_ok=True)
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as wheel:
        for name, content in files.items():
            entry = zipfile.ZipInfo(name, (2020, 1, 1, 0, 0, 0))  # the same input gives the same file
            entry.external_attr, entry.compress_type = 0o644 << 16, zipfile.ZIP_DEFLATED
            wheel.writestr(entry, content)
    print(target)


def digest(content):
    return base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])
