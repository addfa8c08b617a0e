"""A drill-down analysis as a script works with it."""

from __future__ import annotations

import datetime
import html
import os
import weakref

from . import _quillara
from ._arguments import shown, text, whole_number
from ._documents import Document
from ._errors import INVALID_ARGUMENT, Error
from ._objects import Object, warn_of_messages, wrap
from ._subset import Step, Subset

_open = weakref.WeakSet()

LISTS = "Variables are given as a text such as 'sex education' or as a list of names and numbers"
WHY_NOT = {
    "down": 'The variable "{}" can\'t be drilled on: it is no drill variable; name it in table.drill(...) or in the member Variables.',
    "categorize": 'The variable "{}" can\'t be categorized: it is no drill variable; name it in table.drill(...) or in the member Variables.',
    "up": 'There is no step on the variable "{}" to undo.',
}
TAKEN = 'The variable "{0}" has been drilled on already; undo that step first: drill.up("{0}").'
METHOD = 'A categorization is a text such as "neat:10", "step:5", "bounds:30,60" or "distinct"'
CATEGORY = "A category goes by its name, by a value of it, or by None for missing data"


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def text_of_list(variables):
    """A list of variables as the member Variables takes it: a text is one already, others are names or numbers."""
    if isinstance(variables, str):
        return text(variables, LISTS)
    if isinstance(variables, bytes) or not hasattr(variables, "__iter__"):
        raise TypeError(f"{LISTS}, not {shown(variables)}.")
    return " ".join(map(_text_of_entry, variables))


def _text_of_entry(entry):
    if isinstance(entry, str):
        return quoted(text(entry, LISTS))
    number = whole_number(entry)
    if number is None:
        raise TypeError(f"{LISTS}; {shown(entry)} is neither.")
    return shown(number)


def text_of_lists(first, second):
    return f"{text_of_list(first)} | {text_of_list(second)}" if second else text_of_list(first)


def with_hint(error, lists, names):
    """A failure of lists that were given as texts with names of several words in them, and how these are given."""
    blank = next((name for each in lists if isinstance(each, str) for name in names
                  if " " in name.strip() and name in each and quoted(name) not in each), None)
    if blank is None:
        return error
    hint = f" Names with blanks stand in double quotes, or in a list: [{shown(blank)}]."
    return Error(error.code, error.text + hint, error.member)


def text_of_category(category):
    """As the analysis looks it up; a value that is missing in a frame stands for missing data."""
    if isinstance(category, str):
        return text(category, CATEGORY)
    try:
        if category is None or category != category:
            return "Missing"
        if isinstance(category, datetime.datetime) and category.time() == datetime.time() and category.tzinfo is None:
            return category.date().isoformat()
        return category.isoformat() if isinstance(category, (datetime.date, datetime.time)) else f"{float(category):.17g}"
    except Exception:
        raise TypeError(f"{CATEGORY}, not {shown(category)}.") from None


class DialogWindow(Object, kind="DialogWindow"):
    """The window of a startup dialog: `click(9103)`, `select(9053, "age")`, `text(9070, 5)`, `drag(9053, 0, 2)`."""

    __slots__ = ()


