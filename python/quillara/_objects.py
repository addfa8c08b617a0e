"""Objects of the host, whose members become those of Python classes when the first object of a kind is met."""

import inspect
import re
import warnings

from . import _quillara
from ._arguments import shown
from ._errors import Error, Message, Remark

METHOD, READ, WRITE = 1, 2, 4

# Failures of calls whose arguments are to blame, and what members of a type take.
FAILED, TYPE_MISMATCH, OUT_OF_RANGE, BAD_INDEX, BAD_COUNT = 0x80004005, 0x80020005, 0x8002000A, 0x8002000B, 0x8002000E
TAKEN = {3: "a whole number", 22: "a whole number", 5: "a number", 8: "a text", 11: "True or False"}

# Why members fail that tell no more than that they do, by their uses.
NO_CATEGORY = "No category is chosen: DrillDownCategory chooses one of the variable that is drilled next."
WHY = {
    ("DrillDownVariable", READ): "There is no variable to drill down on; Variables chooses some.",
    ("DrillDownVariable", WRITE): "It takes a number from 1 to 32767, or the beginning of the name of a variable that can be "
                                  "drilled down on now, not {}.",
    ("DrillUpVariable", READ): "There is no step to undo.",
    ("DrillUpVariable", WRITE): "It takes a number from 1 to 32767, or the beginning of the name of a variable that a step was "
                                "taken on, not {}.",
    ("DrillDownCategory", READ): NO_CATEGORY,
    ("DrillDownCategory", WRITE): "The variable that is drilled next has no category {}; a category goes by its name or by the "
                                  "number of its row, and drill.down finds values too.",
    ("CategorySelections", READ): NO_CATEGORY,
    ("UserDefinedBoundaries", READ): "There are no boundaries to read for the variable that is drilled next: only user-specified categories "
                                     "have some, and those that were written can be read once a step or a result has used them.",
    ("UserDefinedBoundaries", WRITE): "It takes numbers with blanks between, such as '18 25.5', at most 100, not {}.",
}

# Why a control is disabled, and what to do when a dialog has asked in vain; behind the host's own text.
NEEDS_OPEN = "it needs a drill variable without a step; Variables chooses some, drill.up undoes a step"
NEEDS_REVIEW = "there are no variables for review; ReviewVariables chooses some"
NEEDS_REVIEW_NUMBERS = 'it needs {} for review; ReviewVariables = "sex | age income" chooses sex as categorical, the others as continuous'
REASONS = {
    "Summary": "no step is in force; drill.down takes one",
    "Save": "there are no drill variables; Variables chooses some",
    **dict.fromkeys(("Frequencies", "Histograms", "PieCharts", "StackedPlots"), NEEDS_OPEN),
    "Descriptives": 'it needs a continuous drill variable without a step; Variables = "sex | age" chooses age as one, '
                    "drill.up undoes a step",
    **dict.fromkeys(("ReviewDescriptives", "ReviewBoxWhisker"), NEEDS_REVIEW_NUMBERS.format("a continuous variable")),
    "ReviewScatterplot": NEEDS_REVIEW_NUMBERS.format("two continuous variables"),
    "ValueNoOfExactIntervals": "set NoOfExactIntervals = 1 first, of a continuous variable",
    "ValueNeatIntervalsAppNo": "set NeatIntervalsAppNo = 1 first, of a continuous variable",
    "ValueStepSize": "set StepSize = 1 first, of a continuous variable",
    "ValueStartingFrom": "set StepSize = 1 first, of a continuous variable, and StartingAtMinimum = 0",
    "StartingAtMinimum": "set StepSize = 1 first, of a continuous variable",
    **dict.fromkeys(("NoOfExactIntervals", "NeatIntervalsAppNo", "StepSize", "IntegerCategories", "UserSpecifiedCategories",
                     "AllDistinctValues"), "only continuous drill variables are categorized"),
}
NOTHING_MADE = "Nothing was made"
DISABLED, DISABLED_TEXT = 0x80070005, "This control is disabled now."
UNANSWERED, HOW_TO_ANSWER = "has opened and had no answer.", (
    'Give the answer before the call: drill.Application.Answer([("click", 1)]) presses its OK.')

# What the arguments of calls are.
ARGUMENTS = {"Save": ("path",), "Click": ("control",), "Select": ("control", "row"), "DoubleClick": ("control", "row"),
             "Text": ("control", "text"), "Drag": ("control", "row", "before"), "Command": ("control",), "Answer": ("calls",)}

