"""The report: a line for each document, which also tells what need not be done again."""

from __future__ import annotations

import json
from typing import Any, Iterable

import fsspec

import qenzor

from .documents import Item, Order


class Report:
    """Takes lines as they come, and puts them in order at the end."""

    def __init__(self, outdir: str) -> None:
        self._fs, folder = fsspec.core.url_to_fs(outdir)
        self._path = f"{folder}/report.jsonl"
        self._is_local = "file" in self._fs.protocol
        self.lines: dict[str, dict[str, Any]] = {}
        self._fs.makedirs(folder, exist_ok=True)
        content = self._fs.cat_file(self._path) if self._fs.exists(self._path) else b""
        for text in content.decode("utf-8", "replace").splitlines():
            try:
                line = json.loads(text)
                self.lines[line["input"]] = line
            except (ValueError, KeyError, TypeError):
                continue  # broken off when a run was ended

    def is_done(self, item: Item, order: Order, retry_failed: bool) -> bool:
        line = self.lines.get(item.input)
        state = {
            "size": item.size,
            "mtime": item.mtime,
            "version": qenzor.__version__,
            "operation": order.operation,
        }
        if line is None or any(line.get(key) != value for key, value in state.items()):
            return False
        if line.get("result") != "ok":
            return not retry_failed
        fs, path = fsspec.core.url_to_fs(line["output"])
        return bool(fs.exists(path))

    def add(self, lines: Iterable[dict[str, Any]]) -> None:
        """Keeps the lines, at once where a file can be added to."""
        texts = []
        for line in lines:
            self.lines[line["input"]] = line
            texts.append("\n" + json.dumps(line, ensure_ascii=False))
        if self._is_local:
            with open(self._path, "a", encoding="utf-8") as file:
                file.write("".join(texts))

    def finish(self) -> None:
        """One line for each document, in the order of their names."""
        ordered = [self.lines[name] for name in sorted(self.lines)]
        text = "".join(json.dumps(line, ensure_ascii=False) + "\n" for line in ordered)
        scratch = self._path + ".new"
        self._fs.pipe_file(scratch, text.encode())
        self._fs.mv(scratch, self._path)
