"""What a worker does: batches of documents, and those of a batch that killed one, each in a process
of its own."""

from __future__ import annotations

import json
import os
import resource
import signal
import subprocess
import sys
import threading
from dataclasses import asdict
from typing import Any

from .documents import Item, Order, do, line_of


def do_batch(items: list[Item], order: Order) -> list[dict[str, Any]]:
    """A document that takes too long ends the worker, as one that takes too much memory does: then
    the batch is done anew, one by one."""
    lines = []
    for item in items:
        watchdog = threading.Timer(order.time_limit, os._exit, (1,))
        watchdog.daemon = True
        watchdog.start()
        try:
            lines.append(do(item, order))
        finally:
            watchdog.cancel()
    return lines


def do_alone(items: list[Item], order: Order) -> list[dict[str, Any]]:
    """Each document in a process of its own, under limits."""
    return [_do_alone(item, order) for item in items]


def _do_alone(item: Item, order: Order) -> dict[str, Any]:
    try:
        done = subprocess.run(
            [sys.executable, "-m", "qenzor.fleet.tasks"],
            input=json.dumps({"item": asdict(item), "order": asdict(order)}),
            capture_output=True,
            text=True,
            timeout=order.time_limit,
        )
    except subprocess.TimeoutExpired:
        reason = f"took longer than {order.time_limit:g} seconds"
        return line_of(item, order, reason, time=order.time_limit)
    if done.returncode == 0:
        line: dict[str, Any] = json.loads(done.stdout)
        return line
    if done.returncode < 0:
        return line_of(item, order, f"its process died of {signal.Signals(-done.returncode).name}")
    last = done.stderr.strip().splitlines()[-1:] or [f"status {done.returncode}"]
    return line_of(item, order, f"its process failed: {last[0]}")


def main() -> None:
    request = json.load(sys.stdin)
    order = Order(**request["order"])
    resource.setrlimit(resource.RLIMIT_AS, (order.memory_limit, order.memory_limit))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    json.dump(do(Item(**request["item"]), order), sys.stdout)


if __name__ == "__main__":
    main()
