"""Reads a public header: its comments, and which declarations they belong to.

A comment belongs to the declaration below it. Twins share one: declarations that follow without a blank line
and without a comment of their own, plain functions always, comparisons too, others where the name or all of
the signature is the same; but no copy constructor. A comment above a blank line introduces the next one.
Comments inside of bodies are no documentation.
"""
import re
from dataclasses import dataclass, field


@dataclass
class Declaration:
    text: str          # without comments, up to the ";", or the "{" of its body or scope
    first: int         # line numbers from 0
    last: int
    scopes: tuple      # kinds of the scopes around it, outermost first
    opens: str = ""    # the kind of the scope that it opens
    trailing: str = ""


@dataclass
class Comment:
    lines: list        # without the marks
    first: int
    last: int
    scopes: tuple = ()


@dataclass
class Header:
    path: str          # as it is included
    lines: list
    about: Comment = None
    items: list = field(default_factory=list)


@dataclass
class Group:
    """Declarations that share a comment."""
    comment: list      # its lines, with those of the comment that introduces it
    declarations: list


SCOPE = re.compile(r'(?:^|\s)(namespace|class|struct|union|enum|extern "C")(?:\s|$)')
COMPARISON = re.compile(r"operator(==|!=|<=?|>=?)")
NOLINT = re.compile(r"\s*NOLINT.*")


def scope_kind(text):
    """What a "{" behind `text` opens."""
    text = re.sub(r"template\s*<[^{]*?>\s*(?=class|struct|union|enum|using|\w)", "", text, count=1)
    match = SCOPE.search(text)
    if match and not re.search(r"\)\s*(const|noexcept|override|\s)*$", text) and "=" not in text:
        return match.group(1).strip()
    return "body"


def comment_text(raw):
    """The lines of a comment without its marks."""
    if raw[0].lstrip().startswith("/*"):
        text = "\n".join(raw).strip()[2:-2]
        lines = [re.sub(r"^\s*\* ?", "", line) if i else line.strip()
                 for i, line in enumerate(text.split("\n"))]
    else:
        lines = [re.sub(r"^\s*// ?", "", line) for line in raw]
    lines = [NOLINT.sub("", line).rstrip() for line in lines]
    while lines and not lines[-1]:
        lines.pop()
    while lines and not lines[0]:
        lines.pop(0)
    return lines


def strip_code(line, in_comment):
    """The code of a line without strings and comments, the text of a trailing comment, and whether a
    comment goes on behind it."""
    code, comment, i = "", "", 0
    while i < len(line):
        if in_comment:
            end = line.find("*/", i)
            if end < 0:
                return code, comment + line[i:], True
            comment, i, in_comment = comment + line[i:end], end + 2, False
        elif line.startswith("//", i):
            return code, comment + line[i + 2:], False
        elif line.startswith("/*", i):
            in_comment, i = True, i + 2
        elif line[i] in "\"'":
            quote = line[i]
            end = i + 1
            while end < len(line) and line[end] != quote:
                end += 2 if line[end] == "\\" else 1
            code += line[i:end + 1] if 'extern "C"' in line else quote + quote
            i = end + 1
        else:
            code += line[i]
            i += 1
    return code, comment, in_comment


