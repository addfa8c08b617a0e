"""Data tables."""

from __future__ import annotations

import os

from . import _quillara
from ._drill import Drill, text_of_lists
from ._errors import INVALID_ARGUMENT, Error


class Variable:
    """A variable of a table: name, label, kind ("number", "date", "time" or "text") and labels (by value)."""

    __slots__ = ("name", "label", "kind", "labels")
    name: str
    label: str
    kind: str
    labels: dict[float, str]

    def __init__(self, name, label, kind, labels):
        self.name = name
        self.label = label
        self.kind = kind
        self.labels = labels

    def __repr__(self):
        return f"<quillara.Variable: {self.name}, {self.kind}>"


def _variable_of(held, index):
    name, label, kind, labels = held.describe(index)
    return Variable(name, label, kind, dict(labels))


class Table:
    """A data table, with the selection of cases and the weight that analyses of it begin with."""

    __slots__ = ("_held", "_variables", "_names", "_selection", "_weight")

    def __init__(self, held):
        self._held = held
        self._variables = [_variable_of(held, index) for index in range(len(held))]
        self._names = [variable.name for variable in self._variables]
        self._selection = ""
        self._weight = None

    @property
    def name(self) -> str:
        """The name of the file; empty without one."""
        return self._held.name

    @property
    def cases(self) -> int:
        """The number of cases."""
        return self._held.cases

    @property
    def variables(self) -> tuple[Variable, ...]:
        """The variables in their order."""
        return tuple(self._variables)

    @property
    def names(self) -> list[str]:
        """The names of the variables."""
        return list(self._names)

    def __len__(self) -> int:
        return self.cases

    def __getitem__(self, name: str) -> Variable:
        """The variable of a name."""
        if name not in self._names:
            raise KeyError(name)
        return self._variables[self._names.index(name)]

    def select(self, formula: str | None) -> Table:
        """Selects cases for the analyses that begin from now on, as `age > 30 and sex = "Female"`; None: all cases.

        Gives the table itself.
        """
        if formula:
            self._held.check_selection(formula)
        self._selection = formula or ""
        return self

    @property
    def selection(self) -> str:
        """The formula that selects cases; empty: all cases."""
        return self._selection

    @property
    def weight(self) -> str | None:
        """The name of the variable that weights the cases of analyses that begin from now on; None: none does."""
        return self._weight

    @weight.setter
    def weight(self, name: str | None) -> None:
        if name is not None:
            self._held.weight_index(name)
        self._weight = name

    @property
    def declared_weight(self) -> str | None:
        """The name of the weight variable that the file declares; it is in force only when `weight` names it."""
        index = self._held.declared_weight
        return None if index is None else self._names[index]

    def drill(self, categorical: str | Sequence[str | int] = "", continuous: str | Sequence[str | int] = "") -> Drill:
        """Begins a drill-down analysis: opens its startup dialog and chooses the variables, if any are given.

        Each list is a text as the member Variables takes it ("sex education", "1-3 7"), or a list of names and
        numbers.
        """
        weight = None if self._weight is None else self._held.weight_index(self._weight)
        drill = Drill._begin(self, _quillara.Analysis(self._held, self._selection, weight))
        if categorical or continuous:
            try:
                drill.Variables = text_of_lists(categorical, continuous)
            except BaseException:
                drill.close()
                raise
        return drill

    def to_pandas(self, labels: bool | Sequence[str] = True) -> pandas.DataFrame:
        """All cases as a frame of pandas.

        A variable with value labels becomes categories in the order of the values; a value without a label has its
        number for a name. labels=False gives the values themselves instead, a list of names the labels of these
        variables only. Dates are datetime64, times of day timedelta64; missing data is missing. The names of the cases
        are the index.
        """
        from . import _frames

        return _frames.frame_of_table(self._held, labels)

    def __repr__(self):
        return f"<quillara.Table: {self.name or 'of columns'}, {self.cases} cases, {len(self._names)} variables>"


def open(path: str | os.PathLike[str]) -> Table:
    """Reads a data file of any kind that `quillara drill` reads."""
    return Table(_quillara.read(os.fsdecode(path)))


def table(columns: pandas.DataFrame | Mapping[Any, Any], name: str = "",
          labels: Mapping[str, Mapping[float, str]] | None = None) -> Table:
    """A table of a frame of pandas or of a dict of columns.

    Categories become values 1, 2, ... with labels, in their order; texts, dates (datetime64) and times of day
    (timedelta64) stay what they are, True and False become 1 and 0 with labels. None, NaN and NaT are missing.
    labels: the value labels of columns of numbers, as {"sex": {1: "Female", 2: "Male"}}.
    """
    from . import _columns

    try:
        made, case_names = _columns.columns_of(columns, labels or {})
    except (TypeError, ValueError) as error:
        raise Error(INVALID_ARGUMENT, str(error), "table") from error
    return Table(_quillara.make(name, made, case_names))
