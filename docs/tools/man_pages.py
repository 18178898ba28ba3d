#!/usr/bin/env python3
"""Writes a manual page for each plain function of the public headers.

    man_pages.py INCLUDE_FOLDER OUTPUT_FOLDER

Functions that share a comment share a page; the other names are links to it. Fails, naming them, when functions
have no comment. The pages have no date: the same headers give the same pages on every target.
"""
import os
import re
import shutil
import sys
import textwrap

import headers


def plain_functions(header):
    """The names of all functions of the header with C linkage that the library exports."""
    return [headers.function_name(item.text) for item in header.items
            if isinstance(item, headers.Declaration) and is_plain(item)]


def is_plain(declaration):
    return (declaration.scopes == ('extern "C"',) and not declaration.opens
            and "KORBASE_API" in declaration.text and headers.function_name(declaration.text))


def roff(text):
    text = text.replace("\\", "\\e")
    return re.sub(r"^([.'])", r"\\&\1", text)


def prose(text, functions, own):
    """A line of a paragraph: names of arguments in italics, of other functions in bold."""
    text = roff(text)
    text = re.sub(r"`([^`]*)`", r"\\fI\1\\fP", text)
    names = [name for name in set(re.findall(r"\w+", text)) & functions if name not in own]
    for name in names:
        text = re.sub(rf"(?<![\w<\\]){name}\b(?!\()", rf"\\fB{name}\\fP(3)", text)
    return text.replace("Kept:", "\\fIKept:\\fP")


def body(lines, functions, own):
    """Paragraphs; lines that are indented keep their shape."""
    out, shaped, gap = [], False, False
    for line in lines:
        if not line:
            gap = True
            continue
        indented = line.startswith("  ")
        if shaped and not indented:
            out.append(".fi\n.RE")
            gap = True
        if gap and out and not (shaped and indented):
            out.append(".PP")
        if indented and not shaped:
            if out and out[-1] == ".PP":
                out.pop()
            out.append(".RS\n.nf")
        elif indented and gap:
            out.append("")
        shaped, gap = indented, False
        out.append(roff(line.strip() if not indented else line[2:]) if indented
                   else prose(line, functions, own))
    if shaped:
        out.append(".fi\n.RE")
    return out


def summary(own, about):
    """One line about a function: how its own comment begins, or else what its header is about."""
    line = first_clause(own)
    whole = line.count("(") == line.count(")") and not re.match(r"(the same|as)\b", line)
    return line if whole and 20 <= len(line) <= 60 else first_clause(about)


def first_clause(lines):
    text = re.sub(r"^\w+: ", "", " ".join(" ".join(lines).split()))
    text = re.split(r"(?<=[\w)\"`])[.:;](?:\s|$)", text)[0].replace("`", "")
    return text[0].lower() + text[1:] if text[1:2].islower() or text[1:2] == " " else text


def synopsis(header, group):
    """The include line and the declarations, after the types of callbacks that they name."""
    declarations = [d.text for d in group.declarations]
    callbacks = [item.text for item in header.items
                 if isinstance(item, headers.Declaration) and item.text.startswith("typedef")
                 for name in re.findall(r"\(\*(\w+)\)", item.text)
                 if any(re.search(rf"\b{name}\b", text) for text in declarations)]
    out = [f"#include <{header.path}>"]
    for text in [*callbacks, *declarations]:
        text = " ".join(text.replace("KORBASE_API", "").split()) + ";"
        out += ["", *textwrap.wrap(text, 70, subsequent_indent="    ", break_on_hyphens=False)]
    return [".PP" if not line else f".B {roff(line)}" if line[0] != " "
            else f'.B "{roff(line)}"' for line in out]


def page(header, group, functions):
    names = [headers.function_name(declaration.text) for declaration in group.declarations]
    about = header.about.lines
    others = [name for name in dict.fromkeys(plain_functions(header)) if name not in names]
    out = [f'.TH {names[0]} 3 "" "libkorbase 1.4" "libkorbase"',
           ".SH NAME", f"{', '.join(names)} \\- {roff(summary(group.comment, about))}",
           ".SH LIBRARY", "libkorbase (\\-lkorbase)",
           ".SH SYNOPSIS", ".nf", *synopsis(header, group), ".fi",
           ".SH DESCRIPTION", *body(group.comment, functions, names),
           ".SH NOTES", *body(about, functions, names)]
    if others:
        out.append(".SH SEE ALSO")
        out += [f".BR {name} (3){',' if name != others[-1] else ''}" for name in others]
    return names, "\n".join(out) + "\n"


def main(include, output):
    paths = sorted(os.path.relpath(os.path.join(folder, name), include)
                   for folder, _, names in os.walk(include) for name in names)
    all_headers = [headers.read(include, path) for path in paths]
    functions = {name for header in all_headers for name in plain_functions(header)}
    pages, links = {}, {}
    for header in all_headers:
        for group in headers.groups(header):
            group.declarations = [d for d in group.declarations if is_plain(d)]
            if not group.declarations:
                continue
            names, text = page(header, group, functions)
            if names[0] not in pages:
                pages[names[0]] = text
            for name in names[1:]:
                links.setdefault(name, names[0])
    missing = sorted(functions - set(pages) - set(links))
    if missing:
        sys.exit(f"man_pages.py: functions without a comment: {', '.join(missing)}")
    if not pages:
        sys.exit(f"man_pages.py: no plain functions below {include}")
    shutil.rmtree(output, ignore_errors=True)
    os.makedirs(output)
    for name, text in pages.items():
        with open(os.path.join(output, name + ".3"), "w", encoding="utf-8") as file:
            file.write(text)
    for name, target in links.items():
        os.symlink(target + ".3", os.path.join(output, name + ".3"))
    print(f"{len(pages)} manual pages for {len(functions)} functions")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__.strip().split("\n\n")[1].strip())
    main(sys.argv[1], sys.argv[2])
