"""Data tables."""

from __future__ import annotations

import html
import os
import warnings
from collections.abc import Iterator

from . import _arguments, _quillara
from ._arguments import shown
from ._documents import DataDocument
from ._drill import Drill, text_of_category, text_of_lists, with_hint
from ._errors import INVALID_ARGUMENT, Error, Message, WrongType, WrongValue
from ._objects import warn_of_formula, warn_of_messages


class Variable:
    """A variable of a table."""

    __slots__ = {
        "name": "Its name, as formulas and analyses take it.",
        "label": "Its label; empty without one.",
        "kind": 'What its values are: "number", "date", "time" (of day), "datetime" or "text".',
        "labels": 'Labels by value, as {1.0: "Female"}; of texts by the text that is stored, as {"F": "Female"}.',
        "categories": "Its labels, or its texts, in their order.",
        "missing_values": 'The missing values that the file tells apart, with their labels or None, as {99.0: "Not stated", ".a": None}.',
    }
    name: str
    label: str
    kind: str
    labels: dict[float, str] | dict[str, str]
    categories: list[str]
    missing_values: dict[float | str, str | None]

    def __init__(self, name, label, kind, labels, categories, missing_values):
        self.name = name
        self.label = label
        self.kind = kind
        self.labels = labels
        self.categories = categories
        self.missing_values = missing_values

    def __repr__(self):
        return f"<quillara.Variable: {self.name}, {self.kind}>"


def _variable_of(held, index):
    name, label, kind, labels, missing_values = held.describe(index)
    return Variable(name, label, kind, labels, list(labels.values()) or held.texts(index), missing_values)


def _shortened(text, most=100):
    return text if len(text) <= most else text[:most - 4] + " ..."


class Table:
    """A data table, with the selection of cases and the weight that analyses of it begin with."""

    __slots__ = ("_held", "_variables", "_names", "_selection", "_weight")

    def __init__(self, held):
        self._hold(held)
        self._selection = ""
        self._weight = None

    def _hold(self, held):
        self._held = held
        self._variables = [_variable_of(held, index) for index in range(len(held))]
        self._names = [variable.name for variable in self._variables]

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
        if not isinstance(name, str):
            raise TypeError(f"A variable of a table goes by its name, not by {shown(name)}.")
        if name not in self._names:
            raise KeyError(name)
        return self._variables[self._names.index(name)]

    def __contains__(self, name: object) -> bool:
        return name in self._names

    def __iter__(self) -> Iterator[str]:
        """The names of the variables, as frames give those of their columns."""
        return iter(self._names)

    def select(self, formula: str | None) -> Table:
        """Selects cases for the analyses that begin from now on, as `age > 30 and sex = "Female"`; None: all cases.

        Gives the table itself. Raises Error where the formula is none or names what isn't there; the selection is then as it was.
        """
        if formula is not None:
            _arguments.text(formula, "A selection is a formula such as 'age > 30', or None for all cases")
        if formula:
            warn_of_formula(self._held.check_selection(formula))
        self._selection = formula or ""
        return self

    def compute(self, name: str, formula: str) -> Table:
        """Adds a variable that a formula makes of others, as `if(age >= 65, 'old', 'young')` or `hours / 40`.

        It has the formula for its label. Analyses that began before don't have it. Gives the table itself. Raises Error where the
        formula is none, or the name is taken; the table is then as it was.
        """
        _arguments.text(name, "A computed variable has a name")
        _arguments.text(formula, "A variable is computed by a formula such as 'hours / 40'")
        held, notices = self._held.compute(name, formula)
        self._hold(held)
        warn_of_formula(notices)
        return self

    def group(self, variable: str, categories: Sequence[str | float | datetime.date | datetime.time | None]) -> str:
        """Adds a variable of two categories, the ones named and all other, for analyses to step on several at once.

        Gives its name. drill.down(variable, categories) steps on it, and adds such a variable to its analysis where there
        is none. Raises KeyError for an unknown variable, Error for a category that it doesn't have.
        """
        name, formula, _ = self._grouping(variable, categories)
        if name not in self._names:
            self.compute(name, formula)
        return name

    def _grouping(self, variable, categories):
        if variable not in self._names:
            raise KeyError(variable)
        return self._held.group(self._names.index(variable), [text_of_category(each) for each in categories])

    @property
    def selection(self) -> str:
        """The formula that selects cases; empty: all cases."""
        return self._selection

    @property
    def weight(self) -> str | None:
        """The name of the variable that weights the cases of analyses that begin from now on; None: none does.

        Raises Error when it is set to what is no variable of numbers.
        """
        return self._weight

    @weight.setter
    def weight(self, name: str | None) -> None:
        if name is not None:
            self._held.weight_index(_arguments.text(name, "A weight is the name of a variable, or None"))
        self._weight = name

    @property
    def declared_weight(self) -> str | None:
        """The name of the weight variable that the file declares; it is in force only when `weight` names it."""
        index = self._held.declared_weight
        return None if index is None else self._names[index]

    def drill(self, categorical: str | Sequence[str | int] = "", continuous: str | Sequence[str | int] = "") -> Drill:
        """Begins a drill-down analysis: opens its startup dialog and chooses the variables, if any are given.

        Each list is a text as the member Variables takes it ("sex education", "1-3 7"), or a list of names and
        numbers from 1. Names with blanks stand in a list. Raises Error for what can't be a list of variables, as a text
        among the continuous ones; no analysis is open then.
        """
        weight = None if self._weight is None else self._held.weight_index(self._weight)
        drill = Drill._begin(self, _quillara.Analysis(self._held, self._selection, weight))
        if categorical or continuous:
            try:
                drill.Variables = self._held.checked_lists(text_of_lists(categorical, continuous))
            except Error as error:
                drill.close()
                raise with_hint(error, (categorical, continuous), self._names) from None
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

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        """The columns for other libraries, as Arrow's protocol asks for them."""
        return _quillara.table_stream(self._held)

    def _repr_html_(self) -> str:
        """The variables, as a notebook shows them."""
        rows = [(variable.name, variable.label, variable.kind, "; ".join(variable.categories))
                for variable in self._variables]
        lines = ["".join(f"<td>{html.escape(_shortened(text))}</td>" for text in row) for row in rows]
        head = "".join(f"<th>{text}</th>" for text in ("Variable", "Label", "Kind", "Categories"))
        caption = html.escape(f"{self.name or 'Table'}, {self.cases} cases")
        return f"<table><caption>{caption}</caption><tr>{head}</tr><tr>{'</tr><tr>'.join(lines)}</tr></table>"

    def __repr__(self):
        return f"<quillara.Table: {self.name or 'of columns'}, {self.cases} cases, {len(self._names)} variables>"


