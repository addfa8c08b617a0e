"""What the steps of an analysis leave."""

from __future__ import annotations

from typing import NamedTuple


class Step(NamedTuple):
    """A drill step in force."""

    variable: str
    category: str
    kind: str = "down"


class Subset(NamedTuple):
    """The cases that the steps in force leave, by the filter itself."""

    cases: int
    weight: float | None
    of: int
    steps: list[Step]


for _owner, _texts in ((Step, {
    "variable": "The name of the variable that was drilled on.",
    "category": "The category that it keeps, as lists show it.",
    "kind": 'What was done: "down".',
}), (Subset, {
    "cases": "How many cases remain; under a weight those of a positive one.",
    "weight": "The sum of their weights, fractions as they are; None: no weight is in force.",
    "of": "How many cases there were before the first step.",
    "steps": "The steps in force, the oldest first.",
})):
    for _name, _text in _texts.items():
        getattr(_owner, _name).__doc__ = _text
