"""Hands batches to Dask and takes their lines back."""

from __future__ import annotations

import logging
import sys
from typing import Any, Callable, Iterable, Optional

import dask
from distributed import Client, LocalCluster, as_completed

from .documents import Item, Order, line_of
from .report import Report
from .tasks import do_alone, do_batch

# Documents that one task does each in a process of its own.
ALONE = 10
# As often may a worker die of a batch before its documents are done one by one.
DEATHS = 1


class Progress:
    """A line on a terminal, and nothing elsewhere."""

    def __init__(self, count: int) -> None:
        self._count = count
        self._done = self._failed = 0
        self._is_shown = sys.stderr.isatty()

    def add(self, lines: list[dict[str, Any]]) -> None:
        self._done += len(lines)
        self._failed += sum(line["result"] != "ok" for line in lines)
        if self._is_shown:
            sys.stderr.write(f"\r{self._done} of {self._count} done, {self._failed} failed ")
            sys.stderr.flush()

    def end(self) -> None:
        if self._is_shown:
            sys.stderr.write("\r\033[K")


def _pieces(items: list[Item], size: int) -> Iterable[list[Item]]:
    for at in range(0, len(items), size):
        yield items[at : at + size]


def _be_quiet() -> None:
    """Workers that die are weather: what came of the documents stands in the report."""
    for name in ("distributed", "asyncio", "tornado"):
        logging.getLogger(name).setLevel(logging.CRITICAL)


def _connect(scheduler: Optional[str], workers: int) -> tuple[Any, Any]:
    if scheduler is not None:
        return Client(scheduler), None
    with dask.config.set({"distributed.scheduler.allowed-failures": DEATHS}):
        cluster = LocalCluster(
            n_workers=workers,
            threads_per_worker=1,
            processes=True,
            dashboard_address=None,
            memory_limit=None,
            silence_logs=logging.CRITICAL,
        )
    return Client(cluster), cluster


def _do_all(client: Any, items: list[Item], order: Order, batch: int, take: Callable[[Any], None]) -> None:
    def submit(function: Callable[..., Any], piece: list[Item]) -> Any:
        return client.submit(function, piece, order, pure=False)

    waiting = {submit(do_batch, piece): (piece, False) for piece in _pieces(items, batch)}
    coming = as_completed(list(waiting))
    for future in coming:
        piece, is_alone = waiting.pop(future)
        if future.status == "finished":
            take(future.result())
        elif is_alone:
            reason = f"its worker died: {future.exception()}"
            take([line_of(item, order, reason) for item in piece])
        else:
            for few in _pieces(piece, ALONE):
                again = submit(do_alone, few)
                waiting[again] = (few, True)
                coming.add(again)


def run(items: list[Item], order: Order, report: Report, scheduler: Optional[str], workers: int,
        batch: int) -> None:
    """Does all items and adds their lines to the report."""
    _be_quiet()
    client, cluster = _connect(scheduler, workers)
    progress = Progress(len(items))

    def take(lines: list[dict[str, Any]]) -> None:
        report.add(lines)
        progress.add(lines)

    try:
        _do_all(client, items, order, batch, take)
    finally:
        progress.end()
        client.close()
        if cluster is not None:
            cluster.close()
