"""Shows a record in gdb as its class with the members that are set.

The rows of a record (see frequencystore/kernel/record.h) are private types. gdb knows them where the debug information
has whole classes: in the library's own, or in that of a program compiled with -g -femit-class-debug-always (g++) or
-g -fstandalone-debug (clang). Nothing is called in the process, so that core files can be read too.
"""

import datetime
import json
import re
import sys

import gdb
import gdb.printing


def memory(address, size):
    return gdb.selected_inferior().read_memory(address, size).tobytes() if size > 0 else b""


def at(address, kind):
    return gdb.Value(address).cast(kind.pointer()).dereference()


def field(address, kind, name):
    """A field of a struct. gdb need not look at the struct itself, whose dynamic type it would search for in vain."""
    place = next(f for f in kind.fields() if f.name == name)
    return at(address + place.bitpos // 8, place.type)


def items(array):
    """The address and the number of what a QString or QVector holds."""
    data = array["d"].dereference()
    return int(data.address) + int(data["offset"]), int(data["size"])


def text(value):
    address, size = items(value)
    shown = min(size, gdb.parameter("print elements") or size)
    code_units = "utf-16-le" if sys.byteorder == "little" else "utf-16-be"
    string = memory(address, 2 * shown).decode(code_units, "replace")
    return json.dumps(string, ensure_ascii=False) + ("..." if shown < size else "")


VALID, TIME_SPEC, UTC = 0x08, 0x30, 0x10


def time(value):
    """A QDateTime, which is either packed into the pointer or stands where that leads."""
    packed = value["d"]["data"]
    offset = 0
    if int(packed["status"]) & 1:
        status, milliseconds = int(packed["status"]), int(packed["msecs"])
    else:
        private = memory(int(value["d"]["d"]), 20)  # reference count, status, milliseconds, offset from UTC
        status, milliseconds, offset = (
            int.from_bytes(private[a:b], sys.byteorder, signed=True) for a, b in ((4, 8), (8, 16), (16, 20))
        )
    if not status & VALID:
        return "invalid"
    try:
        moment = datetime.datetime(1970, 1, 1) + datetime.timedelta(milliseconds=milliseconds)
    except OverflowError:
        return "%d ms since 1970" % milliseconds
    zone = {0: " local", UTC: "Z"}.get(status & TIME_SPEC, " (UTC%+d s)" % offset)
    return moment.isoformat(timespec="milliseconds") + zone


def unscoped(name):
    return name.rsplit("::", 1)[-1]


def content(value):
    """A value as text, or as it is where gdb shows it well."""
    kind = value.type.strip_typedefs()
    if kind.name == "QString":
        return text(value)
    if kind.name == "QDateTime":
        return time(value)
    if kind.code == gdb.TYPE_CODE_ENUM:
        return unscoped(str(value))
    return value


def contents(name, value):
    """The children that show a member: one, or one for each item of a list."""
    kind = value.type.strip_typedefs()
    if not (kind.name or "").startswith("QVector<"):
        yield name, content(value)
        return
    address, size = items(value)
    item = kind.template_argument(0)
    if not size:
        yield name, "empty"
    for i in range(size):
        yield "%s[%d]" % (name, i), content(at(address + i * item.sizeof, item))


class RecordPrinter:
    """Shows what is set, chosen or not, and ahead of it which alternative is chosen."""

    def __init__(self, record):
        self.record = record
        self.name = record.type.strip_typedefs().unqualified().name

    def to_string(self):
        return unscoped(self.name)

    def children(self):
        try:
            yield from self.members()
        except gdb.error as problem:
            yield "members", "<%s>" % problem

    def members(self):
        data = int(self.record["m_data"]["d"])
        if not data:
            return
        common = gdb.lookup_type("Velmara::kernel::RecordData")
        # The types that a class declares are told by the text of its declaration alone.
        declaration = gdb.execute("ptype/M " + self.name, to_string=True)
        choice = re.search(r"InitChoice\(const ([\w:]+)", declaration)
        if choice:
            yield unscoped(choice[1]), content(field(data, common, "choice").cast(gdb.lookup_type(choice[1])))
        bits = int(field(data, common, "bits"))
        for bit, row in enumerate(re.findall(r"(\S+Row) ?\* ?rows\(", declaration)):
            if bits >> bit & 1:
                name = unscoped(row)[: -len("Row")]
                yield from contents(name, field(data, gdb.lookup_type(row), "m_" + name))


def velmara_records(value):
    kind = value.type.strip_typedefs()
    if kind.name == "TALLYFORM::ITallyObject" and value.address:
        value = value.cast(value.dynamic_type)
        kind = value.type.strip_typedefs()
    if kind.code == gdb.TYPE_CODE_STRUCT and (kind.name or "").startswith("Velmara::"):
        if any(f.name == "m_data" for f in kind.fields()):
            return RecordPrinter(value)
    return None


gdb.printing.register_pretty_printer(gdb.current_objfile(), velmara_records, replace=True)