# What help tells beside the host's own text of a member.
MAKES = "Presses its button and gives the document that it makes, or a collection of several."
CHECKED = "1 or 0."
METHOD_CHOSEN = "1 chooses it for the variable that is drilled next."
LISTS = 'A text such as "sex education | age": categorical ones, a bar, continuous ones; names with blanks in double quotes.'
IN_UNITS = "In the units of the variable: days of dates, seconds of times."
HELP = {
    **dict.fromkeys(("Summary", "Frequencies", "Descriptives", "Histograms", "PieCharts", "StackedPlots", "ReviewFrequencies",
                     "ReviewDescriptives", "ReviewHistograms", "ReviewPieCharts", "ReviewStackedPlots", "ReviewBoxWhisker",
                     "ReviewScatterplot", "Review3DHistograms"), MAKES),
    "Save": "Gives them as a DataDocument.",
    **dict.fromkeys(("Variables", "ReviewVariables"), LISTS),
    "DrillDownVariable": "A number from 1, or the beginning of a name; drill.down takes exact ones.",
    "DrillUpVariable": "A number from 1, or the beginning of a name; drill.up takes exact ones.",
    "DrillDownCategory": "A name, or a number from 0 that counts categories without cases too; drill.down takes more.",
    "UserDefinedBoundaries": "At most 100 numbers with blanks between, each the upper end of an interval. " + IN_UNITS,
    **dict.fromkeys(("ValueStepSize", "ValueStartingFrom"), IN_UNITS),
    "CountMD": "1: missing data is a category of its own; 0: it isn't.",
    "WeightedMoments": "1: fractions of weights are taken as they are; 0: weights are rounded to whole numbers.",
    **dict.fromkeys(("CasewiseDeletionOfMD", "RVCasewiseDeletionOfMD", "StandAloneResults", "StartingAtMinimum",
                     "PlotMedianQuartileRange", "PlotMeanSEAndSD", "PlotMeanSD196TimesSD", "PlotMeanSE196TimesSE"), CHECKED),
    **dict.fromkeys(("AllDistinctValues", "NoOfExactIntervals", "NeatIntervalsAppNo", "StepSize", "IntegerCategories",
                     "UserSpecifiedCategories"), METHOD_CHOSEN),
}

_classes = {}
_messages_known = 0
_told_early = set()


def snake_case(name: str) -> str:
    """The second name of a member: drill_down_category of DrillDownCategory."""
    return re.sub(r"(?<=[a-z])(?=[A-Z0-9])|(?<=[A-Z0-9])(?=[A-Z][a-z])", "_", name).lower()


def warn_of_messages(failure="", level=4):
    """Tells what the host has said since the last time, but for what the text of a failure says already.

    level: how many calls above this one the script stands.
    """
    global _messages_known
    if _quillara.messages_so_far() == _messages_known:
        return
    messages = _quillara.messages_behind(_messages_known)
    _messages_known = _quillara.messages_so_far()
    for text, code in messages:
        if text not in failure and text not in _told_early:
            warnings.warn(Remark(text, code) if code else Message(_with_advice(text)), stacklevel=level)


def warn_of_formula(notices):
    """Tells at once what is noticed of a formula; the analyses that it applies to don't tell it again."""
    for text, code in notices:
        _told_early.add(text)
        warnings.warn(Remark(text, code), stacklevel=3)


def _with_advice(text):
    return f"{text} {HOW_TO_ANSWER}" if text.endswith(UNANSWERED) else text


def _why_disabled(member):
    reason = REASONS.get(member) or (NEEDS_REVIEW if member.startswith("Review") else "")
    return f"{DISABLED_TEXT} Why: {reason}." if reason else ""


def _help(member, text, is_dialog):
    """The host's text of a member and, of the startup dialog, what it takes or gives and where it fails."""
    more = [HELP.get(member, ""), f"Where it fails with 0x80070005: {REASONS[member]}." if member in REASONS else ""]
    return " ".join([f"{text}.", *filter(None, more if is_dialog else [])])


def call(face, number, use, arguments=()):
    """Calls a member of a host's object, reads it or writes it."""
    try:
        value = face.invoke(number, use, *map(_unwrapped, arguments))
    except Error as error:
        warn_of_messages(error.text)
        if told := _told_of(error, face, number, use, arguments):
            raise Error(error.code, told, error.member) from None
        raise
    warn_of_messages()
    return wrap(value)


