"""The Python snippets of a page of the docs."""

from __future__ import annotations

import re
from pathlib import Path

_SNIPPET = re.compile(r"^```python\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def of(page: Path) -> list[str]:
    return _SNIPPET.findall(page.read_text(encoding="utf-8"))


def all_of(page: Path) -> str:
    return "\n".join(of(page))
