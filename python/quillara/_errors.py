"""How calls fail, and what is told beside their results."""

from __future__ import annotations


class Error(Exception):
    """A call of the host has failed.

    code: the status, as 0x80004005; text: what failed; member: the name of the member or function that was called.
    """

    code: int
    text: str
    member: str

    def __init__(self, code: int, text: str, member: str = "") -> None:
        super().__init__(code, text, member)
        self.code = code
        self.text = text
        self.member = member

    def __str__(self):
        name = f"{self.member}: " if self.member else ""
        return f"{name}{self.text} (0x{self.code:08X})"


class WrongType(Error, TypeError):
    """Data of a kind that a table has no room for."""


class WrongValue(Error, ValueError):
    """Data that a table can't hold."""


class Message(UserWarning):
    """A message that the analysis would have shown to a person."""


class Remark(Message):
    """What the host has noticed about an analysis, and what to do about it.

    code: the same in every version, as "weight-fractions".
    """

    code: str

    def __init__(self, text: str, code: str = "") -> None:
        super().__init__(text)
        self.code = code


INVALID_ARGUMENT = 0x80070057
