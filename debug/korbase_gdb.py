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


class List(Container):
    """TOList: a ring that its last link stands for."""

    def elements(self):
        link_type = gdb.lookup_type(f"TOLink<{self.value.type.strip_typedefs().template_argument(0)}>")
        last = self.value["last"]
        link = last
        while link:
            link = link["next"]
            yield link.cast(link_type.pointer())["value"]
            if link == last:
                return


class Map(Container):
    """TMap: its entries in order, as key and value."""

    def elements(self):
        node_type = self.value["root"].type
        node = self.value["root"]
        ancestors = []
        while node or ancestors:
            while node:
                ancestors.append(node)
                node = node["left"].cast(node_type)
            node = ancestors.pop()
            yield node["key"]
            yield node["value"]
            node = node["right"].cast(node_type)

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
