"""How gdb shows the values of libkorbase: texts as texts, containers as their elements.

Installed so that gdb loads it with the library; elsewhere: (gdb) source korbase_gdb.py
"""
import gdb
import gdb.printing


class Text:
    """String_t: its text, or null."""

    def __init__(self, value):
        record = value["rep"]
        self.text = record["text"] if record else record

    def to_string(self):
        return self.text if self.text else "null"

    def display_hint(self):
        return "string" if self.text else None


class Bytes:
    """ByteString: all its bytes, with zeros."""

    def __init__(self, value):
        self.record = value["rep"]

    def to_string(self):
        if not self.record or not self.record["data"]:
            return ""
        return self.record["data"].lazy_string(length=int(self.record["length"]))

    def display_hint(self):
        return "string"


class Container:
    """What the containers have in common: `elements` generates them."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        count = sum(1 for _ in self.elements())
        return f"{self.value.type.strip_typedefs().unqualified()} of {count}"

    def children(self):
        for i, element in enumerate(self.elements()):
            yield f"[{i}]", element

    def display_hint(self):
        return "array"


class Array(Container):
    """TVarr and TSortedVector."""

    def elements(self):
        for i in range(int(self.value["arrp"] - self.value["arr"])):
            yield self.value["arr"][i]


# Links and tree nodes are read by their layout: a program has the types of their bases only if the
# library was compiled with debug information. Each begins with a pointer to its virtual functions.
def word():
    """The size of a pointer of the program."""
    return gdb.lookup_type("char").pointer().sizeof


def pointer(address, index):
    """The pointer number `index` of the object there, as an address."""
    type = gdb.lookup_type("char").pointer().pointer()
    return int(gdb.Value(address + index * word()).cast(type).dereference())


def member(address, type):
    """A member of this type at the next address that suits it; its value and the address behind it."""
    address += -address % type.alignof
    return gdb.Value(address).cast(type.pointer()).dereference(), address + type.sizeof


class List(Container):
    """TOList: a ring that its last link stands for; a link has its successor and its value."""

    def elements(self):
        value_type = self.value.type.strip_typedefs().template_argument(0)
        last = int(self.value["last"])
        link = last
        while link:
            link = pointer(link, 1)
            yield member(link + 2 * word(), value_type)[0]
            if link == last:
                return


class Map(Container):
    """TMap: its entries in order, as key and value; a node has its parent, left and right child, an
    int, key and value."""

    def elements(self):
        type = self.value.type.strip_typedefs()
        key_type, value_type = type.template_argument(0), type.template_argument(1)
        entry_alignment = max(key_type.alignof, value_type.alignof)
        node = int(self.value["root"])
        ancestors = []
        while node or ancestors:
            while node:
                ancestors.append(node)
                node = pointer(node, 2)
            node = ancestors.pop()
            entry = node + 4 * word() + 4
            entry += -entry % entry_alignment
            key, behind = member(entry, key_type)
            yield key
            yield member(behind, value_type)[0]
            node = pointer(node, 3)

    def to_string(self):
        return f"{self.value.type.strip_typedefs().unqualified()} of {sum(1 for _ in self.elements()) // 2}"

    def display_hint(self):
        return "map"


def build():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("libkorbase")
    for name, pattern, printer in (
        ("String_t", "^String_t$", Text),
        ("ByteString", "^ByteString$", Bytes),
        ("TVarr", "^TVarr<.*>$", Array),
        ("TSortedVector", "^TSortedVector<.*>$", Array),
        ("TOList", "^TOList<.*>$", List),
        ("TMap", "^TMap<.*>$", Map),
    ):
        printers.add_printer(name, pattern, printer)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), build(), replace=True)