def open(path: str | os.PathLike[str], *, separator: str | None = None, decimal: str | None = None, encoding: str = "",
         header: bool = True, skip: int = 0, missing: Sequence[str] | None = None,
         dictionary: str | os.PathLike[str] | None = None, sheet: str | int | None = None,
         keep_texts: bool = False, dates: str | None = None, texts: Sequence[str] = (), numbers: Sequence[str] = (),
         missing_values: Mapping[str, Sequence[str | float]] | None = None,
         valid: Mapping[str, bool | Sequence[str | float]] | None = None) -> Table:
    """Reads a data file of any kind that `quillara drill` reads.

    dictionary is a delimited file of labels; sheet is one of a workbook, by its name or its number from 1, by default
    the first. missing_values names values that mean missing data, as {"q1": [99], "age": ["97..99"]}. valid names missing values of the file that are to be values, by code or label, or True for all of a
    variable, as {"q1": [99, "Refused"], "q2": True}. A table of a database is named as "sqlite:FILE?table=NAME", "sqlite:FILE?query=SQL" or "odbc:NAME?query=SQL". Parquet files need the library of DuckDB. The rest is about delimited text: the character between fields, found from
    the text when not given; the decimal character, by default a point unless the file plainly has decimal commas; the character encoding, by default UTF-8, else Windows-1252; whether
    the first line has the names; how many lines, or rows of a sheet, above the names are passed over (skip); the texts that mean missing data, in place of NA, N/A, NaN, ...; whether texts such as
    "1,234", "10%" or "31.12.2024" stay texts: otherwise they are read as numbers, "10%" as 0.1, or dates where all of a
    column are written in one way, and a warning says so. dates, "day-first" or "month-first", tells what 03/04/2024 is.
    texts names columns that are texts, whatever they look like; numbers such as are numbers though leading zeros make
    them look like codes. What looks odd about the file is a warning, too.
    """
    options = _options(separator, decimal, encoding, header, missing)
    options["sheet"] = "" if sheet is None else str(sheet)
    options["keep_texts"] = bool(keep_texts)
    if dates not in (None, "day-first", "month-first"):
        raise ValueError(f'dates is "day-first", "month-first" or None, not {shown(dates)}.')
    options["dates"] = dates
    if not isinstance(skip, int) or isinstance(skip, bool) or not 0 <= skip < 2**31:
        raise ValueError(f"skip is a number of lines, not {shown(skip)}.")
    options["skip"] = int(skip)
    options["texts"] = _arguments.texts(texts, 'texts is a list of names such as ["zip"]')
    options["numbers"] = _arguments.texts(numbers, 'numbers is a list of names such as ["code"]')
    options["missing_values"] = _missing_values(missing_values)
    _warn_of_vain_options(path, separator, encoding, missing)
    table = Table(_quillara.read(_path(path), options, None if dictionary is None else _path(dictionary),
                                 _valid(valid)))
    warn_of_messages(level=3)
    return table


