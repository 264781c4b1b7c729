"""Random edits, done to an edit form and to a model in plain Python that knows nothing of it."""

from __future__ import annotations

import os
import random
from dataclasses import dataclass, field
from typing import Any, Optional

import pytest

import qenzor

ROUNDS = 300 if os.environ.get("QENZOR_LONG") else 40
STEPS = 150


@dataclass
class Model:
    """An object, a z-id, a layer or a segment: its number, its points and its children."""

    cls: str
    number: int = 0
    points: list[tuple[int, int]] = field(default_factory=list)
    children: list[Model] = field(default_factory=list)


LEVELS = ["MeshSegment", "LayerData", "ZIdObj", "PolyObj"]
NUMBERS = {"MeshSegment": "MeshSegmentNo", "LayerData": "LayerNo", "ZIdObj": "ZId", "PolyObj": "Height"}
LISTS = {"MeshSegment": "layers", "LayerData": "z_ids", "ZIdObj": "objects"}


def content(node: Any) -> Any:
    cls = type(node).__name__
    children = [content(child) for child in getattr(node, LISTS[cls])] if cls in LISTS else []
    points = [tuple(point) for point in node.Pt] if cls == "PolyObj" else []
    return (cls, getattr(node, NUMBERS[cls]), points, children)


def model_content(model: Model) -> Any:
    return (model.cls, model.number, list(model.points), [model_content(c) for c in model.children])


def clone(model: Model) -> Model:
    return Model(model.cls, model.number, list(model.points), [clone(c) for c in model.children])


class Run:
    def __init__(self, seed: int) -> None:
        self.random = random.Random(seed)
        self.edit = qenzor.QenEdit()
        self.model = Model("Root")
        # Handles that are kept over many steps, with what they stand for; None: dropped.
        self.kept: list[tuple[Any, Optional[Model]]] = []

    def make(self, level: int) -> tuple[Any, Model]:
        cls, number = LEVELS[level], self.random.randrange(100)
        node = getattr(qenzor, cls)(**{NUMBERS[cls]: number})
        model = Model(cls, number)
        if cls == "PolyObj":
            model.points = [(self.random.randrange(-9, 9), 5) for _ in range(self.random.randrange(4))]
            node.Pt = model.points
        elif self.random.random() < 0.6:
            child, child_model = self.make(level + 1)
            getattr(node, LISTS[cls]).append(child)
            model.children.append(child_model)
        return node, model

    def pick(self) -> tuple[Any, Model, int]:
        """A list of children, the model that has them, and their level."""
        nodes, model, level = self.edit.segments, self.model, 0
        while level < 3 and model.children and self.random.random() < 0.7:
            at = self.random.randrange(len(model.children))
            node = nodes[at]
            model = model.children[at]
            nodes = getattr(node, LISTS[model.cls])
            level += 1
        return nodes, model, level

    def forget(self, model: Model) -> None:
        below = {id(model)}
        stack = [model]
        while stack:
            for child in stack.pop().children:
                below.add(id(child))
                stack.append(child)
        self.kept = [(node, None if m is not None and id(m) in below else m) for node, m in self.kept]

    def step(self) -> None:
        nodes, model, level = self.pick()
        size = len(model.children)
        action = self.random.randrange(9)
        at = self.random.randrange(size) if size else 0
        if action <= 2 or size == 0:
            node, new = self.make(level)
            place = self.random.randrange(size + 1)
            nodes.insert(place, node)
            model.children.insert(place, new)
            self.kept.append((node, new))
        elif action == 3:
            self.forget(model.children.pop(at))
            del nodes[at]
        elif action == 4:
            # Copies, as the objects belong to the list already.
            model.children.append(clone(model.children[at]))
            nodes.append(nodes[at])
        elif action == 5:
            node, moved = nodes.pop(at), model.children.pop(at)
            nodes.append(node)
            model.children.append(moved)
        elif action == 6:
            low, high = sorted(self.random.randrange(size + 1) for _ in range(2))
            made = [self.make(level) for _ in range(self.random.randrange(3))]
            for gone in model.children[low:high]:
                self.forget(gone)
            nodes[low:high] = [node for node, _ in made]
            model.children[low:high] = [new for _, new in made]
        elif action == 7:
            child = model.children[at]
            child.number = self.random.randrange(100)
            setattr(nodes[at], NUMBERS[child.cls], child.number)
            if child.cls == "PolyObj":
                child.points.append((1, 2))
                nodes[at].Pt.append((1, 2))
        else:
            self.kept.append((nodes[at], model.children[at]))

    def check(self) -> None:
        assert [content(s) for s in self.edit.segments] == [model_content(m) for m in self.model.children]
        for node, model in self.kept:
            if model is not None:
                assert content(node) == model_content(model)
            else:
                with pytest.raises(ReferenceError):
                    content(node)


@pytest.mark.parametrize("part", range(4))
def test_an_edit_form_does_as_lists_do(part: int) -> None:
    for seed in range(part, ROUNDS, 4):
        run = Run(seed)
        for step in range(STEPS):
            run.step()
            if step % 25 == 0:
                run.check()
        run.check()
        document = run.edit.to_map()
        assert [content(s) for s in document.segments] == [model_content(m) for m in run.model.children]
        again = qenzor.read(bytes(document))
        assert again == document
        if seed % 2:
            run.edit.close()
            run.kept = [(node, None) for node, _ in run.kept]
            for node, _ in run.kept:
                with pytest.raises(ReferenceError):
                    content(node)
