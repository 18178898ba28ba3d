#!/usr/bin/env python3
"""Doxygen's input filter: prints a header with its plain comments as Doxygen comments."""
import os
import re
import sys

import headers


def escape(text):
    """Plain prose for Doxygen; what stands between backquotes stays as it is."""
    parts = text.split("`")
    for i in range(0, len(parts), 2):
        part = re.sub(r"(?<!\w)\*(?=\w)", "&lowast;", re.sub(r"([\\@<>&])", r"\\\1", parts[i]))
        # Doxygen takes quoted texts as they are.
        quoted = part.split('"')
        quoted[::2] = [re.sub(r"([#%])", r"\\\1", piece) for piece in quoted[::2]]
        parts[i] = '"'.join(quoted).replace("Kept:", "<b>Kept:</b>")
    return "`".join(parts)


def doxygen(lines, command=""):
    """The lines of a Doxygen comment; those that are indented keep their shape."""
    out, shaped = [], False
    if command:
        out.append(command)
        out.append("")
    for i, line in enumerate(lines):
        following = next((l for l in lines[i + 1:] if l), "")
        indented = line.startswith("  ") or (shaped and not line and following.startswith("  "))
        if indented and not shaped:
            out.append("@verbatim")
        if shaped and not indented:
            out.append("@endverbatim")
        shaped = indented
        out.append(line.replace("*/", "* /") if indented else escape(line))
    if shaped:
        out.append("@endverbatim")
    return ["/**"] + [" " + line for line in out] + [" */"]


def names_in_heading(about):
    """The classes that the first comment of a header is about: what stands before its colon."""
    heading = about.lines[0].split(":")[0] if ":" in about.lines[0] else ""
    return set(re.findall(r"\w+", heading))


def filtered(root, path):
    header = headers.read(root, path)
    above = {}  # line: what to print before it
    dropped = set()
    for group in headers.groups(header):
        for declaration in group.declarations:
            above[declaration.first] = group.comment
    if header.about:
        about_names = names_in_heading(header.about)
        for item in header.items:
            if not isinstance(item, headers.Declaration) or item.opens not in ("class", "struct"):
                continue
            name = re.search(r"(\w+)(?:\s*:.*|\s+final.*)?$", item.text.split(" : ")[0])
            if name and name.group(1) in about_names and not item.scopes:
                own = above.get(item.first)
                above[item.first] = header.about.lines + (["", *own] if own else [])
        dropped.update(range(header.about.first, header.about.last + 1))
    trailing = {}
    for item in header.items:
        if isinstance(item, headers.Comment):
            dropped.update(range(item.first, item.last + 1))
        elif isinstance(item, headers.Declaration):
            if item.trailing and item.first not in above:
                trailing[item.last] = item.trailing
            if item.text.startswith("extern template"):
                dropped.update(range(item.first, item.last + 1))
    out = doxygen(header.about.lines if header.about else [], f"@file {path}")
    for i, line in enumerate(header.lines):
        if i in above:
            out += doxygen(above[i])
        if i in dropped:
            continue
        if i in trailing:
            mark = re.search(r"/[/*]", line)
            line = f"{line[:mark.start()]}/**< {escape(' '.join(trailing[i].split()))} */"
        out.append(line)
    return out


if __name__ == "__main__":
    source = os.path.abspath(sys.argv[-1])
    if len(sys.argv) != 2 or "/include/" not in source or not os.path.isfile(source):
        sys.exit("usage: doxygen_filter.py HEADER, which is below a folder include/")
    include = source.rindex("/include/") + len("/include")
    print("\n".join(filtered(source[:include], source[include + 1:])))
