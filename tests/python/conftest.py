"""What the tests share: the samples, and documents put together byte by byte."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import pytest

import qenzor

SOURCE = Path(os.environ["QENZOR_SOURCE"])


@pytest.fixture(scope="session")
def source() -> Path:
    return SOURCE


@pytest.fixture(scope="session")
def world_path() -> Path:
    return SOURCE / "samples" / "world.qen"


@pytest.fixture(scope="session")
def style_path() -> Path:
    return SOURCE / "samples" / "world.zor"


@pytest.fixture
def world(world_path: Path) -> Any:
    return qenzor.read(world_path)


@pytest.fixture
def style(style_path: Path) -> Any:
    return qenzor.read(style_path)
