"""What reading and writing raise."""

from __future__ import annotations


def _describe(
    reason: str,
    path: str | None,
    offset: int | None,
    line: int | None,
    column: int | None,
    chunk_path: str | None,
) -> str:
    parts = [path] if path else []
    if offset is not None:
        parts.append(f"byte {offset}")
    if line is not None:
        parts.append(f"line {line}, column {column}")
    if chunk_path:
        parts.append(chunk_path)
    return ": ".join([*parts, reason])


class _Failure(Exception):
    def __init__(
        self,
        reason: str,
        path: str | None = None,
        offset: int | None = None,
        line: int | None = None,
        column: int | None = None,
        chunk_path: str | None = None,
    ) -> None:
        super().__init__(_describe(reason, path, offset, line, column, chunk_path))
        self.reason = reason
        self.path = path
        self.offset = offset
        self.line = line
        self.column = column
        self.chunk_path = chunk_path

    def __reduce__(self) -> tuple[object, ...]:
        place = (self.path, self.offset, self.line, self.column, self.chunk_path)
        return (type(self), (self.reason, *place))


class ReadError(_Failure, ValueError):
    """A document cannot be read: where, and why."""


class WriteError(_Failure, OSError):
    """A document cannot be written: it holds what a file has no room for, or the file fails."""
