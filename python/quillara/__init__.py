"""Drill-down analyses in Python.

    table = quillara.open("survey.sav")
    with table.drill("sex education", "age") as drill:
        drill.down("sex", "Female")
        print(drill.Frequencies[0].to_pandas())
"""

import atexit

from . import _quillara
from ._documents import (
    Analysis, Application, Collection, DataDocument, Document, Graph, GraphSeries, Listener, Spreadsheet, Window,
)
from ._drill import DialogWindow, Drill, close_all
from ._errors import Error, Message, Remark, WrongType, WrongValue
from ._objects import Object, snake_case, wrap
from ._subset import Step, Subset
from ._table import Table, Variable, open, table

__all__ = [
    "Analysis", "Application", "Collection", "DataDocument", "DialogWindow", "Document", "Drill", "Error", "Graph",
    "GraphSeries", "Listener", "Message", "Object", "Remark", "Spreadsheet", "Step", "Subset", "Table", "Variable", "Window",
    "WrongType", "WrongValue", "application", "open", "snake_case", "table",
]


def application() -> Application:
    """The application: its analyses, messages, and the answers to dialogs."""
    return wrap(_quillara.application())


def __dir__() -> list[str]:
    return __all__


atexit.register(close_all)
