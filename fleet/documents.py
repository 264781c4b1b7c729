"""What is done to one document, wherever that is."""

from __future__ import annotations

import io
import json
import os
import resource
import tempfile
import time
from dataclasses import dataclass
from typing import Any, Callable, Optional

import fsspec

import qenzor


@dataclass(frozen=True)
class Item:
    """A document, as the listing had it, and where what comes of it goes (but for the ending)."""

    input: str
    size: Optional[int]
    mtime: Optional[float]
    target: str


@dataclass(frozen=True)
class Order:
    """What is to be done to all documents."""

    operation: str
    encoding: Any = "shift_jis"
    frame: Optional[str] = None
    draw: Optional[str] = None
    time_limit: float = 600
    memory_limit: int = 4 << 30


class Refused(Exception):
    """A document is not as it should be."""


# The ending of an output, and what saves it under a name.
Output = tuple[str, Callable[[str], Any]]


def _saving(text: str) -> Callable[[str], Any]:
    def save(path: str) -> None:
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)

    return save


def _check(content: bytes, order: Order) -> Output:
    lines = io.StringIO()
    error = None
    for finding in qenzor.check(content):
        print(json.dumps(finding._asdict(), ensure_ascii=False), file=lines)
        if error is None and finding.severity == "error":
            error = f"{finding.code} {finding.reason}"
    if error is not None:
        raise Refused(error)
    return ".findings.jsonl", _saving(lines.getvalue())


def _to_xml(content: bytes, order: Order) -> Output:
    document = qenzor.read(content)
    return ".xml", lambda path: document.to_xml(path, encoding=order.encoding, sync=False)


def _from_xml(content: bytes, order: Order) -> Output:
    if not content.lstrip(b"\xef\xbb\xbf \t\r\n").startswith(b"<"):
        raise Refused("is no XML")
    document = qenzor.read(content, encoding=order.encoding)
    ending = ".qen" if isinstance(document, qenzor.Qen) else ".zor"
    return ending, lambda path: document.write(path, sync=False)


def _copy(content: bytes, order: Order) -> Output:
    document = qenzor.read(content)
    return "", lambda path: document.write(path, sync=False)


def _map_of(content: bytes) -> Any:
    document = qenzor.read(content)
    if not isinstance(document, qenzor.Qen):
        raise Refused("is no map")
    return document


def _draw_of(order: Order) -> Any:
    return qenzor.read(_load(order.draw)) if order.draw else None


def _to_geojson(content: bytes, order: Order) -> Output:
    features = list(_map_of(content).features(frame=order.frame))
    drawing = _draw_of(order)
    for feature in features if drawing is not None else ():
        attribute = drawing.attributes.get(feature["properties"]["z_id"])
        feature["properties"]["draw_infos"] = list(attribute.indices) if attribute else []
    return ".geojson", _saving(json.dumps({"type": "FeatureCollection", "features": features}))


def _render(content: bytes, order: Order) -> Output:
    document = _map_of(content)
    return ".png", lambda path: document.render(path, draw=_draw_of(order), frame=order.frame)


OPERATIONS: dict[str, Callable[[bytes, Order], Output]] = {
    "check": _check,
    "to-xml": _to_xml,
    "from-xml": _from_xml,
    "copy": _copy,
    "to-geojson": _to_geojson,
}
if hasattr(qenzor.Qen, "render"):
    OPERATIONS["render"] = _render


def _load(path: str) -> bytes:
    fs, name = fsspec.core.url_to_fs(path)
    return bytes(fs.cat_file(name))


def _put(save: Callable[[str], Any], target: str) -> None:
    """Saves what is whole under its name, or nothing."""
    fs, name = fsspec.core.url_to_fs(target)
    folder = os.path.dirname(name)
    fs.makedirs(folder, exist_ok=True)
    is_local = "file" in fs.protocol
    with tempfile.TemporaryDirectory(prefix=".fleet-", dir=folder if is_local else None) as scratch:
        path = os.path.join(scratch, "output")
        save(path)
        if is_local:
            os.replace(path, name)
        else:
            # Stores of objects show one when all of it is there.
            fs.put_file(path, name)


def _forget_peak() -> None:
    try:
        with open("/proc/self/clear_refs", "w") as file:
            file.write("5")
    except OSError:
        pass


def _peak() -> int:
    try:
        with open("/proc/self/status") as file:
            for line in file:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1]) * 1024
    except OSError:
        pass
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024


def line_of(item: Item, order: Order, reason: Optional[str], **more: Any) -> dict[str, Any]:
    """A line of the report."""
    line = {
        "input": item.input,
        "size": item.size,
        "mtime": item.mtime,
        "version": qenzor.__version__,
        "operation": order.operation,
        "time": None,
        "result": "ok" if reason is None else "failed",
        "reason": reason,
        "peak_memory": None,
        "output": None,
    }
    return {**line, **more}


def do(item: Item, order: Order) -> dict[str, Any]:
    """Does the operation to one document. Whatever is wrong with it is a result."""
    _forget_peak()
    begin = time.perf_counter()
    reason = output = None
    try:
        ending, save = OPERATIONS[order.operation](_load(item.input), order)
        _put(save, item.target + ending)
        output = item.target + ending
    except (Refused, qenzor.ReadError, qenzor.WriteError) as error:
        reason = str(error)
    except MemoryError:
        reason = "the memory does not suffice"
    except Exception as error:  # of whatever the storage is made
        reason = f"{type(error).__name__}: {error}"
    seconds = round(time.perf_counter() - begin, 6)
    return line_of(item, order, reason, time=seconds, peak_memory=_peak(), output=output)