class Drill(Object, kind="DDNStartup"):
    """A drill-down analysis by its startup dialog, begun by `table.drill`. With `with` it closes at the end.

    down, up and categorize take steps; Frequencies, Histograms, ... make documents of what remains; each, crosstab, box,
    distribution and what_differs give frames of it; cases are the cases themselves. Every member has a second name in
    snake case. What fails raises Error, with `code` and `member`.
    """

    __slots__ = ("_analysis", "_table", "_groupings", "__weakref__")

    @classmethod
    def _of(cls, face):
        """The one of a dialog that has been opened already."""
        return next((drill for drill in _open if drill._face == face), None) or cls(face)

    @classmethod
    def _begin(cls, table, analysis):
        """Takes over an analysis of a table that has just been opened."""
        self = wrap(analysis.dialog())
        self._analysis = analysis
        self._table = table
        self._groupings = {}  # the variable of several categories that was drilled last, by the name of their own
        _open.add(self)
        return self

    def down(self, variable: str | int, category: str | float | datetime.date | datetime.time | None | Sequence[Any]) -> None:
        """Drills down: only the cases of this category of the variable remain.

        A category goes by its name, by the text behind its label, by its row ("#0"), by a value of it, a day or a time,
        or by "Missing", None or NaN for missing data. A list of categories of a categorical variable is one step, on a
        variable VAR_group that brings them together and joins those of the analysis; steps in force stay.

        Raises Error for a variable that is unknown, has a step or isn't explored, and for a category that no case has
        now, with those that there are; TypeError and ValueError for what can't be a category. Then nothing has changed.
        """
        number = self._number(variable, "down")
        if isinstance(category, (list, tuple)):
            number, name = self._grouped(number, list(category))
        else:
            name = text_of_category(category)
        self._make_current("DrillDownVariable", number, "down")
        self._work(self._analysis.down, number, name)

    def categorize(self, variable: str | int, method: str) -> None:
        """Sets how a continuous variable is cut into categories, in this step and later ones and in the results.

        method: "distinct", "exact:N", "neat:N", "step:SIZE", "step:SIZE@START", "integer" or "bounds:B1,B2,...", of dates
        also "day", "week", "month", "quarter" or "year", with times "hour": as `quillara drill --categorize` takes it.
        Bounds belong to the interval below them. Sizes and bounds are in the units of the variable, of dates days, of
        times seconds; bounds may be dates. Raises Error for a method that there isn't, and for a variable that isn't a
        continuous drill variable.
        """
        text(method, METHOD)
        number = self._number(variable, "categorize")
        self._make_current("DrillDownVariable", number, "categorize")
        self.DrillDownVariable = number  # the row of a variable that is current by its name isn't selected
        self._work(self._analysis.categorize, number, method)

    def _work(self, called, *arguments):
        try:
            given = called(*arguments)
        except Error as error:
            warn_of_messages(error.text, level=4)
            raise
        warn_of_messages(level=4)
        return given

    def _grouped(self, number, categories):
        """Number and category of the variable that brings several categories of another together."""
        if not categories:
            raise ValueError("A list of categories has one at least.")
        if len(categories) == 1:
            return number, text_of_category(categories[0])
        variable = self._names[number - 1]
        grouped, together = self._work(self._analysis.group, number, [text_of_category(each) for each in categories])
        self._groupings[variable] = self._names[grouped - 1]
        return grouped, together

    def up(self, variable: str | int) -> None:
        """Undoes the step on this variable, or on several of its categories, in any order of steps.

        Raises Error where there is no step on it.
        """
        number = self._number(variable, "up")
        name = self._names[number - 1]
        steps = self._steps()
        if name not in steps and self._groupings.get(name) in steps:
            number = self._number(self._groupings[name], "up")
        self.DrillUpVariable = number  # where none is current, what it reads as is the first one all the same
        self._make_current("DrillUpVariable", number, "up")
        self.DrillUp()

    def each(self, variable: str | int, within: str | int | None = None) -> pandas.DataFrame:
        """Groups side by side: steps down into every category of the variable and up again; a row for each.

        Columns are the number of cases, their percent of those that remain now, of each continuous open or review
        variable N, sum, mean, deviation, median and quartiles, and of each categorical one the percents of its categories.
        With a second variable a row for each of its categories within each of the first. Categories that leave no case
        are passed over with a warning. N are cases; under a weight Weighted N, percents, means and quartiles take it as
        it is, fractions too. Means and quartiles of dates are dates, their deviations days. Raises Error for what is no
        drill variable or has a step already.
        """
        from . import _groups

        variables = [variable] if within is None else [variable, within]
        numbers = [self._number(each, "each") for each in variables]
        names = self._names
        return self._work(_groups.each, self._analysis, [names[number - 1] for number in numbers], self._kinds())

    def crosstab(self, rows: str | int, columns: str | int, of: str = "counts", margins: bool = False,
                 bounds: Mapping[str, Sequence[float]] | None = None, picture: str | os.PathLike[str] | None = None,
                 categorize: Mapping[str, str] | None = None) -> pandas.DataFrame:
        """A cross table of two variables over the cases that remain, under the weight of the table.

        of: "counts", percents of "rows", of "columns" or of the "total", or "expected" counts. margins: with totals.
        bounds: where a continuous variable is cut, by its name; categorize: how it is, as the method of that name takes
        it. attrs of the frame has cases, left_out, chi_square, degrees_of_freedom, p_value and cramers_v; p_value takes
        weights for numbers of cases, effective_p_value takes effective_cases of equal weight (Kish) in place of them,
        for weights that balance a sample. picture: a file (.svg, .png, .pdf) for the table as a mosaic. Percents are
        from 0 to 100. Raises ValueError for another `of`, Error for a variable that is unknown.
        """
        from . import _groups

        if of not in _groups.MEASURES:
            raise ValueError(f"of is one of {', '.join(_groups.MEASURES)}, not {shown(of)}.")
        sides = [self._cut(each, bounds, "crosstab", categorize) for each in (rows, columns)]
        if picture is not None:
            self._analysis.paint_cross(*sides, os.fspath(picture))
        return _groups.crosstab(self._analysis, *sides, of, margins)

    def box(self, variable: str | int, by: str | int, of: str = "median",
            bounds: Mapping[str, Sequence[float]] | None = None, picture: str | os.PathLike[str] | None = None,
            categorize: Mapping[str, str] | None = None) -> pandas.DataFrame:
        """What box plots of a variable by the categories of another show, over the cases that remain, under the weight
        of the table: a row for each category.

        of: "median" with quartiles, "se", "sd" or "1.96se" around the mean. bounds: where a continuous variable of
        categories is cut, by its name; categorize: how it is, as the method of that name takes it. picture: a file
        (.svg, .png, .pdf) for the box plots. Raises Error for texts, of which there are none.
        """
        from . import _groups

        place = self._number(variable, "box") - 1
        return _groups.box(self._analysis, place, self._cut(by, bounds, "box", categorize), of, os.fspath(picture or ""))

    def remark(self, code: str, text: str, advice: str = "") -> None:
        """Adds a remark to those that the program makes of the analysis: it is told as a warning and stands in reports.

        Recorded scripts call it for what only the recorded command could know.
        """
        self._check_open("remark")
        self._work(self._analysis.remark, code, text, advice)

    def _cut(self, variable, bounds, member, methods=None):
        """A side of a table as the extension takes it: its place, bounds, or else a method."""
        place = self._number(variable, member) - 1
        name = self._names[place]
        return place, sorted(map(float, (bounds or {}).get(name, []))), text((methods or {}).get(name, ""), METHOD)

    def distribution(self, variable: str | int | None = None) -> pandas.DataFrame:
        """N, mean, deviation, minimum, quartiles, maximum, skewness and missing of the continuous open and review
        variables; or of one categorical variable the counts and percents, of the valid cases too.

        Percents are from 0 to 100, quartiles those of definition 7 of Hyndman and Fan, means and bounds of dates dates.
        Raises Error where no such variable is without a step.
        """
        from . import _groups

        place = None if variable is None else self._number(variable, "distribution") - 1
        frame = _groups.distribution(self._analysis, place, self._kinds())
        if frame is None:
            told = ("No continuous variable without a step is chosen" if place is None else
                    f'"{self._names[place]}" is no categorical variable that is chosen and has no step')
            raise Error(INVALID_ARGUMENT, f"{told}.", "distribution")
        return frame

    def what_differs(self) -> pandas.DataFrame:
        """The open and review variables by how much the cases that remain differ from the others that are selected.

        Distances are from 0, alike, to 1, nothing in common. Raises Error before the first step that drops cases.
        """
        from . import _groups

        frame = _groups.differences(self._analysis)
        if frame is None:
            raise Error(INVALID_ARGUMENT, "It takes a step that drops cases, and a variable without a step.", "what_differs")
        return frame

    def _kinds(self):
        return {variable.name: variable.kind for variable in self._table.variables}

    def _number(self, variable, member):
        """Members take the first name that begins so; a number says which is meant."""
        self._check_open(member)
        names = self._names
        number = whole_number(variable)
        if number is not None:
            if 0 < number <= len(names):
                return number
            raise Error(INVALID_ARGUMENT, f"The data have no variable {shown(number)}; they are numbered from 1 to "
                                          f"{len(names)}.", member)
        if text(variable, "A variable goes by its name or its number") not in names:
            raise Error(INVALID_ARGUMENT, f'The data have no variable "{variable}".', member)
        return names.index(variable) + 1

    @property
    def _names(self):
        """Of the variables of its table, to which groupings are added."""
        return self._analysis.names()

    def _check_open(self, member):
        """Fails once the dialog has closed."""
        try:
            self.Name
        except Error as error:
            raise Error(error.code, error.text, member) from None

    def _make_current(self, member, number, called):
        """One that is current already isn't written again: that would drop what the Categorization page shows; before
        another one is, that is stored."""
        name = self._names[number - 1]
        if self._current(member) != name:
            if member == "DrillDownVariable":
                self._analysis.store_page(called)
            setattr(self, member, number)
            if self._current(member) != name:
                why = TAKEN if called != "up" and name in self._steps() else WHY_NOT[called]
                raise Error(INVALID_ARGUMENT, why.format(name), called)

    def _steps(self):
        """The variables that steps were taken on."""
        rows = self._analysis.steps()
        return [name for name in self._names if any(row == name or row.startswith(f"{name} (") for row in rows)]

    def _current(self, member):
        try:
            return getattr(self, member)
        except Error:  # there is none
            return None

    @property
    def subset(self) -> Subset:
        """How much the steps in force leave: cases, weight (their sum, None without one), of how many cases before the
        first step, and these steps, the oldest first. Raises Error once the analysis is closed."""
        self.Name  # fails once the dialog has closed
        cases, weight, of, steps = self._analysis.subset()
        return Subset(cases, weight, of, [Step(*step) for step in steps])

    @property
    def cases(self) -> DataDocument:
        """The cases that remain, with the variables that were chosen: presses Save. Raises Error where none are chosen."""
        try:
            return self.Save
        except Error as error:
            raise Error(error.code, error.text, "cases") from None

    def to_frame(self) -> pandas.DataFrame:
        """All that its open documents hold as one tidy frame of pandas: a row for each number, with the number of steps
        before it and the cases that these leave, its document, result, variable, category and statistic; under a weight also
        how its document takes it. Values of dates are days since 1970-01-01, of times seconds."""
        from . import _frames

        documents = [each for each in self.analysis.Outputs if isinstance(each, Document)]
        return _frames.frame_of_documents(documents, self._analysis.sizes())

    @property
    def analysis(self) -> Analysis:
        """The analysis of the dialog."""
        return self.Parent

    @property
    def window(self) -> DialogWindow:
        """The window of the dialog, to work in as a person does, by the numbers of its controls.

        Dialogs that it opens ask the answers of the application.
        """
        return self.analysis.DialogWindow

    def close(self) -> None:
        """Closes the analysis. Documents that it made stay as they are; all else then fails with 0x800401FD."""
        self._analysis.close()

    def __repr__(self):
        try:
            chosen, steps = self.Variables, self._analysis.steps()
        except (Error, AttributeError):
            return "<quillara.Drill: closed>" if hasattr(self, "_analysis") else "<quillara.Drill>"
        down = f", down on {', '.join(reversed(steps))}" if steps else ""
        return f"<quillara.Drill: {chosen or 'no variables'}{down}; {self._table!r}>"

    def _repr_html_(self) -> str:
        """Its variables, and the steps in force with the cases that they leave, as a notebook shows them."""
        try:
            left, chosen, reviews = self.subset, self.Variables, self.ReviewVariables
        except (Error, AttributeError):
            return f"<p>{html.escape(repr(self))}</p>"
        weight = "" if left.weight is None else f", weight {left.weight:.10g}"
        rows = [("Variables", chosen), ("Review variables", reviews),
                *((f"Step {place}", f"{step.variable} = {step.category}") for place, step in enumerate(left.steps, 1))]
        lines = "".join(f"<tr><th>{head}</th><td>{html.escape(text)}</td></tr>" for head, text in rows if text)
        caption = html.escape(f"{self._table.name or 'Table'}, {left.cases} of {left.of} cases{weight}")
        return f"<table><caption>{caption}</caption>{lines}</table>"

    def __enter__(self) -> Drill:
        return self

    def __exit__(self, *_: Any) -> None:
        self.close()


def close_all():
    """Closes the analyses that are still open when the interpreter ends."""
    for drill in list(_open):
        drill.close()
