"""Several threads: each with a document of its own, or one that they must not share."""

from __future__ import annotations

import threading
from pathlib import Path
from typing import Any

import qenzor


def large_map(world: Any) -> Any:
    edit = world.edit()
    for _ in range(3):
        edit.segments.extend(list(edit.segments))
    return edit.to_map()


def test_threads_with_documents_of_their_own_do_not_meet(world_path: Path, world: Any, tmp_path: Path) -> None:
    failures: list[BaseException] = []

    def work(name: str) -> None:
        try:
            for _ in range(5):
                document = qenzor.read(world_path)
                assert document == qenzor.read(bytes(document))
                document.write(tmp_path / name, sync=False)
                list(qenzor.check(tmp_path / name))
        except BaseException as error:  # told by the main thread
            failures.append(error)

    threads = [threading.Thread(target=work, args=(f"{i}.qen",)) for i in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert failures == []


def test_a_document_in_use_by_another_thread_raises(world: Any, tmp_path: Path) -> None:
    document = large_map(world)
    obj = next(document.objects())
    points = obj.points
    started = threading.Event()

    def write() -> None:
        started.set()
        for _ in range(20):
            try:
                document.to_xml(tmp_path / "a.xml", sync=False)
            except RuntimeError:
                pass

    thread = threading.Thread(target=write)
    thread.start()
    started.wait()
    refused = 0
    while thread.is_alive():
        for use in (lambda: obj.Height, lambda: document.segments[0], lambda: next(document.objects()),
                    lambda: bytes(document)):
            try:
                use()
            except RuntimeError as error:
                assert "another thread" in str(error)
                refused += 1
        assert points[0, 0] == points[0, 0]
    thread.join()
    assert refused > 0
    assert document.segments[0].MeshSegmentNo == 0
