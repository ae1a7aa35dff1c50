# gdb's pretty-printers for Bedplate's classes.
#
# An installed library brings this file where gdb finds it by itself; docs/debugging.md tells where gdb must be told to
# trust the place. From the source tree, one line does it:
#
#     (gdb) source debugger/bedplate-gdb.py
#
# The library itself has no debug information. The classes' members are known from the program's own, since programs are
# compiled with the headers. Only the nodes of the hash tables are private to the library; their layout is told below.
# Nothing here calls a function of the program, so all of it works on core files too. Objects that were not built yet,
# or were overwritten, are named as corrupt and not followed.

import re
import struct

import gdb
import gdb.printing

def pointer_size():
    return gdb.lookup_type("void").pointer().sizeof


def pointer_to(name):
    return gdb.lookup_type(name).pointer()


def read(address, count):
    return bytes(gdb.selected_inferior().read_memory(address, count)) if count > 0 else b""


def at(address, kind):
    """What stands at an address, which may be that of no object: it wraps around as the machine's do."""
    value = gdb.Value(address % (1 << 8 * pointer_size())).cast(kind.pointer()).dereference()
    value.fetch_lazy()
    return value


def read_pointer(address):
    return int(at(address, pointer_to("void")))


def read_int(address):
    return int(at(address, gdb.lookup_type("int")))


def is_shown(char):
    """Whether gdb's own output can hold a character as it is."""
    try:
        return char.isprintable() and bool(char.encode(gdb.host_charset()))
    except (AttributeError, LookupError, UnicodeEncodeError):
        return " " <= char <= "~"


def escaped(char):
    if char in '"\\':
        return "\\" + char
    if is_shown(char):
        return char
    known = {"\n": "\\n", "\t": "\\t", "\r": "\\r"}
    return known.get(char) or "".join("\\%03o" % byte for byte in char.encode("utf-8", "surrogateescape"))


def escaped_text(data):
    """Bytes as gdb writes them: text if they are UTF-8 and can be shown, else numbers."""
    return "".join(escaped(char) for char in data.decode("utf-8", "surrogateescape"))


def quoted(address, length):
    """The bytes at an address as gdb writes texts, cut as "set print elements" says."""
    limit = gdb.parameter("print elements") or length
    try:
        data = read(address, min(length, limit))
    except gdb.MemoryError:
        return "<cannot read %d bytes at 0x%x>" % (length, address)
    return '"%s"%s' % (escaped_text(data), "..." if length > limit else "")


def string_at(address):
    """The text of the CString at an address, as the child of a printer."""
    text, length = read_pointer(address), read_int(address + pointer_size())
    return gdb.Value(text).cast(pointer_to("char")).lazy_string(length=length if text else 0)


class Printer:
    """What the printers share: `fields` are the members that an object of ours has."""

    def __init__(self, val):
        self.val = val

    def number(self, field):
        return int(self.val[field])

    def to_string(self):
        name = self.val.type.unqualified().strip_typedefs().name
        try:
            return self.describe(name)
        except gdb.MemoryError as error:
            return "<%s: %s>" % (name, error)


class StringPrinter(Printer):
    fields = ("m_pszData", "m_iSize", "m_iBufferSize")

    def describe(self, name):
        data, length, capacity = (self.number(f) for f in self.fields)
        if data == 0 and length == 0:
            return '"" (length 0, no buffer)'
        if data == 0 or not 0 <= length < capacity:
            return "<corrupt %s: length %d, capacity %d, text at 0x%x>" % (name, length, capacity, data)
        return "%s (length %d, capacity %d)" % (quoted(data, length), length, capacity)


class StreamPrinter(Printer):
    fields = ("m_pszBuffer", "m_iLength", "m_iAllocSize", "m_iGrowSize")

    def describe(self, name):
        data, length, capacity, step = (self.number(f) for f in self.fields)
        if data == 0 and length == 0:
            return '"" (length 0, no buffer, step %d)' % step
        if data == 0 or not 0 <= length < capacity:
            return "<corrupt %s: length %d, capacity %d, text at 0x%x>" % (name, length, capacity, data)
        return "%s (length %d, capacity %d, step %d)" % (quoted(data, length), length, capacity, step)


