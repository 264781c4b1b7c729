"""A fleet on one machine: workers that die, files that kill them, runs that are taken up again."""

from __future__ import annotations

import json
import os
import signal
import subprocess
import sys
import time
from pathlib import Path
from typing import Any, Iterator

import pytest

sys.path.insert(0, str(Path(__file__).parent.parent / "python"))

import handmade  # noqa: E402
from qenzor.fleet import documents, inputs  # noqa: E402

# Ends whatever process reads a file of this name, as a document might that is too much for it; all
# others take a little while.
SABOTAGE = """
import os, time
from fsspec.spec import AbstractFileSystem
_cat_file = AbstractFileSystem.cat_file
def cat_file(self, path, *args, **kwargs):
    if path.endswith("poison.qen"):
        os.kill(os.getpid(), 9)
    time.sleep(float(os.environ.get("FLEET_TEST_DELAY", "0")))
    return _cat_file(self, path, *args, **kwargs)
AbstractFileSystem.cat_file = cat_file
"""


@pytest.fixture
def environment(tmp_path: Path) -> dict[str, str]:
    hooks = tmp_path / "hooks"
    hooks.mkdir()
    (hooks / "sitecustomize.py").write_text(SABOTAGE)
    path = os.pathsep.join([str(hooks), os.environ["PYTHONPATH"]])
    return {
        **os.environ,
        "PYTHONPATH": path,
        "DASK_DISTRIBUTED__SCHEDULER__ALLOWED_FAILURES": "1",
        "FLEET_TEST_DELAY": "0.01",
    }


def fleet(environment: dict[str, str], *arguments: Any) -> subprocess.CompletedProcess[str]:
    command = [sys.executable, "-m", "qenzor.fleet", *map(str, arguments)]
    return subprocess.run(command, env=environment, capture_output=True, text=True, timeout=200)


def report(outdir: Path) -> list[dict[str, Any]]:
    return [json.loads(line) for line in (outdir / "report.jsonl").read_text().splitlines()]


def lasting(lines: list[dict[str, Any]]) -> list[dict[str, Any]]:
    return [{k: v for k, v in line.items() if k not in ("time", "peak_memory")} for line in lines]


@pytest.fixture
def cluster(tmp_path: Path, environment: dict[str, str]) -> Iterator[tuple[str, list[int]]]:
    """A scheduler and three workers: its address, and the processes of the workers."""
    file = tmp_path / "scheduler.json"
    options = ["--scheduler-file", str(file), "--no-dashboard"]
    scheduler = [sys.executable, "-m", "distributed.cli.dask_scheduler", "--host", "127.0.0.1", "--port", "0"]
    worker = [sys.executable, "-m", "distributed.cli.dask_worker", "--nworkers", "3", "--nthreads", "1",
              "--memory-limit", "0"]
    quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    processes = [subprocess.Popen([*scheduler, *options], env=environment, cwd=tmp_path, **quiet)]  # type: ignore[call-overload]
    try:
        deadline = time.monotonic() + 60
        while not file.exists() and time.monotonic() < deadline:
            time.sleep(0.05)
        processes.append(subprocess.Popen([*worker, *options], env=environment, cwd=tmp_path, **quiet))  # type: ignore[call-overload]
        address = json.loads(file.read_text())["address"]
        from distributed import Client

        with Client(address) as client:
            client.wait_for_workers(3, timeout=60)
            yield address, list(client.run(os.getpid).values())
    finally:
        for process in reversed(processes):
            process.terminate()
        for process in processes:
            process.wait(30)


def make_inputs(folder: Path) -> list[Path]:
    files = []
    for i in range(300):
        path = folder / f"{i % 7}" / "deeper" / f"map {i // 7}.qen"
        path.parent.mkdir(parents=True, exist_ok=True)
        content = handmade.SMALL_MAP
        path.write_bytes(content[:-1] if i % 60 == 30 else content)
        files.append(path)
    return files


