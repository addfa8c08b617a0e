"""Every use of every member of the startup dialog, in the states in which a script may find it, as a table of texts."""

import quillara
from quillara._objects import METHOD, READ, WRITE

USES = {METHOD: "call", READ: "read", WRITE: "write"}

CODES = {0x800401FD: "closed", 0x80070005: "disabled", 0x80004005: "failed", 0x80070057: "invalid",
         0x80020005: "mismatch", 0x8002000E: "count", 0x80004001: "absent", 0x8001010A: "busy",
         0x80020009: "exception", 0x80020003: "not found"}

# What is written where a member takes just any value of its type.
NUMBERS = {"ValueNoOfExactIntervals": 5, "ValueNeatIntervalsAppNo": 5, "ValueStepSize": 2.5, "ValueStartingFrom": 1.5}
TEXTS = {"Variables": "school | age", "ReviewVariables": "sex | age", "DrillDownVariable": "school",
         "DrillUpVariable": "sex", "DrillDownCategory": "mid", "UserDefinedBoundaries": "30 50"}

TABLE = quillara.table({
    "sex": ["f", "m", "m", "f", "m", None], "school": ["low", "mid", "mid", "mid", "high", "low"],
    "age": [20.0, 30, 40, 50, 60, None], "fee": [1.5, 2.5, 0.5, None, 1.0, 2.0]})


def bare():
    return quillara._drill.Drill._begin(TABLE, quillara._quillara.Analysis(TABLE._held, "", None))


def ready():
    drill = bare()
    drill.Variables = "sex school | age fee"
    drill.DrillDownVariable = "age"
    return drill


def drilled():
    drill = ready()
    drill.ReviewVariables = "school | age fee"
    drill.down("sex", "m")
    drill.DrillDownVariable = "school"
    drill.DrillDownCategory = "mid"
    drill.DrillUpVariable = 1
    return drill


def asking():
    """Dialogs and messages are left to a person, who isn't there."""
    drill = drilled()
    drill.analysis.AutomationInteractive = 1
    return drill


def taken_over():
    """The last one to act did so in the window."""
    drill = drilled()
    drill.window.select(9053, "fee")
    drill.window.click(9069)
    return drill


def closed():
    drill = drilled()
    drill.Cancel()
    return drill


def pressed():
    """Something is done from inside a press."""
    drill = drilled()
    drill.StandAloneResults = 1
    return drill


def within_a_press(drill, act):
    graph, found = drill.PieCharts[0], []
    graph.on("Changed", lambda document: found.append(act()))
    drill.PieCharts
    return found[0]


STATES = [bare, ready, drilled, asking, taken_over, pressed, closed]


def right_values(name, use):
    return (NUMBERS.get(name, TEXTS.get(name, 1)),) if use == WRITE else ()


def outcome_in(state, number, use, *arguments):
    """What a use of a member comes to in a state: what it gives, or how it fails."""
    drill = state()

    def act():
        try:
            return quillara._objects.call(drill._face, number, use, [a() if callable(a) else a for a in arguments])
        except quillara.Error as error:
            return error

    value = within_a_press(drill, act) if state is pressed else act()
    drill.close()
    if isinstance(value, quillara.Error):
        return CODES.get(value.code, hex(value.code))
    if isinstance(value, quillara.Collection):
        return f"{len(value)} {type(value[0]).__name__}s"
    return "ok" if value is None else type(value).__name__ if isinstance(value, quillara.Object) else repr(value)


def uses_of_members():
    told = bare()._face.tell()[2]
    return [(name, number, use) for name, number, use, *_ in told]


def told_outcomes(path):
    """{member and use: {column: outcome}} of a table as text; = stands for the outcome before."""
    table = {}
    with open(path, encoding="utf-8") as lines:
        rows = [[cell.strip() for cell in line.split(";")] for line in lines if not line.startswith("#")]
    for name, *cells in rows[1:]:
        for place, cell in enumerate(cells):
            cells[place] = cells[place - 1] if cell == "=" else cell
        table[name] = dict(zip(rows[0][1:], cells))
    return table
