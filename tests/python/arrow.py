"""Arrow's C data interface in plain Python: a producer that counts what is released, and a consumer."""

import ctypes
import struct

POINTER, INT64, TEXT = ctypes.c_void_p, ctypes.c_int64, ctypes.c_char_p
STREAM = b"arrow_array_stream"


class Schema(ctypes.Structure):
    pass


class Array(ctypes.Structure):
    pass


class Stream(ctypes.Structure):
    pass


def released_by(kind):
    return ctypes.CFUNCTYPE(None, ctypes.POINTER(kind))


SCHEMA_END, ARRAY_END, STREAM_END = released_by(Schema), released_by(Array), released_by(Stream)
GET_SCHEMA = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(Stream), ctypes.POINTER(Schema))
GET_NEXT = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(Stream), ctypes.POINTER(Array))
GET_ERROR = ctypes.CFUNCTYPE(TEXT, ctypes.POINTER(Stream))

Schema._fields_ = [("format", TEXT), ("name", TEXT), ("metadata", TEXT), ("flags", INT64), ("n_children", INT64),
                   ("children", ctypes.POINTER(ctypes.POINTER(Schema))), ("dictionary", ctypes.POINTER(Schema)),
                   ("release", SCHEMA_END), ("private", POINTER)]
Array._fields_ = [("length", INT64), ("null_count", INT64), ("offset", INT64), ("n_buffers", INT64),
                  ("n_children", INT64), ("buffers", ctypes.POINTER(POINTER)),
                  ("children", ctypes.POINTER(ctypes.POINTER(Array))), ("dictionary", ctypes.POINTER(Array)),
                  ("release", ARRAY_END), ("private", POINTER)]
Stream._fields_ = [("get_schema", GET_SCHEMA), ("get_next", GET_NEXT), ("get_error", GET_ERROR),
                   ("release", STREAM_END), ("private", POINTER)]

api = ctypes.pythonapi
api.PyCapsule_New.restype = ctypes.py_object
api.PyCapsule_New.argtypes = [POINTER, TEXT, POINTER]
api.PyCapsule_GetPointer.restype = POINTER
api.PyCapsule_GetPointer.argtypes = [ctypes.py_object, TEXT]


class Column:
    """A column as its buffers are: each bytes, or None."""

    def __init__(self, format, buffers, length, gaps=0, offset=0, dictionary=None, children=(), name="x"):
        self.format, self.buffers, self.length, self.gaps, self.offset = format, buffers, length, gaps, offset
        self.dictionary, self.children, self.name = dictionary, children, name