def _told_of(error, face, number, use, arguments):
    """What to tell in place of a message that only says what the code is; nothing where there is no more to say."""
    given = ", ".join(map(shown, arguments))
    standard = error.text.rstrip(".")
    if error.text.endswith(UNANSWERED):
        return _with_advice(error.text)
    if error.code == DISABLED and error.text == DISABLED_TEXT:
        return _why_disabled(error.member)
    if error.code == FAILED and error.text.startswith(NOTHING_MADE) and error.member in REASONS:
        return f"{NOTHING_MADE}: {REASONS[error.member]}."
    if error.code == FAILED and standard == "Unspecified error":
        return WHY.get((error.member, use), "").format(given)
    if error.code == TYPE_MISMATCH and use == WRITE:
        taken = TAKEN.get(_told(face, number, use)[4], "numbers, texts and lists of them")
        return f"{standard}: it takes {taken}, not {given}."
    if error.code == BAD_COUNT:
        return f"{standard}: {len(arguments)} instead of {_told(face, number, use)[3]}."
    if error.code == BAD_INDEX:
        return f"{standard}: there is nothing at {given}; places begin at 1."
    return f"{standard}: {given}." if error.code in (TYPE_MISMATCH, OUT_OF_RANGE) else ""


def _told(face, number, use):
    return next(member for member in face.tell()[2] if member[1:3] == (number, use))


def _unwrapped(value):
    if isinstance(value, Object):
        return value._face
    return [_unwrapped(item) for item in value] if isinstance(value, (list, tuple)) else value


def wrap(value):
    """What a member gave, its objects as those of this package."""
    if isinstance(value, _quillara.Object):
        return _class_of(value)._of(value)
    return [wrap(item) for item in value] if isinstance(value, list) else value


def _class_of(face):
    name, text, members = face.tell()
    own = _classes.get(name)
    if own is None:
        own = type(Object)(name, (Object,), {"__slots__": (), "__doc__": text + "."}, kind=name)
    if not own._is_known:
        own._learn(members)
    return own


def _signature(name, count):
    """As help shows it: arguments go by place."""
    names = ARGUMENTS.get(name, ()) or [f"argument_{place}" for place in range(1, (count or 0) + 1)]
    return inspect.Signature([inspect.Parameter(each, inspect.Parameter.POSITIONAL_ONLY) for each in ("self", *names)])


def _method(name, number, text, count):
    def method(self, *arguments):
        return call(self._face, number, METHOD, arguments)

    method.__name__ = method.__qualname__ = name
    method.__signature__ = _signature(name, count)
    method.__doc__ = text
    return method


def _indexed(name, number, text):
    def read(self, *arguments):
        return call(self._face, number, READ, arguments)

    read.__name__ = read.__qualname__ = name
    read.__doc__ = text
    return read


def _property(number, uses, text):
    def read(self):
        return call(self._face, number, READ)

    def write(self, value):
        call(self._face, number, WRITE, (value,))

    return property(read if READ in uses else None, write if WRITE in uses else None, doc=text)


def _attribute(name, number, uses, text):
    if METHOD in uses:
        return _method(name, number, text, uses[METHOD])
    return _indexed(name, number, text) if uses.get(READ) else _property(number, uses, text)


class Object:
    """An object of the host. Its members have their own names and those in snake case."""

    __slots__ = ("_face",)
    _is_known = False

    def __init_subclass__(cls, kind=None, **others):
        super().__init_subclass__(**others)
        cls._is_known = False
        if kind is not None:
            _classes[kind] = cls

    def __init__(self, face):
        self._face = face

    @classmethod
    def _of(cls, face):
        return cls(face)

    @classmethod
    def _learn(cls, members):
        """Gives the class the members that its objects tell of, where it has none of that name already."""
        uses, texts = {}, {}
        own = {name for name, *_ in members}
        for name, number, use, arguments, _, text in members:
            uses.setdefault((name, number), {})[use] = arguments
            texts[name] = _help(name, text or name, "DrillDown" in own)
        for (name, number), told in uses.items():
            attribute = _attribute(name, number, told, texts[name])
            for spelled in (name, snake_case(name)):
                if spelled not in cls.__dict__:
                    setattr(cls, spelled, attribute)
        cls._is_known = True

    def __eq__(self, other):
        return self._face == other._face if isinstance(other, Object) else NotImplemented

    def __hash__(self):
        return hash(self._face)

    def __repr__(self):
        return f"<quillara.{type(self).__name__}>"
