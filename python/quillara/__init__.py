"""Drill-down analyses in Python.

    table = quillara.open("survey.sav")
    with table.drill("sex education", "age") as drill:
        drill.down("sex", "Female")
        print(drill.Frequencies[0].to_pandas())
"""

import atexit

from . import _quillara
from ._documents import Collection, DataDocument, Document, Graph, GraphSeries, Spreadsheet
from ._drill import Drill, close_all
from ._errors import Error, Message
from ._objects import Object, wrap
from ._table import Table, Variable, open, table

__all__ = [
    "Collection", "DataDocument", "Document", "Drill", "Error", "Graph", "GraphSeries", "Message", "Object",
    "Spreadsheet", "Table", "Variable", "application", "open", "table",
]


def application():
    """The application: its analyses, messages, and the answers to dialogs."""
    return wrap(_quillara.application())


atexit.register(close_all)
