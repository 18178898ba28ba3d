#!/usr/bin/env python3
"""The other end of a typed stream, in Python: docs/wire-format.md in code, and a tool to try it with.

    peer.py decode TYPES HEX...            prints the values in the bytes
    peer.py send ADDRESS SEED COUNT        sends COUNT random described messages, waits for each answer
    peer.py judge ADDRESS COUNT            connects COUNT times, takes a described message, tells what is wrong with it
    peer.py damage ADDRESS SEED COUNT      connects COUNT times, sends a message of which one value is damaged
    peer.py cut ADDRESS FILE.lay...        has a fracture server cut polygons, prints how many pieces came
    peer.py stop ADDRESS                   ends a fracture server

ADDRESS is HOST:PORT, [IPV6]:PORT, IPV6/PORT or the path of a local socket. A described message is a
String of type letters (see TYPES below), the values, and a list of texts that tell the values; its answer is
the same message with the values in reverse order, and an empty String of types ends the conversation. The
verdict on a message is a String: "good", or what is wrong. A damaged message is an int with the status bits that
its reader must end with, the types, the list of texts, and then the values, of which the last one is damaged.

Exit status 0, or 1 and a line on standard error.
"""
import random
import socket
import struct
import sys
import zlib

NUMBERS = {  # type letter: layout for struct, bytes big-endian
    "c": ">b", "C": ">B", "h": ">h", "H": ">H", "i": ">i", "I": ">I", "l": ">Ii", "L": ">II",
    "q": ">q", "Q": ">Q", "f": ">f", "d": ">d",
}
TYPES = "".join(NUMBERS) + "zsbS"  # char const*, String_t, ByteString, TOList<String_t>
STRING_LIMIT = 8190
BYTES_LIMIT = 32785
LIST_END = 0xFFFFFFFF
STOP = 3  # asks a fracture server to end
END_OF_INPUT, FAILED = 1, 2  # status bits of a stream
TIMEOUT_S = 60


class WireError(Exception):
    """The bytes are no message."""


class Writer:
    """Collects the bytes of a message."""

    def __init__(self):
        self.bytes = bytearray()

    def number(self, letter, value):
        layout = NUMBERS[letter]
        values = (0, value) if letter in "lL" else (value,)
        self.bytes += struct.pack(layout, *values)

    def put(self, letter, value):
        if letter in NUMBERS:
            self.number(letter, value)
        elif letter == "z":
            self.bytes += value + b"\0"
        elif letter == "s":
            self.number("I", len(value))
            self.bytes += value + b"\0" if value else b""
        elif letter == "b":
            self.number("I", len(value))
            self.bytes += value
        else:
            for element in value:
                self.put("s", element)
            self.number("I", LIST_END)


class Reader:
    """Takes values from `read(count)`, which gives exactly that many bytes or raises EOFError."""

    def __init__(self, read):
        self.read = read

    def number(self, letter):
        values = struct.unpack(NUMBERS[letter], self.read(struct.calcsize(NUMBERS[letter])))
        if letter in "lL" and values[0] != 0:
            raise WireError("the upper half of a long is not 0")
        return values[-1]

    def length(self, limit):
        length = self.number("I")
        if length > limit:
            raise WireError(f"length {length} is beyond {limit}")
        return length

    def string(self, length):
        if length == 0:
            return b""
        text = self.read(length + 1)[:length]
        if b"\0" in text:
            raise WireError("a String holds a 0 byte")
        return text

    def get(self, letter):
        if letter in NUMBERS:
            return self.number(letter)
        if letter == "z":
            return b"".join(iter(lambda: self.read(1), b"\0"))
        if letter == "s":
            return self.string(self.length(STRING_LIMIT))
        if letter == "b":
            return self.read(self.length(BYTES_LIMIT))
        if letter != "S":
            raise WireError(f"no such type: {letter}")
        elements = []
        while (length := self.number("I")) != LIST_END:
            if length > STRING_LIMIT:
                raise WireError(f"length {length} is beyond {STRING_LIMIT}")
            elements.append(self.string(length))
        return elements


