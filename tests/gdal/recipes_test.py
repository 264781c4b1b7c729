"""Runs the recipes of docs/gdal.md one after the other in a folder with the samples."""

import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

docs, samples, tool = (Path(os.environ[name]) for name in ("DOCS", "QENZOR_SAMPLES", "QENZOR_TOOL"))
recipes = re.findall(r"```sh\n(.*?)```", (docs / "gdal.md").read_text(), re.S)
assert len(recipes) == 5, len(recipes)
with tempfile.TemporaryDirectory() as folder:
    for name in ("world.qen", "world.zor"):
        shutil.copy(samples / name, folder)
    path = f"{tool.parent}:{os.environ['PATH']}"
    said = [subprocess.run(["sh", "-ec", recipe], cwd=folder, check=True, text=True,
                           stdout=subprocess.PIPE, env=dict(os.environ, PATH=path)).stdout
            for recipe in recipes]
    made = {name: os.path.getsize(os.path.join(folder, name)) for name in os.listdir(folder)}
    for name in ("world.gpkg", "europe.geojson", "mercator.gpkg", "places.qen"):
        assert made[name] > 1000, (name, made)
    assert "PEN(c:#" in said[4], said[4]
    labels = [subprocess.run(["ogrinfo", "-so", name, layer], cwd=folder, check=True, text=True,
                             stdout=subprocess.PIPE).stdout.split("Feature Count: ")[1].split()[0]
              for name, layer in (("world.qen", "3_label"), ("places.qen", "0_label"))]
    assert labels[0] == labels[1], labels
