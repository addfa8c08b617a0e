"""The compiled type library, where the build has made it, read back: its members are those that the module tells of."""

import pathlib
import struct

import member_table
import pytest
from conftest import PROGRAM

LIBRARY = pathlib.Path(PROGRAM).parents[1] / "lib" / "QLADrillDown.tlb"

TYPES, GUIDS, NAMES, STRINGS, DESCRIPTIONS = 0, 5, 7, 8, 9  # segments
POINTER, RESULT, STATUS, NOTHING = 26, 0x0A, 25, 24
SAME = {22: 3}  # the compiler's int is the module's integer of 32 bits


class TypeLibrary:
    """As much of the format as the interfaces here need."""

    def __init__(self, data):
        self.data = data
        count = self.number(0x20)
        directory = 0x54 + 4 * count
        self.segments = [self.number(directory + 16 * place) for place in range(15)]
        self.types = [self.segments[TYPES] + self.number(0x54 + 4 * place) for place in range(count)]

    def number(self, at, form="<i"):
        return struct.unpack_from(form, self.data, at)[0]

    def name(self, offset):
        at = self.segments[NAMES] + offset
        return self.data[at + 12:at + 12 + self.data[at + 8]].decode("ascii")

    def string(self, offset):
        if offset < 0:
            return ""
        at = self.segments[STRINGS] + offset
        return self.data[at + 2:at + 2 + self.number(at, "<H")].decode("ascii")

    def identifier(self, offset):
        first, second, third, rest = struct.unpack_from("<IHH8s", self.data, self.segments[GUIDS] + offset)
        return f"{first:08X}-{second:04X}-{third:04X}-{rest[:2].hex()}-{rest[2:].hex()}".upper()

    def value(self, described):
        """The type at the end of the pointers."""
        if described < 0:
            return SAME.get(described & 0x7FFF, described & 0x7FFF)
        at = self.segments[DESCRIPTIONS] + described
        kind, inner = self.number(at, "<H") & 0x7FFF, self.number(at + 4)
        return self.value(inner) if kind == POINTER else SAME.get(kind, kind)

    def interfaces(self):
        """{name: (identifier, version, help, members)}"""
        return {self.name(self.number(at + 0x34)): (
            self.identifier(self.number(at + 0x2C)), self.number(at + 0x38), self.string(self.number(at + 0x3C)),
            list(self.members(at))) for at in self.types}

    def members(self, interface):
        count = self.number(interface + 0x18, "<H")
        begin = self.number(interface + 4)
        numbers = begin + 4 + self.number(begin)
        for place in range(count):
            at = begin + 4 + self.number(numbers + 4 * (2 * count + place))
            yield self.member(at, self.name(self.number(numbers + 4 * (count + place))),
                              self.number(numbers + 4 * place))

    def member(self, at, name, number):
        length, arguments = self.number(at, "<H"), self.number(at + 20, "<H")
        use = self.number(at + 16) >> 3 & 0xF
        assert self.value(self.number(at + 4)) == STATUS
        kinds, given = [NOTHING], 0
        for place in range(arguments):
            kind, _, flags = struct.unpack_from("<iii", self.data, at + length - 12 * (arguments - place))
            kinds.append(self.value(kind))
            given += not flags & RESULT & ~1
        more = (length - 24 - 12 * arguments) // 4
        return name, number, use, given, kinds[-1], self.string(self.number(at + 24 + 4) if more > 1 else -1)


@pytest.mark.skipif(not LIBRARY.exists(), reason="built without a compiler of interfaces")
def test_the_compiled_library_has_the_members_of_the_table():
    read = TypeLibrary(LIBRARY.read_bytes()).interfaces()
    told = member_table.bare()._face.tell()[2]
    startup, base = read["DDNStartup"], read["QlaAnalysisDialog"]
    assert startup[:3] == ("C9E2C2DB-3D45-11D4-9FF4-00C04FA0D540", 0, "Drill-Down analysis startup dialog")
    assert base[:3] == ("C9E2A04E-3D45-11D4-9FF4-00C04FA0D540", 1, "QUILLARA Dialog")
    assert (len(startup[3]), len(base[3])) == (71, 13)
    assert startup[3] + base[3] == told
