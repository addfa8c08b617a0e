"""Objects of the host, whose members become those of Python classes when the first object of a kind is met."""

import re
import warnings

from . import _quillara
from ._errors import Error, Message

METHOD, READ, WRITE = 1, 2, 4

_classes = {}
_messages_known = 0


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
    for text in messages:
        if text not in failure:
            warnings.warn(text, Message, stacklevel=level)


def call(face, number, use, arguments=()):
    """Calls a member of a host's object, reads it or writes it."""
    try:
        value = face.invoke(number, use, *map(_unwrapped, arguments))
    except Error as error:
        warn_of_messages(error.text)
        raise
    warn_of_messages()
    return wrap(value)


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


def _method(name, number, text):
    def method(self, *arguments):
        return call(self._face, number, METHOD, arguments)

    method.__name__ = method.__qualname__ = name
    method.__doc__ = text + "."
    return method


def _indexed(name, number, text):
    def read(self, *arguments):
        return call(self._face, number, READ, arguments)

    read.__name__ = read.__qualname__ = name
    read.__doc__ = text + "."
    return read


def _property(number, uses, text):
    def read(self):
        return call(self._face, number, READ)

    def write(self, value):
        call(self._face, number, WRITE, (value,))

    return property(read if READ in uses else None, write if WRITE in uses else None, doc=text + ".")


def _attribute(name, number, uses, text):
    if METHOD in uses:
        return _method(name, number, text)
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
        for name, number, use, arguments, _, text in members:
            uses.setdefault((name, number), {})[use] = arguments
            texts[name] = text or name
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
