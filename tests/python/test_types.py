"""The stubs fit the module, the package and the tutorial fit the stubs."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import pytest

import snippets

if os.environ.get("LD_PRELOAD"):
    pytest.skip("types are the same in every build", allow_module_level=True)

HERE = Path(__file__).parent
CONFIG = str(HERE / "mypy.ini")


def run(folder: Path, *arguments: str) -> None:
    package = os.environ["PYTHONPATH"].split(os.pathsep)[0]
    # In a folder of its own: the library's sources lie in one that is called qenzor, too.
    done = subprocess.run(
        [sys.executable, "-m", *arguments],
        cwd=folder,
        env={**os.environ, "MYPYPATH": package},
        capture_output=True,
        text=True,
    )
    assert done.returncode == 0, done.stdout + done.stderr


def test_the_stubs_tell_what_the_module_has(tmp_path: Path) -> None:
    options = ["--allowlist", str(HERE / "stubs.allow"), "--ignore-unused-allowlist"]
    options += ["--mypy-config-file", CONFIG]
    run(tmp_path, "mypy.stubtest", "qenzor", "--ignore-missing-stub", *options)


def test_the_package_and_the_tutorial_fit_the_stubs(tmp_path: Path, source: Path) -> None:
    (tmp_path / "tutorial.py").write_text(snippets.all_of(source / "docs" / "python.md"))
    options = ["--cache-dir", "cache", "--config-file", CONFIG]
    run(tmp_path, "mypy", *options, "--strict", "-p", "qenzor")
    run(tmp_path, "mypy", *options, "tutorial.py")


def test_every_class_and_field_has_its_stub(source: Path) -> None:
    from qenzor import _qenzor

    stubs = (source / "python" / "qenzor" / "_qenzor.pyi").read_text()
    for name, cls in vars(_qenzor).items():
        if isinstance(cls, type) and issubclass(cls, _qenzor.Data) and cls is not _qenzor.Data:
            body = stubs.split(f"\nclass {name}(")[1].split("\nclass ")[0]
            for field in getattr(cls, "field_names", ()):
                inherited = field == "AddedObjInfoSet"
                assert inherited or f"\n    {field}: " in body, f"{name}.{field}"
