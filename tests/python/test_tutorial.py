"""Every snippet of docs/python.md runs, one after the other as a reader would run them."""

from __future__ import annotations

import shutil
from pathlib import Path
from typing import Any

import pytest

import snippets


def test_the_tutorial_runs(source: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    shutil.copytree(source / "samples", tmp_path / "samples")
    monkeypatch.chdir(tmp_path)
    names: dict[str, Any] = {"__name__": "tutorial"}
    pieces = snippets.of(source / "docs" / "python.md")
    assert len(pieces) >= 10
    for number, piece in enumerate(pieces):
        exec(compile(piece, f"docs/python.md, snippet {number + 1}", "exec"), names)
