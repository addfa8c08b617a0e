"""Result documents: tables, graphs, saved data, and collections of them."""

from __future__ import annotations

import functools
import html

from . import _arguments, _quillara
from ._arguments import shown, whole_number
from ._errors import INVALID_ARGUMENT, Error
from ._objects import METHOD, Object, call, wrap


class Listener:
    """A connection of a callable to an event of a document."""

    __slots__ = ("_document", "_event", "_number")

    def __init__(self, document, event, number):
        self._document, self._event, self._number = document, event, number

    def off(self) -> None:
        """Ends the connection; again changes nothing."""
        _quillara.stop_listening(self._document._face, self._event, self._number)

    def __enter__(self) -> Listener:
        return self

    def __exit__(self, *_: Any) -> None:
        self.off()


def _tell(called, face, *choice):
    return called(wrap(face), *choice)


def _at(place, entries):
    if not isinstance(place, slice) and whole_number(place) is None and not isinstance(place, bool):
        raise TypeError(f"A document goes by its place from 0 or by its name, not by {shown(place)}.")
    try:
        return entries[place]
    except IndexError:
        raise IndexError(f"There is nothing at {shown(place)}; the places are 0 to {len(entries) - 1}." if entries else
                         "There is nothing here.") from None


def _name_of(entry):
    try:
        return entry.Name
    except Error:
        return "closed"


def _html(entry):
    for shown in ("_repr_html_", "_repr_svg_"):
        if hasattr(entry, shown):
            return getattr(entry, shown)()
    return f"<p>{html.escape(repr(entry))}</p>"


def _no_such(entries, name):
    """What there is in place of a name that nothing has."""
    names = [entry.variable or entry.Name for entry in entries if isinstance(entry, Document)]
    return KeyError(f"There is nothing called {shown(name)}; there is: {', '.join(map(shown, names))}." if names else name)


def _showing(entries, name):
    """The first document of this name, or that shows just this variable."""
    return next((entry for entry in entries if isinstance(entry, Document)
                 and (entry.Name == name or entry.variables == [name])), None)


class Document(Object):
    """A result document. It can be used like a collection that holds just it."""

    __slots__ = ()

    def on(self, event: str, called: Callable[..., Any]) -> Listener:
        """Has a callable called with the document at each event of that name.

        Closing: the document goes. Changed: a step has replaced its content. ClosingWithChoice: it goes if the choice,
        the second argument, is 1; a whole number that the callable gives is the new choice. What it raises is reported
        and changes nothing.
        """
        _arguments.text(event, 'An event is named by a text such as "Changed"')
        if not callable(called):
            raise TypeError(f"An event needs something that can be called, not {shown(called)}.")
        return Listener(self, event, _quillara.listen(self._face, event, functools.partial(_tell, called)))

    def __len__(self) -> int:
        return 1

    def __getitem__(self, place: int | str) -> Document:
        if not isinstance(place, str):
            return _at(place, (self,))
        if not _showing((self,), place):
            raise _no_such((self,), place)
        return self

    def __iter__(self) -> Iterator[Document]:
        return iter((self,))

    @property
    def variables(self) -> list[str]:
        """The names of the variables that it shows, in their order; none where they aren't known."""
        return _quillara.shown_variables(self._face)

    @property
    def variable(self) -> str | None:
        """The name of the only variable that it shows; None where it shows several or isn't known."""
        names = self.variables
        return names[0] if len(names) == 1 else None

    @property
    def result(self) -> str | None:
        """Its kind by the name that the program has for it, as "frequencies"; None where it isn't known."""
        return _quillara.result_name(self._face) or None

    def __repr__(self):
        return f"<quillara.{type(self).__name__}: {_name_of(self)}>"

    def __str__(self) -> str:
        return _quillara.text(self._face)


class Spreadsheet(Document, kind="Spreadsheet"):
    """A table of results."""

    __slots__ = ()

    def to_pandas(self) -> pandas.DataFrame:
        """The table as a frame of pandas: its rows by their names, whole columns as whole numbers."""
        from . import _frames

        return _frames.frame_of_spreadsheet(*_quillara.spreadsheet(self._face))

    def _repr_html_(self) -> str:
        return _quillara.html(self._face)

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        """The names of the rows and the columns for other libraries, as Arrow's protocol asks for them."""
        return _quillara.spreadsheet_stream(self._face)