def _missing_values(values):
    """Variables with the texts of their codes."""
    wanted = 'missing_values is given as {"q1": [98, 99], "age": ["97..99"]}'
    if values is None:
        return []
    try:
        return [(_arguments.text_of(name, wanted), _codes(codes, wanted)) for name, codes in values.items()]
    except AttributeError:
        raise TypeError(f"{wanted}, not as {shown(values)}.") from None


def _valid(valid):
    """Variables with the texts of their codes; of all of them none."""
    wanted = 'valid is given as {"q1": [99, "Refused"], "q2": True}'
    if valid is None:
        return []
    try:
        return [(_arguments.text_of(name, wanted), [] if codes is True else _codes(codes, wanted))
                for name, codes in valid.items()]
    except AttributeError:
        raise TypeError(f"{wanted}, not as {shown(valid)}.") from None


def _codes(codes, wanted):
    if isinstance(codes, (str, bytes)) or not hasattr(codes, "__iter__"):
        raise TypeError(f"{wanted}, not {shown(codes)}.")
    if not (texts := [_arguments.text_of(code, wanted) for code in codes]):
        raise ValueError(f"{wanted}; a list of codes has at least one.")
    return texts


VAIN_ENDINGS = {".sav", ".zsav", ".dta"}


def _path(path):
    """As the system has it: names of files needn't be texts."""
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError(f"A path has no null character: {shown(path)}.")
    return name


def _warn_of_vain_options(path, separator, encoding, missing):
    """Files of statistics programs say themselves how they are read."""
    ending = os.path.splitext(os.fsdecode(path))[1].lower()
    given = [name for name, value in (("separator", separator), ("encoding", encoding), ("missing", missing)) if value]
    if given and ending in VAIN_ENDINGS:
        warnings.warn(f"{', '.join(given)}: this has no effect on a file of this kind ({ending}); it is for delimited text.",
                      Message, stacklevel=3)


def _options(separator, decimal, encoding, header, missing):
    """How delimited text is read, as the extension takes it."""
    if not isinstance(header, int):
        raise TypeError(f"header is True or False, not {shown(header)}.")
    return {
        "separator": None if separator is None else _arguments.character(separator, "separator"),
        "decimal": None if decimal is None else _arguments.character(decimal, "decimal"),
        "encoding": _arguments.text(encoding, 'encoding is a text such as "utf-8" or "windows-1252"'),
        "header": bool(header),
        "missing": None if missing is None else _arguments.texts(missing, 'missing is a list of texts such as ["-", "?"]'),
    }


def _same(columns):
    """The data of what is a table already."""
    if isinstance(columns, Table):
        return columns._held
    return _quillara.saved_table(columns._face) if isinstance(columns, DataDocument) else None


def _labels_of(labels):
    wanted = 'Labels are given as {"sex": {1: "Female", 2: "Male"}}'
    try:
        return {_arguments.text_of(column, wanted):
                {float(value): _arguments.text_of(text, wanted) for value, text in texts.items()}
                for column, texts in labels.items()}
    except Exception as error:
        raise error if str(error).startswith(wanted) else TypeError(f"{wanted}, not as {shown(labels)}.") from None


def _made(columns, name, labels):
    """What the extension makes of columns, and the names of those that it rounds."""
    if hasattr(columns, "__arrow_c_stream__") and not type(columns).__module__.startswith("pandas"):
        return _quillara.read_stream(name, columns.__arrow_c_stream__(), labels)
    if not hasattr(columns, "items"):
        raise TypeError("A table is made of a frame, of a dict of columns, or of what gives columns as Arrow does, not of "
                        f"{shown(columns)}.")
    from . import _columns

    made, case_names, rounded = _columns.columns_of(columns)
    return _quillara.make(name, made, case_names, labels), rounded


def table(columns: Any, name: str = "", labels: Mapping[str, Mapping[float, str]] | None = None) -> Table:
    """A table of a frame: of pandas, a dict of columns, or any that gives its columns by Arrow's C stream interface.

    Categories (in Arrow dictionaries of texts) become values 1, 2, ... with labels, in their order; texts, dates and
    times of day stay what they are, True and False become 1 and 0 with labels. None, NaN and NaT are missing.
    labels: the value labels of columns of numbers, as {"sex": {1: "Female", 2: "Male"}}. Cases that remain of another
    table keep their values and labels; they take no further ones, and no name.
    """
    _arguments.text(name, "The name of a table is a text")
    if (held := _same(columns)) is not None:
        return Table(held)
    try:
        made, rounded = _made(columns, name, _labels_of(labels or {}))
    except (TypeError, ValueError) as error:
        kind = WrongType if isinstance(error, TypeError) else WrongValue
        raise kind(INVALID_ARGUMENT, str(error), "table") from error
    for column in rounded:
        warnings.warn(f'Whole numbers of the column "{column}" have more digits than a table keeps; they are rounded.',
                      Message, stacklevel=2)
    return Table(made)