def describe(letter, value):
    """One value as text: numbers in decimal, bytes as their number and checksum."""
    if letter in "fd":
        return "%.17g" % value
    if letter in NUMBERS:
        return str(value)
    if letter == "S":
        return " ".join([str(len(value))] + [describe("s", element) for element in value])
    return f"{len(value)}:{zlib.adler32(value):08x}"


class Connection:
    """A stream socket that is read by the exact count."""

    def __init__(self, address):
        if address[:1] in ("/", "."):
            self.socket = socket.socket(socket.AF_UNIX)
            self.socket.connect(address)
        else:
            separator = "/" if "/" in address else ":"
            host, _, port = address.rpartition(separator)
            self.socket = socket.create_connection((host.strip("[]") or "localhost", int(port)))
        self.socket.settimeout(TIMEOUT_S)
        self.input = self.socket.makefile("rb")

    def read(self, count):
        data = self.input.read(count)
        if len(data) < count:
            raise EOFError(f"the input ends {count - len(data)} bytes early")
        return data

    def send(self, writer):
        self.socket.sendall(writer.bytes)


def take_message(reader):
    types = reader.get("s").decode()
    values = [reader.get(letter) for letter in types]
    return types, values, reader.get("S") if types else []


def make_message(types, values):
    writer = Writer()
    writer.put("s", types.encode())
    for letter, value in zip(types, values):
        writer.put(letter, value)
    if types:
        writer.put("S", [describe(letter, value).encode() for letter, value in zip(types, values)])
    return writer


def check_texts(types, values, texts):
    for letter, value, text in zip(types, values, texts):
        if describe(letter, value).encode() != text:
            raise WireError(f"{letter}: {describe(letter, value)} instead of {text.decode()}")
    if len(texts) != len(types):
        raise WireError(f"{len(texts)} texts for {len(types)} values")


def random_value(chance, letter):
    if letter in "fd":
        size = struct.calcsize(NUMBERS[letter])
        value, = struct.unpack(NUMBERS[letter], chance.randbytes(size))
        return value if value == value else 0.5  # a NaN has many texts
    if letter in NUMBERS:
        bits = 8 * struct.calcsize(NUMBERS[letter][0] + NUMBERS[letter][-1])
        low = -(1 << bits - 1) if letter in "chilq" else 0
        return chance.choice([low, low + (1 << bits) - 1, 0, chance.randrange(low, low + (1 << bits))])
    if letter == "S":
        return [random_value(chance, "s") for _ in range(chance.randrange(4))]
    limit = BYTES_LIMIT if letter == "b" else STRING_LIMIT
    length = chance.choice([0, 1, limit if chance.random() < 0.05 else 2, chance.randrange(300)])
    data = chance.randbytes(length)
    return data if letter == "b" else data.replace(b"\0", b"\1")


def send(address, seed, count):
    connection = Connection(address)
    reader = Reader(connection.read)
    chance = random.Random(int(seed))
    for _ in range(int(count)):
        types = "".join(chance.choices(TYPES, k=chance.randrange(1, 20)))
        values = [random_value(chance, letter) for letter in types]
        connection.send(make_message(types, values))
        back = take_message(reader)
        check_texts(*back)
        if back[:2] != (types[::-1], values[::-1]):
            raise WireError(f"another answer to {types}")
    connection.send(make_message("", []))


def judge(address, count):
    for _ in range(int(count)):
        connection = Connection(address)
        verdict = b"good"
        try:
            check_texts(*take_message(Reader(connection.read)))
        except (EOFError, ValueError, WireError) as error:
            verdict = str(error).encode()
        writer = Writer()
        writer.put("s", verdict)
        connection.send(writer)


