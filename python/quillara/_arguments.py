"""What calls take. What they don't is told in Python's own exceptions before the host sees it: TypeError of a value of a
wrong kind, ValueError or OverflowError of one that is of the right kind and can't be used."""

LONGEST_SHOWN = 60


def shown(value):
    """A value in a message: short, and whatever it is."""
    try:
        text = repr(value)
    except Exception:
        text = f"an object of the class {type(value).__name__}"
    return text if len(text) <= LONGEST_SHOWN else text[:LONGEST_SHOWN - 4] + " ..."


def text(value, wanted):
    """A text that the host can take. `wanted` begins the message: what the argument is."""
    if not isinstance(value, str):
        raise TypeError(f"{wanted}, not {shown(value)}.")
    why = flaw_of(value)
    if why:
        raise ValueError(f"{wanted}; {shown(value)} {why}.")
    return value


def flaw_of(value):
    """Why a text can't be used; empty when it can."""
    try:
        value.encode()
    except UnicodeEncodeError:
        return "has half of a character (a lone surrogate)"
    return "has a null character" if "\0" in value else ""


def text_of(value, wanted):
    """What an object that stands as a name or a label reads as."""
    try:
        read = str(value)
    except Exception:
        raise TypeError(f"{wanted}, not {shown(value)}.") from None
    return text(read, wanted)


def whole_number(value):
    """A whole number of any type; nothing of what is none, of True and of False."""
    if isinstance(value, bool) or not hasattr(type(value), "__index__"):
        return None
    try:
        return value.__index__()
    except Exception:
        return None


def character(value, name):
    if not isinstance(value, str):
        raise TypeError(f"{name} is one character, not {shown(value)}.")
    if len(value) != 1 or not value.isascii():
        raise ValueError(f"{name} is one ASCII character, not {shown(value)}.")
    return value


def texts(values, wanted):
    """A list of texts, and no text itself, which is a list of its letters."""
    if isinstance(values, (str, bytes)) or not hasattr(values, "__iter__"):
        raise TypeError(f"{wanted}, not {shown(values)}.")
    return [text(value, wanted) for value in values]


def refuse(value):
    """Raises what is wrong with a value that a member was to take."""
    if isinstance(value, str):
        raise ValueError(f"This text can't be given to a member: {shown(value)} {flaw_of(value) or 'is too long'}.")
    if whole_number(value) is not None:
        raise OverflowError(f"This number is too large: {shown(value)}.")
    raise TypeError(f"This value can't be given to a member: {shown(value)}; members take numbers, texts, lists of them, "
                    "objects of this package and None.")
