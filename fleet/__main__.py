"""The command line."""

from __future__ import annotations

import argparse
import os
import sys

from . import inputs
from .documents import OPERATIONS, Order
from .report import Report

_UNITS = {"K": 10, "M": 20, "G": 30}


def _bytes(text: str) -> int:
    unit = _UNITS.get(text[-1:].upper())
    return int(float(text[:-1]) * (1 << unit)) if unit else int(text)


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python -m qenzor.fleet",
        description="Does one thing to many documents, on one machine or on many. "
        "Exit status: 0 all well, 1 some documents failed, 2 wrong usage.",
    )
    add = parser.add_argument
    add("operation", choices=sorted(OPERATIONS))
    where = parser.add_mutually_exclusive_group(required=True)
    where.add_argument("--scheduler", metavar="ADDRESS", help="a Dask scheduler: tcp://host:8786")
    where.add_argument("--workers", type=int, metavar="N", help="processes on this machine")
    add("--retry-failed", action="store_true", help="do what failed before, too")
    add("--batch", type=int, default=100, metavar="N", help="documents a task (100)")
    add("--time-limit", type=float, default=600, metavar="SECONDS", help="for a document (600)")
    add("--memory-limit", type=_bytes, default=4 << 30, metavar="BYTES",
        help="for a document that is done by itself (4G)")
    add("--encoding", default="shift_jis", choices=["shift_jis", "utf-8", "auto"], help="of XML")
    add("--frame", metavar="WORDS", help="where objects lie, for to-geojson and render")
    add("--draw", metavar="FILE", help="draw data, for to-geojson and render")
    add("inputs", nargs="+", metavar="MANIFEST|GLOB",
        help="documents (.qen, .zor, .xml), patterns, files that list them")
    add("outdir", metavar="OUTDIR")
    return parser


def main() -> int:
    parser = _parser()
    options = parser.parse_args()
    if (options.workers is not None and options.workers < 1) or options.batch < 1:
        parser.error("the number must be at least 1")
    if options.time_limit <= 0 or options.memory_limit <= 0:
        parser.error("a limit must be above 0")
    draw = options.draw
    if draw is not None and "://" not in draw:
        draw = os.path.abspath(draw)
    order = Order(options.operation, options.encoding, options.frame, draw, options.time_limit,
                  options.memory_limit)
    try:
        items = inputs.find(options.inputs, options.outdir)
    except (inputs.Usage, ValueError, ImportError) as error:
        parser.error(str(error))
    report = Report(options.outdir)
    left = [item for item in items if not report.is_done(item, order, options.retry_failed)]
    if left:
        from .run import run

        try:
            run(left, order, report, options.scheduler, options.workers, options.batch)
        finally:
            report.finish()
    lines = [report.lines[item.input] for item in items]
    failed = sum(line["result"] != "ok" for line in lines)
    print(f"{len(items)} documents: {len(items) - failed} ok, {failed} failed; "
          f"{len(items) - len(left)} had been done before")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