def numbers(format, code, values, **others):
    """A column of numbers; None where one is missing."""
    bits = sum((value is not None) << place for place, value in enumerate(values)).to_bytes(len(values) // 8 + 1, "little")
    packed = struct.pack(f"<{len(values)}{code}", *(0 if value is None else value for value in values))
    length = len(values) - others.get("offset", 0)
    return Column(format, [bits, packed], length, values.count(None), **others)


def texts(values, format="u", code="i", **others):
    ends = [0]
    for value in values:
        ends.append(ends[-1] + len((value or "").encode()))
    column = numbers(format, "b", [None if value is None else 0 for value in values], **others)
    column.buffers[1:] = [struct.pack(f"<{len(ends)}{code}", *ends), "".join(value or "" for value in values).encode()]
    return column


class Producer:
    """Gives chunks, each a list of columns. `open` counts the structs that nobody has released."""

    def __init__(self, *chunks, failure=None, wrong=None):
        self.chunks, self.failure = list(chunks), failure
        self.table = wrong or self._table(self.chunks[0])
        self.open = 0
        self.kept = []

    @staticmethod
    def _table(columns):
        return Column("+s", [None], columns[0].length if columns else 0, children=columns)

    def _end(self, kind, end):
        def release(place):
            self.open -= 1
            assert place.contents.release, "released twice"
            place.contents.release = end()

        self.open += 1
        made = end(release)
        self.kept.append(made)
        return made

    def _schema(self, column):
        made = Schema(column.format.encode(), column.name.encode(), None, 2, len(column.children))
        return self._tree(made, column, self._schema, Schema)

    def _array(self, column):
        room = [ctypes.create_string_buffer(buffer, len(buffer)) if buffer is not None else None
                for buffer in column.buffers]
        places = (POINTER * len(room))(*(None if buffer is None else ctypes.addressof(buffer) for buffer in room))
        self.kept += [room, places]
        made = Array(column.length, column.gaps, column.offset, len(room), len(column.children))
        made.buffers = ctypes.cast(places, ctypes.POINTER(POINTER))
        return self._tree(made, column, self._array, Array)

    def _tree(self, made, column, make, kind):
        children = [ctypes.pointer(make(child)) for child in column.children]
        for child in children:
            child.contents.release = type(child.contents.release)()  # it goes with its parent
        made.children = (ctypes.POINTER(kind) * len(children))(*children)
        if column.dictionary:
            made.dictionary = ctypes.pointer(make(column.dictionary))
        self.kept += [made, children]
        return made

    def __arrow_c_stream__(self, requested_schema=None):
        rest = list(self.chunks)

        def get_schema(_, place):
            place[0] = self._schema(self.table)
            place[0].release = self._end(Schema, SCHEMA_END)
            return 0

        def get_next(_, place):
            if not rest and self.failure:
                return 5
            place[0] = self._array(self._table(rest.pop(0))) if rest else Array()
            if place[0].buffers:
                place[0].release = self._end(Array, ARRAY_END)
            return 0

        failure = ctypes.create_string_buffer(self.failure or b"")
        tell = ctypes.CFUNCTYPE(POINTER, ctypes.POINTER(Stream))(lambda _: ctypes.addressof(failure))
        self.kept.append(tell)
        stream = Stream(GET_SCHEMA(get_schema), GET_NEXT(get_next), ctypes.cast(tell, GET_ERROR),
                        self._end(Stream, STREAM_END))
        self.kept.append(stream)
        return api.PyCapsule_New(ctypes.addressof(stream), STREAM, None)


CODES = {b"g": "d", b"l": "q", b"i": "i", b"tdD": "i", b"tsu:": "q", b"ttu": "q", b"tDu": "q"}


def _values(schema, array):
    buffers = [array.buffers[place] for place in range(array.n_buffers)]
    if schema.format == b"u":
        ends = struct.unpack(f"<{array.length + 1}i", ctypes.string_at(buffers[1], 4 * array.length + 4))
        plain = [ctypes.string_at(buffers[2] + begin, end - begin).decode() for begin, end in zip(ends, ends[1:])]
    else:
        code = CODES[schema.format]
        plain = struct.unpack(f"<{array.length}{code}", ctypes.string_at(buffers[1], struct.calcsize(code) * array.length))
    if schema.dictionary:
        entries = _values(schema.dictionary.contents, array.dictionary.contents)
        plain = [entries[place] if 0 <= place < len(entries) else None for place in plain]
    bits = int.from_bytes(ctypes.string_at(buffers[0], (array.length + 7) // 8), "little") if buffers[0] else -1
    values = [value if bits >> place & 1 else None for place, value in enumerate(plain)]
    assert array.null_count == values.count(None)
    return values


class Consumer:
    """Takes a stream with its one chunk; `columns` are (name, format, values) by its place."""

    def __init__(self, source):
        self.capsule = source.__arrow_c_stream__()
        self.stream = Stream.from_address(api.PyCapsule_GetPointer(self.capsule, STREAM))
        self.schema, self.array = Schema(), Array()
        assert self.stream.get_schema(self.stream, self.schema) == 0
        assert self.stream.get_next(self.stream, self.array) == 0
        assert self.schema.format == b"+s" and self.array.n_children == self.schema.n_children
        children = [(self.schema.children[place].contents, self.array.children[place].contents)
                    for place in range(self.schema.n_children)]
        self.columns = [(schema.name.decode(), schema.format.decode(), _values(schema, array))
                        for schema, array in children]
        self.entries = {schema.name.decode(): _values(schema.dictionary.contents, array.dictionary.contents)
                        for schema, array in children if schema.dictionary}

    def release(self):
        for held in (self.schema, self.array, self.stream):
            held.release(held)
            assert not held.release