class ArrayPrinter(Printer):
    layout = fields = ("m_pData", "m_iSize", "m_iBufferSize")

    def is_sound(self):
        data, size, capacity = (self.number(f) for f in self.layout)
        return 0 <= size <= capacity and (data != 0 or capacity == 0)

    def describe(self, name):
        data, size, capacity = (self.number(f) for f in self.layout)
        if not self.is_sound():
            return "<corrupt %s: size %d, capacity %d, elements at 0x%x>" % (name, size, capacity, data)
        buffer = "capacity %d" % capacity if data else "no buffer"
        return "%s (size %d, %s%s)" % (name, size, buffer, self.ownership())

    def ownership(self):
        if "m_bOwner" not in self.fields:
            return ""
        return ", owner" if self.number("m_bOwner") else ", holder"

    def children(self):
        for i in range(self.number("m_iSize") if self.is_sound() else 0):
            yield "[%d]" % i, self.element(i)

    def display_hint(self):
        return "array"

    def element(self, i):
        return self.val["m_pData"][i]


class StrArrayPrinter(ArrayPrinter):
    def element(self, i):
        try:
            return string_at(read_pointer(self.number("m_pData") + i * pointer_size()))
        except gdb.MemoryError as error:
            return "<%s>" % error


class PtrArrayPrinter(ArrayPrinter):
    fields = ArrayPrinter.layout + ("m_bOwner",)


class HashPrinter(Printer):
    """A table is shown as a map that has a key once for each of its values."""

    layout = ("m_pHashBag", "m_iHashSize", "m_iDataCnt")
    fields = layout + ("m_pIndex",)
    ownership = ArrayPrinter.ownership

    def is_sound(self):
        bag, buckets, values = (self.number(f) for f in self.layout)
        return (bag != 0 or values == 0) and buckets > 0 and values >= 0

    def describe(self, name):
        bag, buckets, values = (self.number(f) for f in self.layout)
        if not self.is_sound():
            return "<corrupt %s: %d buckets at 0x%x, %d values>" % (name, buckets, bag, values)
        return "%s (%d values in %d buckets%s)" % (name, values, buckets, self.ownership())

    def children(self):
        count = 0
        try:
            for node in self.nodes() if self.is_sound() and self.number("m_iDataCnt") else ():
                for value in self.values(node):
                    yield "key %d" % count, node.key
                    yield "value %d" % count, value
                    count += 1
        except gdb.MemoryError as error:
            yield "key %d" % count, "<damaged>"
            yield "value %d" % count, "<%s>" % error

    def display_hint(self):
        return "map"

    def heads(self):
        """The first node of each bucket in use; large tables are read in pieces."""
        size, count = pointer_size(), self.number("m_iHashSize")
        for start in range(0, count, 4096):
            data = read(self.number("m_pHashBag") + start * size, min(4096, count - start) * size)
            yield from (head for (head,) in struct.iter_unpack("=I" if size == 4 else "=Q", data) if head)

    def nodes(self):
        left = self.number("m_iDataCnt")  # each node has a value, so a chain that goes on longer is a damaged one
        for address in self.heads():
            while address != 0 and left > 0:
                node = Node(address, self.value_size())
                yield node
                address = node.next
                left -= 1

    def value_size(self):
        """The size of the union in which a node has its value or a pointer to its list."""
        return pointer_size()

    def values(self, node):
        if not node.has_list:
            yield self.only_value(node.values)
            return
        list_address = read_pointer(node.values)
        data, size = read_pointer(list_address), read_int(list_address + pointer_size())
        for i in range(min(size, self.number("m_iDataCnt"))):
            yield self.value(data, i)

    def only_value(self, address):
        return self.value(address, 0)

    def value(self, data, i):
        kind = gdb.lookup_type(self.element)
        return at(data + i * kind.sizeof, kind)


class Node:
    """A node of a hash table, CHashNode in src/tables/hash_node.h: CHashNode* m_pNext; CHashNode* m_pBack; the only value
    or a pointer to the list of values; int m_iHash; CHashKey m_key, which is 31 bits of m_uSize, one of m_bList, and the
    key's text behind them."""

    def __init__(self, address, value_size):
        self.next = read_pointer(address)
        self.values = address + 2 * pointer_size()
        key = self.values + value_size + 8
        size = read_int(key - 4)
        self.has_list = size < 0
        self.key = gdb.Value(key).cast(pointer_to("char")).lazy_string(length=size & 0x7FFFFFFF)