class Graph(Document, kind="Graph"):
    """A graph of results."""

    __slots__ = ()

    @property
    def series(self) -> list[GraphSeries]:
        """The series with the numbers of the graph."""
        return [self.Series(place) for place in range(1, self.SeriesCount + 1)]

    def _repr_svg_(self) -> str:
        return _quillara.svg(self._face)


class GraphSeries(Object, kind="GraphSeries"):
    """A series of a graph."""

    __slots__ = ()

    def __repr__(self):
        return f"<quillara.GraphSeries: {self.Name}>"


class DataDocument(Object, kind="DataDocument"):
    """A data table that an analysis has saved."""

    __slots__ = ()

    def to_pandas(self, labels: bool | Sequence[str] = True) -> pandas.DataFrame:
        """The cases as a frame of pandas; as Table.to_pandas."""
        from . import _frames

        return _frames.frame_of_table(_quillara.saved_table(self._face), labels)

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        """The columns for other libraries, as Arrow's protocol asks for them."""
        return _quillara.table_stream(_quillara.saved_table(self._face))

    def __len__(self) -> int:
        return self.Cases

    def __repr__(self):
        try:
            return f"<quillara.DataDocument: {self.Name}, {self.Cases} cases, {self.Variables} variables>"
        except Error:
            return "<quillara.DataDocument: closed>"

    def _repr_html_(self) -> str:
        """Its name, the number of its cases and the names of its variables, as a notebook shows them."""
        names = "".join(f"<td>{html.escape(name)}</td>" for name in self.VariableNames)
        caption = html.escape(f"{self.Name}, {self.Cases} cases")
        return f"<table><caption>{caption}</caption><tr><th>Variables</th>{names}</tr></table>"


class Collection(Object, kind="DocumentCollection"):
    """Objects of the host by their places from 0, or by name; documents also by the one variable that they show."""

    __slots__ = ()

    def __len__(self) -> int:
        return self.Count

    def __getitem__(self, place: int | slice | str) -> Any:
        if isinstance(place, str):
            return _showing(self, place) or self._called(place)
        places = _at(place, range(1, len(self) + 1))
        return [self.Item(each) for each in places] if isinstance(place, slice) else self.Item(places)

    def _called(self, name):
        try:
            return self.Item(name)
        except (Error, ValueError):
            raise _no_such(self, name) from None

    def __iter__(self) -> Iterator[Any]:
        return (self.Item(place) for place in range(1, len(self) + 1))

    def __repr__(self):
        return f"<quillara.{type(self).__name__}: {list(self)}>"

    def __str__(self) -> str:
        return "\n".join(map(str, self))

    def _repr_html_(self) -> str:
        """Tables and pictures below each other; of other objects what they are called."""
        return "\n".join(map(_html, self))


class Window(Object, kind="OutputWindow"):
    """The window of a document."""

    __slots__ = ()


class Analysis(Object, kind="Analysis"):
    """An analysis."""

    __slots__ = ()


WINDOW_CALLS = {"click": 1, "select": 2, "double_click": 2, "text": 2, "drag": 3, "close": 0, "command": 1}
PICKS = {"pick": 2, "leave": 0}


def _check_answer(calls):
    """Refuses at once what the dialog would refuse once it is open."""
    if not isinstance(calls, (list, tuple)):
        return
    known = WINDOW_CALLS | PICKS
    for call in calls:
        name = call[0] if isinstance(call, (list, tuple)) and call else None
        if isinstance(name, str) and (name not in known or len(call) - 1 != known[name]):
            raise Error(INVALID_ARGUMENT, f"The window call {shown(call)} isn't known or has other arguments; there are: "
                                          f"{', '.join(f'{each} ({count})' for each, count in known.items())}.", "Answer")


class Application(Object, kind="Application"):
    """The application."""

    __slots__ = ()

    def Answer(self, calls: list[tuple]) -> None:
        """Answers the next dialog that opens by window calls: a list of tuples of a name and arguments."""
        _check_answer(calls)
        member = next(each for each in self._face.tell()[2] if each[0] == "Answer")
        call(self._face, member[1], METHOD, (calls,))

    answer = Answer