def read(root, path):
    with open(f"{root}/{path}", encoding="utf-8") as file:
        header = Header(path, file.read().split("\n"))
    lines = header.lines
    scopes, pending, parens, start, trailing = [], "", 0, 0, ""
    pending_body = None  # the declaration whose body is open
    i = 0
    while i < len(lines):
        line = lines[i]
        stripped = line.strip()
        if not pending and (stripped.startswith("//") or stripped.startswith("/*")):
            first = i
            if stripped.startswith("//"):
                while i + 1 < len(lines) and lines[i + 1].strip().startswith("//"):
                    i += 1
            else:
                while "*/" not in lines[i]:
                    i += 1
            rest = lines[i].split("*/", 1)[1].strip() if stripped.startswith("/*") else ""
            text = comment_text(lines[first:i + 1])
            if text and "-*- C++ -*-" in text[0]:
                text = text[1:]
            if text and not rest and "body" not in scopes:
                header.items.append(Comment(text, first, i, tuple(scopes)))
            i += 1
            continue
        if stripped.startswith("#"):
            while lines[i].endswith("\\"):
                i += 1
            header.items.append("directive")
            i += 1
            continue
        if not stripped:
            if not pending and "body" not in scopes:
                header.items.append("blank")
            i += 1
            continue
        if re.match(r"(public|protected|private):", stripped) and "body" not in scopes:
            header.items.append("access")
            i += 1
            continue
        code, note, open_comment = strip_code(line, False)
        end = i
        while open_comment:  # a trailing comment of several lines
            end += 1
            _, more, open_comment = strip_code(lines[end], True)
            note += "\n" + more
        note = NOLINT.sub("", note).strip()
        for char in code + " ":
            if "body" in scopes:
                if char == "{":
                    scopes.append("body")
                elif char == "}":
                    scopes.pop()
                    if "body" not in scopes and pending_body:
                        pending_body.last = i
                        pending_body = None
                continue
            if not pending:
                if char.isspace() or char == ";":
                    continue
                start = i
            if char == "}" and not parens:
                if scopes:
                    scopes.pop()
                pending = ""
                continue
            if char in "([":
                parens += 1
            elif char in ")]":
                parens -= 1
            if char == "{" and parens == 0:
                kind = scope_kind(pending.strip())
                declaration = Declaration(" ".join(pending.split()), start, i, tuple(scopes), kind)
                if kind == "body":
                    pending_body = declaration
                header.items.append(declaration)
                scopes.append(kind)
                pending = ""
            elif char == ";" and parens == 0:
                header.items.append(Declaration(" ".join(pending.split()), start, i, tuple(scopes)))
                pending = ""
            elif char == "," and parens == 0 and scopes and scopes[-1] == "enum":
                header.items.append(Declaration(" ".join(pending.split()), start, i, tuple(scopes)))
                pending = ""
            elif char == "{":
                pending += "{"
                parens += 1
            elif char == "}":
                pending += "}"
                parens -= 1
            else:
                pending += char
        if pending:
            pending += " "
        last = header.items[-1] if header.items else None
        if note and isinstance(last, Declaration) and last.last == i:
            last.trailing = note
        i = end + 1
    header.about = next((item for item in header.items if isinstance(item, Comment)), None)
    if header.about:
        header.items.remove(header.about)
    return header


def function_name(text):
    """The name that a declaration declares as a function, or None."""
    if text.startswith(("typedef", "using", "extern template", "friend class")):
        return None
    match = re.search(r"(operator\s*(?:\(\)|\[\]|[^\s\w(]+|[\w: ]+?(?:\*|&)?)|~?\w+)\s*\(",
                      re.sub(r"\b(alignas|decltype|noexcept|__attribute__)\s*\(", r"\1<", text))
    return match.group(1) if match else None


def signature(text):
    """A declaration without the name of its function."""
    name = function_name(text)
    return text.replace(name, "", 1) if name else None


def shares(first, other):
    """Whether `other` shares the comment of `first`, which it follows."""
    a, b = function_name(first.text), function_name(other.text)
    if first.scopes != other.scopes or a is None or b is None:
        return False
    if first.scopes and first.scopes[-1] == 'extern "C"':
        return True
    if COMPARISON.fullmatch(a) and COMPARISON.fullmatch(b):
        return True
    if re.search(rf"\b{re.escape(b)}\({re.escape(b)}( const)?&", other.text):  # copies and moves
        return False
    return a == b or signature(first.text) == signature(other.text)


def groups(header):
    """The documented declarations of a header, in its order."""
    found, comment, intro, current = [], None, [], None
    for item in header.items:
        if isinstance(item, Comment):
            if comment:
                intro = intro + comment.lines + [""]
            comment, current = item, None
        elif isinstance(item, Declaration):
            if comment:
                below = comment.last + 1 == item.first and comment.scopes == item.scopes
                if not below and comment.scopes == item.scopes:
                    intro = comment.lines + [""]
                if below:
                    current = Group(intro + comment.lines, [item])
                    found.append(current)
                    intro = []
                comment = None
            elif current and not item.trailing and any(shares(d, item) for d in current.declarations):
                current.declarations.append(item)
            else:
                current = None
        else:
            current = None
    return found