def damaged(chance, letter, value):
    """The bytes of the value with a fault, and the status bits of who reads them."""
    writer = Writer()
    writer.put(letter, value)
    data = writer.bytes
    if letter in "lL" and chance.random() < 0.5:
        data[chance.randrange(4)] = chance.randrange(1, 256)
        return data, FAILED
    if letter in "sb" and chance.random() < 0.5:
        limit = BYTES_LIMIT if letter == "b" else STRING_LIMIT
        too_long = chance.choice([limit + 1, LIST_END, chance.randrange(limit + 1, LIST_END)])
        return struct.pack(">I", too_long) + data[4:], FAILED
    if letter == "s" and value and chance.random() < 0.5:
        data[4 + chance.randrange(len(value))] = 0
        return data, FAILED
    end = chance.randrange(len(data))
    return data[:end], END_OF_INPUT | (FAILED if letter == "s" and end >= 4 else 0)


def damage(address, seed, count):
    chance = random.Random(int(seed))
    for _ in range(int(count)):
        types = "".join(chance.choices(TYPES, k=chance.randrange(1, 8)))
        values = [random_value(chance, letter) for letter in types]
        last, status = damaged(chance, types[-1], values[-1])
        writer = Writer()
        writer.put("i", status)
        writer.put("s", types.encode())
        writer.put("S", [describe(letter, value).encode() for letter, value in zip(types, values)])
        for letter, value in zip(types[:-1], values):
            writer.put(letter, value)
        writer.bytes += last
        Connection(address).send(writer)


def polygons(path):
    """The corners of the polygon records that are in whole database units."""
    with open(path, encoding="utf-8", errors="replace") as file:
        for line in file:
            words = line.split()
            if words[:1] != ["polygon"]:
                continue
            try:
                numbers = [int(word) for word in words[2:]]
            except ValueError:
                continue
            yield list(zip(numbers[::2], numbers[1::2]))


def put_polygon(writer, points):
    writer.number("C", 0)
    writer.number("i", 0)
    writer.number("h", 0)
    writer.number("i", 0)
    writer.number("i", len(points))
    for x, y in points:
        writer.number("i", x)
        writer.number("i", y)


def take_pieces(reader):
    """The pieces of one answer; what the outline has become is read over."""
    if reader.number("C") != 0:
        raise WireError("refused: " + reader.get("s").decode())
    reader.number("i")
    reader.number("C")
    reader.read(8 * reader.length(1 << 20))
    layout = ">6i" if reader.number("C") else ">4i"
    data = reader.read(reader.length(1 << 24) * struct.calcsize(layout))
    return list(struct.iter_unpack(layout, data))


def cut(address, *paths):
    connection = Connection(address)
    reader = Reader(connection.read)
    for path in paths:
        pieces = shapes = 0
        for points in polygons(path):
            writer = Writer()
            put_polygon(writer, points)
            connection.send(writer)
            pieces += len(take_pieces(reader))
            shapes += 1
        print(f"{path}: {shapes} polygons, {pieces} pieces")


def stop(address):
    connection = Connection(address)
    writer = Writer()
    writer.number("C", STOP)
    connection.send(writer)
    if Reader(connection.read).number("C") != STOP:
        raise WireError("the server does not stop")


def decode(types, *hexadecimal):
    data = bytes.fromhex("".join(hexadecimal))
    position = 0

    def read(count):
        nonlocal position
        if position + count > len(data):
            raise EOFError(f"the input ends {position + count - len(data)} bytes early")
        position += count
        return data[position - count:position]

    reader = Reader(read)
    for letter in types:
        value = reader.get(letter)
        if letter == "S":
            value = b" ".join(value)
        print(letter, describe(letter, value) if letter in NUMBERS else value.decode("latin-1"))
    if position < len(data):
        raise WireError(f"{len(data) - position} bytes are left over")


COMMANDS = {"decode": (decode, 2, None), "send": (send, 3, 3),
            "judge": (judge, 2, 2), "damage": (damage, 3, 3),
            "cut": (cut, 2, None), "stop": (stop, 1, 1)}


def main(arguments):
    name, rest = (arguments or [""])[0], arguments[1:]
    command, least, most = COMMANDS.get(name, (None, 0, 0))
    if command is None or len(rest) < least or (most is not None and len(rest) > most):
        print(__doc__.split("\n\n")[1], file=sys.stderr)
        return 1
    try:
        command(*rest)
    except (OSError, EOFError, ValueError, WireError) as error:
        print(f"peer.py: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