def test_a_fleet_survives_what_befalls_its_workers(
    tmp_path: Path, environment: dict[str, str], cluster: tuple[str, list[int]]
) -> None:
    folder, outdir = tmp_path / "in", tmp_path / "out"
    files = make_inputs(folder)
    poison = folder / "3" / "poison.qen"
    poison.write_bytes(handmade.SMALL_MAP)
    manifest = tmp_path / "all.txt"
    manifest.write_text("# all\n" + "".join(f"{path}\n" for path in [*files, poison]))
    address, workers = cluster

    command = [sys.executable, "-m", "qenzor.fleet", "copy", "--scheduler", address, "--batch", "10"]
    running = subprocess.Popen([*command, str(manifest), str(outdir)], env=environment,
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    deadline = time.monotonic() + 60
    while time.monotonic() < deadline:
        path = outdir / "report.jsonl"
        if path.exists() and path.read_text().count("\n") >= 30:
            break
        time.sleep(0.02)
    os.kill(workers[0], signal.SIGKILL)
    out, err = running.communicate(timeout=150)
    assert running.returncode == 1, out + err
    assert err == ""

    lines = {line["input"]: line for line in report(outdir)}
    assert len(lines) == len(report(outdir)) == 301
    (poisoned,) = [line for line in lines.values() if "poison" in line["input"]]
    assert poisoned["reason"] == "its process died of SIGKILL"
    order = documents.Order("copy")
    serial = [
        documents.do(item, order)
        for item in inputs.find([str(path) for path in files], str(tmp_path / "serial"))
    ]
    assert sum(line["result"] == "failed" for line in serial) == 5
    for line in serial:
        if line["output"]:
            line["output"] = line["output"].replace("/serial/", "/out/")
    others = [lines[line["input"]] for line in serial]
    assert lasting(others) == lasting(serial)
    for line in others:
        if line["result"] == "ok":
            assert Path(line["output"]).read_bytes() == handmade.SMALL_MAP
            assert line["peak_memory"] > 1 << 20 and line["time"] > 0
    left = {str(p.relative_to(outdir)) for p in outdir.rglob("*") if p.is_file()}
    good = {str(Path(line["input"]).relative_to(folder)) for line in others if line["result"] == "ok"}
    assert left == good | {"report.jsonl"}

    before = (outdir / "report.jsonl").read_text()
    stamps = {path: path.stat().st_mtime_ns for path in outdir.rglob("*.qen")}
    again = fleet(environment, "copy", "--workers", 1, manifest, outdir)
    assert again.returncode == 1
    assert "301 had been done before" in again.stdout
    assert (outdir / "report.jsonl").read_text() == before
    assert {path: path.stat().st_mtime_ns for path in outdir.rglob("*.qen")} == stamps


def test_only_what_is_not_done_yet_is_done(tmp_path: Path, environment: dict[str, str]) -> None:
    folder, outdir = tmp_path / "in", tmp_path / "out"
    folder.mkdir()
    for name in ("a", "b", "c"):
        (folder / f"{name}.qen").write_bytes(handmade.SMALL_MAP)
    (folder / "d.zor").write_bytes(handmade.SMALL_DRAWING)
    (folder / "bad.qen").write_bytes(b"no map")
    patterns = [folder / "*.qen", folder / "*.zor"]
    first = fleet(environment, "to-xml", "--workers", 1, *patterns, outdir)
    assert first.returncode == 1, first.stderr
    assert first.stdout == "5 documents: 4 ok, 1 failed; 0 had been done before\n"
    (outdir / "a.qen.xml").unlink()
    (folder / "b.qen").write_bytes(handmade.qen())
    (folder / "bad.qen").write_bytes(handmade.SMALL_MAP)
    second = fleet(environment, "to-xml", "--workers", 1, *patterns, outdir)
    assert second.stdout == "5 documents: 5 ok, 0 failed; 2 had been done before\n"
    assert second.returncode == 0
    assert (outdir / "a.qen.xml").read_bytes() != (outdir / "b.qen.xml").read_bytes()
    back = fleet(environment, "from-xml", "--workers", 1, outdir / "*.xml", tmp_path / "back")
    assert back.returncode == 0
    assert {p.name for p in (tmp_path / "back").glob("*.xml.*")} == {
        "a.qen.xml.qen", "b.qen.xml.qen", "c.qen.xml.qen", "bad.qen.xml.qen", "d.zor.xml.zor",
    }


def test_operations_do_what_they_say(tmp_path: Path) -> None:
    (tmp_path / "a.qen").write_bytes(handmade.SMALL_MAP)
    (tmp_path / "a.zor").write_bytes(handmade.SMALL_DRAWING)
    for operation, output, failed in [
        ("check", "a.qen.findings.jsonl", False),
        ("to-geojson", "a.qen.geojson", True),
    ]:
        order = documents.Order(operation, draw=str(tmp_path / "a.zor"))
        items = inputs.find([str(tmp_path / "a.*")], str(tmp_path / "out"))
        lines = [documents.do(item, order) for item in items]
        assert [line["result"] for line in lines] == ["ok", "failed" if failed else "ok"]
        assert lines[0]["output"] == str(tmp_path / "out" / output)
    collection = json.loads((tmp_path / "out" / "a.qen.geojson").read_text())
    assert len(collection["features"]) == 4
    assert collection["features"][0]["properties"]["draw_infos"] == [0, 1]
    order = documents.Order("check")
    (tmp_path / "a.qen").write_bytes(handmade.SMALL_MAP[:-1])
    (item, *_) = inputs.find([str(tmp_path / "a.*")], str(tmp_path / "out2"))
    assert documents.do(item, order)["reason"].startswith("Q1")


def test_what_has_no_meaning_is_wrong_usage(tmp_path: Path, environment: dict[str, str]) -> None:
    (tmp_path / "a.qen").write_bytes(handmade.SMALL_MAP)
    for arguments in [
        ["copy", tmp_path / "*.qen", tmp_path / "out"],
        ["fold", "--workers", 1, tmp_path / "*.qen", tmp_path / "out"],
        ["copy", "--workers", 0, tmp_path / "*.qen", tmp_path / "out"],
        ["copy", "--workers", 1, tmp_path / "*.none", tmp_path / "out"],
        ["copy", "--workers", 1, tmp_path / "no manifest", tmp_path / "out"],
    ]:
        assert fleet(environment, *arguments).returncode == 2
    assert not (tmp_path / "out").exists()
