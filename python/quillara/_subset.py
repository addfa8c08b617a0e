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
    weight: float | None  # the sum of their weights; None: no weight is in force
    of: int  # how many cases there were before the first step
    steps: list[Step]
