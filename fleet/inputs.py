"""Which documents there are, and what each one's output is called."""

from __future__ import annotations

import os
from datetime import datetime
from typing import Any, Iterable, Optional

import fsspec

from .documents import Item

_DOCUMENTS = (".qen", ".zor", ".xml")
_WILD = set("*?[")


class Usage(Exception):
    """What was asked for has no meaning."""


def _mtime(info: dict[str, Any]) -> Optional[float]:
    for key in ("mtime", "LastModified", "last_modified", "updated", "created"):
        value = info.get(key)
        if isinstance(value, datetime):
            return value.timestamp()
        if isinstance(value, (int, float)):
            return float(value)
    return None


def _url(fs: Any, path: str) -> str:
    """As people write it: local paths without a protocol."""
    return path if "file" in fs.protocol else str(fs.unstrip_protocol(path))


def _found(name: str) -> Iterable[tuple[str, dict[str, Any]]]:
    fs, path = fsspec.core.url_to_fs(name)
    if _WILD & set(path):
        for match, info in fs.glob(path, detail=True).items():
            if info["type"] == "file":
                yield _url(fs, match), info
        return
    try:
        yield _url(fs, path), fs.info(path)
    except FileNotFoundError:
        yield _url(fs, path), {}


def _names(arguments: list[str]) -> Iterable[str]:
    for argument in arguments:
        if _WILD & set(argument) or argument.lower().endswith(_DOCUMENTS):
            yield argument
            continue
        try:
            with fsspec.open(argument, "rt", encoding="utf-8") as manifest:
                names = [line.strip() for line in manifest]
        except (OSError, UnicodeDecodeError) as error:
            raise Usage(f"{argument}: cannot be read as a manifest: {error}") from error
        yield from (name for name in names if name and not name.startswith("#"))


def find(arguments: list[str], outdir: str) -> list[Item]:
    """All documents that globs and manifests name, each once, in the order of their names."""
    infos = {url: info for name in _names(arguments) for url, info in _found(name)}
    if not infos:
        raise Usage("no document is there")
    out = _url(*fsspec.core.url_to_fs(outdir)).rstrip("/")
    common = os.path.commonprefix([os.path.dirname(url) + "/" for url in infos])
    start = common.rfind("/") + 1
    return [
        Item(url, infos[url].get("size"), _mtime(infos[url]), f"{out}/{url[start:]}")
        for url in sorted(infos)
    ]