class IntHashPrinter(HashPrinter):
    element = "int"


class DblHashPrinter(HashPrinter):
    element = "double"

    def value_size(self):
        return 8


class StrHashPrinter(HashPrinter):
    def value_size(self):
        return pointer_size() + 8

    def only_value(self, address):
        return string_at(address)

    def value(self, data, i):
        return string_at(read_pointer(data + i * pointer_size()))


class PtrHashPrinter(HashPrinter):
    fields = HashPrinter.fields + ("m_bOwner",)

    def value(self, data, i):
        return gdb.Value(read_pointer(data + i * pointer_size())).cast(pointer_to("void"))


class DatePrinter(Printer):
    fields = ("m_szDate", "m_bSet")

    def describe(self, name):
        if not self.number("m_bSet"):
            return "<unset>"
        text = bytes(int(self.val["m_szDate"][i]) & 0xFF for i in range(9)).split(b"\0")[0]
        if re.fullmatch(b"[0-9]{8}", text):
            return text.decode()
        return '"%s"' % escaped_text(text)


class TimePrinter(Printer):
    fields = ("m_tvTime", "m_tmTime", "m_bSet")

    def describe(self, name):
        if not self.number("m_bSet"):
            return "<unset>"
        tm = self.val["m_tmTime"]
        year, month, rest = int(tm["tm_year"]), int(tm["tm_mon"]), ("tm_mday", "tm_hour", "tm_min", "tm_sec")
        numbers = (year + 1900, month + 1) + tuple(int(tm[f]) for f in rest)
        return "%04d-%02d-%02d %02d:%02d:%02d.%06d" % (numbers + (int(self.val["m_tvTime"]["tv_usec"]),))


class ExceptionPrinter(Printer):
    fields = ("m_iCode", "m_szText")

    def describe(self, name):
        text = self.val["m_szText"]
        data = bytes(int(text[i]) & 0xFF for i in range(text.type.range()[1] + 1)).split(b"\0")[0]
        return 'code %d, "%s"' % (self.number("m_iCode"), escaped_text(data))


class IntPrinter(Printer):
    fields = ("m_iValue",)

    def describe(self, name):
        return str(self.number("m_iValue"))


class DblPrinter(Printer):
    fields = ("m_dValue",)

    def describe(self, name):
        return self.val["m_dValue"].format_string()


PRINTERS = {
    "CBoolArray": ArrayPrinter,
    "CDate": DatePrinter,
    "CDateArray": ArrayPrinter,
    "CDbl": DblPrinter,
    "CDblArray": ArrayPrinter,
    "CDblHash": DblHashPrinter,
    "CException": ExceptionPrinter,
    "CInt": IntPrinter,
    "CInt64": IntPrinter,
    "CIntArray": ArrayPrinter,
    "CIntHash": IntHashPrinter,
    "CPtrArray": PtrArrayPrinter,
    "CPtrHash": PtrHashPrinter,
    "CStrArray": StrArrayPrinter,
    "CStrHash": StrHashPrinter,
    "CStream": StreamPrinter,
    "CString": StringPrinter,
    "CTime": TimePrinter,
}


class BedplatePrinter(gdb.printing.PrettyPrinter):
    """Finds the printer for a value. Other libraries may have classes of these names: the members decide."""

    def __init__(self):
        super().__init__("bedplate", [gdb.printing.SubPrettyPrinter(name) for name in PRINTERS])

    def __call__(self, val):
        kind = val.type.unqualified().strip_typedefs()
        if kind.code != gdb.TYPE_CODE_STRUCT or kind.name not in PRINTERS:
            return None
        enabled = [printer.enabled for printer in self.subprinters if printer.name == kind.name]
        members = [field.name for field in kind.fields()]
        make = PRINTERS[kind.name]
        return make(val) if enabled == [True] and sorted(members) == sorted(make.fields) else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), BedplatePrinter(), replace=True)
